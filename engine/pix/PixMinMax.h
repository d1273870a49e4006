#pragma once

#include "engine/pix/PixTypes.h"

/// Extremes of an image. Steps are in bytes.
namespace zor {

/// A pixel's place, from the top left corner.
struct PixelPosition
{
    std::int32_t x;
    std::int32_t y;
};

/// Smallest and largest unsigned pixel. Checks: a null pointer, then the region.
std::int32_t pixMinMax8u(const std::uint8_t* source, std::int32_t step, PixelRegion region,
                         std::uint8_t* minimum, std::uint8_t* maximum);

/// Smallest and largest pixel read as signed numbers. Checks: a null pointer, then the region.
std::int32_t pixMinMax16s(const std::int16_t* source, std::int32_t step, PixelRegion region,
                          std::int16_t* minimum, std::int16_t* maximum);

/// Extremes of the unsigned pixels and the place where each occurs first: in the topmost row that has it, the
/// leftmost. Any out pointer may be null. Checks: null source, region, step under 2 x width, odd step.
std::int32_t pixMinMaxLocate16u(const std::uint16_t* source, std::int32_t step, PixelRegion region,
                                float* minimum, float* maximum, PixelPosition* minimumPosition,
                                PixelPosition* maximumPosition);

} // namespace zor
