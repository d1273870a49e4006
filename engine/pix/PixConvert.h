#pragma once

#include "engine/pix/PixTypes.h"

/// Copies and conversions. Steps are in bytes. Checks: a null pointer, then the region, then (conversions
/// only) a step under 1.
namespace zor {

/// Zero-extends each pixel.
std::int32_t pixWiden8uTo16u(const std::uint8_t* source, std::int32_t sourceStep, std::uint16_t* destination,
                             std::int32_t destinationStep, PixelRegion region);

/// Limits each pixel to 255.
std::int32_t pixNarrow16uTo8u(const std::uint16_t* source, std::int32_t sourceStep, std::uint8_t* destination,
                              std::int32_t destinationStep, PixelRegion region);

/// Copies the region, 16 bits an item. Any steps, also a step of 2 with a region width of 1, which gathers or
/// spreads a column.
std::int32_t pixCopy16(const void* source, std::int32_t sourceStep, void* destination,
                       std::int32_t destinationStep, PixelRegion region);

} // namespace zor
