#pragma once

#include "host/quality/SampleLanes.h"
#include "image/ZorImage.h"

#include <cstdint>
#include <vector>

namespace zor {

/// What the native codes of one channel come to in a region.
struct ChannelFigures
{
    char channel = 'Y';      ///< see SampleLanes
    std::uint64_t count = 0; ///< samples; without one minimum and maximum are 0, mean and deviation NaN
    std::uint16_t minimum = 0;
    std::uint16_t maximum = 0;
    double mean = 0.0;
    double deviation = 0.0; ///< population standard deviation
};

struct RegionFigures
{
    PixelRegion region; ///< what was measured: the part of the region that lies on the image
    /// In the order of SampleLanes::channels(), also when the region is empty. None for an image without
    /// native codes.
    std::vector<ChannelFigures> channels;
};

/// The figures of the samples that are stored with the pixels of a region. Codes are not limited to the
/// depth.
RegionFigures regionFigures(const _ZorImage& image, const PixelRegion& region);

} // namespace zor
