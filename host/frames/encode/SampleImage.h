#pragma once

#include <cstdint>
#include <vector>

namespace zor {

/// A picture before a pixel format is chosen for it: rows from the top, pixels from the left, without gaps.
struct SampleImage
{
    std::uint32_t width = 0;    ///< pixels
    std::uint32_t height = 0;   ///< rows
    std::uint32_t channels = 1; ///< 1: grey; 3: red, green, blue
    /// width x height x channels, the channels of a pixel side by side. From 0 to the full scale of the
    /// format's samples, whose bits pixelTypeSampleBits() gives.
    std::vector<std::uint16_t> samples;
};

} // namespace zor
