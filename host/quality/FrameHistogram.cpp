#include "host/quality/FrameHistogram.h"

#include "image/ZorPixelTypeTable.h"
#include "image/unpack/NativeCodes.h"

namespace zor {

FrameHistogram frameHistogram(const _ZorImage& image)
{
    if (!hasNativeCodes(image))
        return {};
    constexpr unsigned binBits = 8;
    static_assert(HistogramBins == 1u << binBits);
    const unsigned shift = pixelTypeSampleBits(image.pixelType) - binBits;
    const SampleLanes lanes(*exactPixelTypeRow(image.pixelType));
    std::vector<LaneBins> binsOfRows(lanes.rows());
    const PixelRegion whole{0, 0, static_cast<std::int32_t>(image.width),
                            static_cast<std::int32_t>(image.height)};
    forEachRun(image, whole, [&](std::uint32_t y, const std::uint16_t* samples, std::size_t count) {
        countSamples(samples, count, shift, binsOfRows[y % lanes.rows()]);
    });

    FrameHistogram histogram;
    histogram.codesPerBin = 1u << shift;
    histogram.channels.resize(lanes.channels().size());
    for (std::size_t i = 0; i < histogram.channels.size(); ++i)
        histogram.channels[i].letter = lanes.channels()[i];
    for (std::size_t y = 0; y < binsOfRows.size(); ++y) {
        const auto channels = lanes.lanesFrom(0, y);
        for (std::size_t lane = 0; lane < LaneCount; ++lane)
            for (std::size_t bin = 0; bin < HistogramBins; ++bin)
                histogram.channels[channels[lane]].counts[bin] += binsOfRows[y][lane][bin];
    }
    return histogram;
}

} // namespace zor
