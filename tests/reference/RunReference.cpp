#include "tests/reference/RunReference.h"

namespace reference {
namespace {

Image cellsOf(const Image& frame)
{
    const int step = cellStep(frame.width);
    return {std::vector<std::uint8_t>(static_cast<std::size_t>(step * (frame.height + 1))), step, frame.width,
            frame.height, frame.depth};
}

std::vector<std::uint16_t> codesOf(const std::vector<double>& gains)
{
    std::vector<std::uint16_t> codes;
    for (const double gain : gains)
        codes.push_back(gainCode(gain));
    return codes;
}

} // namespace

Run::Run(const Image& frame, const Setting& setting)
    : columns(columnGains(frame, {setting.normalize, setting.value, setting.pairs}))
    , rowsOfFrame(rowGains(frame, {setting.normalize, setting.value, setting.pairs}))
    , flatX(cellsOf(frame))
    , flatY(flatX)
{
    fillCells(frame, flatX);
    columnPass(flatX, frame.step, codesOf(columns.gains));
    Image asCells = flatX;
    asCells.depth = 16;
    rows = rowGains(asCells, {setting.normalize, setting.value, setting.pairs});
    rowPass(flatX, flatY, codesOf(rows.gains));
    Image result = flatY;
    result.depth = 16;
    flatRowMeans = rowGains(result, {true, 1.0, false}).means;
    flatColumnMeans = columnGains(setting.showRows ? result : asCells, {true, 1.0, false}).means;
    bins = frameHistogram(frame);
    peak = histogramPeak(setting.peak, 0, bins);
    ofImage = extremes(frame, frame.depth != 8);
    ofFlat = extremes(frame.depth == 8 ? asCells : result, true);
    range = plotRange(ofImage, ofFlat);
}

} // namespace reference
