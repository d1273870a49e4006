#pragma once

#include "image/PixelTypeCode.h"

namespace zor {

/// The mono format that a frame of the given depth is brought to before anything is computed on it.
/// 10, 12 and 16 keep their depth; every other depth, 14 among them, comes down to 8 bits.
constexpr std::uint32_t computeFormat(std::uint32_t depth)
{
    switch (depth) {
    case 10:
        return Mono10;
    case 12:
        return Mono12;
    case 16:
        return Mono16;
    default:
        return Mono8;
    }
}

/// The mono format that holds the luma of any format of the pixel type table without loss, for showing it. It
/// goes by the bits that a sample has in memory; 14 bits come up to 16.
constexpr std::uint32_t displayFormat(std::uint32_t pixelType)
{
    const std::uint32_t bits = pixelTypeSampleBits(pixelType);
    return computeFormat(bits == 14 ? 16 : bits);
}

/// Whether the image converter brings frames to this format.
constexpr bool isMonoTarget(unsigned long pixelType)
{
    return pixelType == Mono8 || pixelType == Mono10 || pixelType == Mono12 || pixelType == Mono16;
}

} // namespace zor
