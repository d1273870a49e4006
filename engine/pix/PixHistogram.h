#pragma once

#include "engine/pix/PixTypes.h"

/// Histograms over evenly spread levels. A plan is an opaque block that pixHistogramInitUniform fills; plan
/// and work buffer have the sizes that pixHistogramSizes gives and belong to the caller.
namespace zor {

enum PixDataType : std::int32_t
{
    PixType8u = 1,
    PixType16u = 5,
    PixType16s = 7,
    PixType32f = 13,
};

/// Plan size 80 + 4 x levels bytes; work buffer for one channel 1024 bytes for 8-bit, 262144 for 16-bit
/// types, 0 for float. Checks: a null pointer, region, channels, levels, data type.
std::int32_t pixHistogramSizes(std::int32_t dataType, PixelRegion region, const std::int32_t* levels,
                               std::int32_t channels, std::int32_t uniform, std::int32_t* planSize,
                               std::int32_t* bufferSize);

/// Level k is the truncation of lower + k x spacing, spacing = (upper - lower) / (levels - 1) in doubles; the
/// first level is lower and the last upper, each truncated. Answers PixWarningLevelSpacing when the spacing
/// is under 1. Checks: data type, a null pointer, channels, levels, lower not below upper.
std::int32_t pixHistogramInitUniform(std::int32_t dataType, const float* lower, const float* upper,
                                     const std::int32_t* levels, std::int32_t channels, void* plan);

/// With L levels, bin k of the L - 1 bins counts the pixels v with level k <= v < level k + 1. The bins are
/// cleared first; entry L - 1 of the output is not touched. Checks: a null pointer, region, step under 1 or
/// under the width, not a plan.
std::int32_t pixHistogram8u(const std::uint8_t* source, std::int32_t step, PixelRegion region,
                            std::int32_t* bins, const void* plan, void* buffer);

/// The same on pixels read as signed numbers: levels above 32767 catch nothing. Checks: a null pointer,
/// region, step under 2 x width, not a plan.
std::int32_t pixHistogram16s(const std::int16_t* source, std::int32_t step, PixelRegion region,
                             std::int32_t* bins, const void* plan, void* buffer);

} // namespace zor
