#pragma once

#include "image/PixelTypeCode.h"

/// The mono format that a frame of the given depth is brought to before anything is computed on it.
/// 10, 12 and 16 keep their depth; every other depth, 14 among them, comes down to 8 bits.
constexpr std::uint32_t monoTargetForDepth(std::uint32_t depth)
{
    switch (depth) {
    case 10:
        return ZorMono10;
    case 12:
        return ZorMono12;
    case 16:
        return ZorMono16;
    default:
        return ZorMono8;
    }
}
