#pragma once

#include <cstdint>

namespace zor {

/// Size of the pixels that a primitive works on.
struct PixelRegion
{
    std::int32_t width;  ///< pixels
    std::int32_t height; ///< rows
};

/// What a primitive answers. Checks run in the order given at each primitive, and a failed check leaves the
/// outputs untouched.
enum PixStatus : std::int32_t
{
    PixDone = 0,
    PixWarningLevelSpacing = 48, ///< levels are less than 1 apart
    PixNotAHistogramPlan = -5,
    PixEmptyRegion = -6, ///< region width or height under 1
    PixLevelOrder = -7,  ///< lower level not below upper level
    PixNullPointer = -8,
    PixUnknownDataType = -12,
    PixStepTooSmall = -14,
    PixChannelCount = -53, ///< not 1, 3 or 4
    PixTooFewLevels = -107,
    PixOddStep = -108,
};

} // namespace zor
