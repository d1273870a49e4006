#pragma once

#include "engine/pix/PixTypes.h"

/// Saturating arithmetic on 16-bit images. Steps are in bytes and may be any. Checks: a null pointer, then
/// the region.
namespace zor {

/// destination = destination - source, 0 where that would be negative. `scale` is 0, the only one in use, and
/// is not looked at.
std::int32_t pixSubtractInPlace16u(const std::uint16_t* source, std::int32_t sourceStep,
                                   std::uint16_t* sourceDestination, std::int32_t step, PixelRegion region,
                                   std::int32_t scale);

/// destination = source x destination in 32 bits, divided by 2^scale (0 to 30), rounded to nearest with ties
/// to even: (p + 2^(scale - 1) - 1 + bit `scale` of p) >> scale, then limited to the signed 16-bit range.
std::int32_t pixMultiplyInPlace16s(const std::int16_t* source, std::int32_t sourceStep,
                                   std::int16_t* sourceDestination, std::int32_t step, PixelRegion region,
                                   std::int32_t scale);

} // namespace zor
