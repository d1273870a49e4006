#include "host/quality/RegionFigures.h"

#include "host/quality/LaneKernels.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/NativeCodes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zor {

namespace {

/// Sums of one channel.
struct ChannelSums
{
    std::uint64_t sum = 0;
    std::uint64_t squares = 0;
};

void addLane(ChannelFigures& figures, ChannelSums& sums, const LaneSums& lanes, std::size_t lane)
{
    if (lanes.count[lane] == 0)
        return;
    figures.minimum =
        figures.count == 0 ? lanes.minimum[lane] : std::min(figures.minimum, lanes.minimum[lane]);
    figures.maximum = std::max(figures.maximum, lanes.maximum[lane]);
    figures.count += lanes.count[lane];
    sums.sum += lanes.sum[lane];
    sums.squares += lanes.squares[lane];
}

/// Deviations are taken from the whole part of the mean, in integers that wrap where the difference does not,
/// so that large codes that differ a little lose nothing.
void finish(ChannelFigures& figures, const ChannelSums& sums)
{
    if (figures.count == 0) {
        figures.mean = figures.deviation = std::numeric_limits<double>::quiet_NaN();
        return;
    }
    const auto count = static_cast<double>(figures.count);
    const std::uint64_t whole = sums.sum / figures.count;
    const std::uint64_t squares = sums.squares - 2 * whole * sums.sum + whole * whole * figures.count;
    const double fraction = static_cast<double>(sums.sum % figures.count) / count;
    figures.mean = static_cast<double>(sums.sum) / count;
    figures.deviation = std::sqrt(static_cast<double>(squares) / count - fraction * fraction);
}

} // namespace

RegionFigures regionFigures(const _ZorImage& image, const PixelRegion& region)
{
    if (!hasNativeCodes(image))
        return {};
    const SampleLanes lanes(*exactPixelTypeRow(image.pixelType));
    RegionFigures figures{clippedTo(image, region), {}};
    std::vector<LaneSums> sumsOfRows(lanes.rows());
    forEachRun(image, figures.region, [&](std::uint32_t y, const std::uint16_t* samples, std::size_t count) {
        addSamples(samples, count, sumsOfRows[y % lanes.rows()]);
    });

    figures.channels.resize(lanes.channels().size());
    std::vector<ChannelSums> sums(figures.channels.size());
    for (std::size_t y = 0; y < sumsOfRows.size(); ++y) {
        const auto channels = lanes.lanesFrom(static_cast<std::size_t>(figures.region.x), y);
        for (std::size_t lane = 0; lane < LaneCount; ++lane)
            addLane(figures.channels[channels[lane]], sums[channels[lane]], sumsOfRows[y], lane);
    }
    for (std::size_t i = 0; i < sums.size(); ++i) {
        figures.channels[i].channel = lanes.channels()[i];
        finish(figures.channels[i], sums[i]);
    }
    return figures;
}

} // namespace zor
