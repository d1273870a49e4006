#pragma once

#include <cstdint>

namespace zor {

/// 2 to the power depth, computed in doubles and truncated to 32 bits.
std::int32_t histogramLevels(std::int32_t depth);

/// The largest of bins 1 to levels - 2; the smallest 32-bit integer when there are none.
std::int32_t largestInnerBin(const std::int32_t* bins, std::int32_t levels);

/// The axis peak after a histogram whose largest bin is `largest`: rises to it at once, falls to it only when
/// it is below 60 % of the present peak, and is rounded up to a grain that grows with peak - floor.
std::int32_t nextHistogramPeak(std::int32_t peak, std::int32_t floor, std::int32_t largest);

/// Rounds to a multiple; 0 stays. `multiple` is not 0.
/// Up: a positive value becomes the next larger multiple, even when it is a multiple itself; a negative one
/// becomes value + remainder. Not up: a positive value becomes the multiple at or below it, a negative one
/// the multiple below its truncation, even when it is a multiple itself.
std::int32_t RoundToMultiple(std::int32_t value, std::int32_t multiple, bool up);

} // namespace zor
