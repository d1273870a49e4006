#include "host/quality/FrameGains.h"

#include "engine/CellImage.h"
#include "engine/ColumnPass.h"
#include "engine/GainCode.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace zor {

namespace {

/// Replaces each cell that wrapped by the limited product of pixel and code. True when there was one. The
/// working image of 8 bits has room for all products and its own rounding.
bool unwrapCells(const ConstImageView& frame, const std::vector<std::uint16_t>& codes, const ImageView& cells)
{
    if (frame.depth == 8)
        return false;
    const auto limit = static_cast<std::uint32_t>(saturationLimit(frame.depth));
    bool found = false;
    for (std::int32_t y = 0; y < frame.height; ++y) {
        for (std::int32_t x = 0; x < frame.width; ++x) {
            const std::uint32_t pixel = loadCell(frame.row(y), x);
            const std::uint32_t product = (pixel * codes[static_cast<std::size_t>(x)]) >> 8;
            const auto cell = static_cast<std::uint16_t>(pixel == limit ? limit : std::min(limit, product));
            if (cell != loadCell(cells.row(y), x)) {
                storeCell(cells.row(y), x, cell);
                found = true;
            }
        }
    }
    return found;
}

/// The largest deviation of a gain from the one at its place in the other list, as a share of that one.
/// Places where neither is a finite number do not count.
double largestError(const std::list<double>& gains, const std::list<double>& others)
{
    double largest = 0.0;
    auto other = others.begin();
    for (const double gain : gains) {
        const double error = std::fabs(gain / *other++ - 1.0);
        if (error > largest)
            largest = error;
    }
    return largest;
}

} // namespace

FrameGains computeFrameGains(const ConstImageView& frame, std::size_t frameBytes, const GainRule& rule)
{
    FrameGains gains;
    std::vector<std::uint16_t> columnMeans(static_cast<std::size_t>(frame.width));
    std::vector<std::uint16_t> rowMeans(static_cast<std::size_t>(frame.height));
    computeColumnGains(frame, rule, gains.columns, columnMeans.data(), rowMeans.data());

    std::vector<std::uint8_t> block(cellBlockBytes(frame.width, frame.height));
    const ImageView cells{block.data(), cellStep(frame.width), frame.width, frame.height, frame.depth};
    fillCells(frame, frameBytes, cells);

    const std::int32_t capacity = columnCodeCapacity(frame.width, frame.step);
    std::vector<std::uint16_t> codes(static_cast<std::size_t>(capacity));
    encodeGains(gains.columns, codes.data(), frame.width, capacity);
    applyColumnCodes(cells, frame.step, codes.data());

    computeRowGains(readOnly(cells), rule, gains.rows);
    if (unwrapCells(frame, codes, cells)) {
        std::list<double> unwrapped;
        computeRowGains(readOnly(cells), rule, unwrapped);
        gains.rowError = largestError(gains.rows, unwrapped);
    }
    return gains;
}

} // namespace zor
