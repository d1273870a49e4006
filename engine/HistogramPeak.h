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

/// Rounds to a multiple. Up: a positive value moves to the next multiple, also when it is one; a negative one
/// becomes value + remainder; 0 stays. Not up: a positive value moves to the multiple at or below it, a
/// negative one to the multiple below its truncation, also when it is one; 0 stays. `multiple` is not 0.
std::int32_t RoundToMultiple(std::int32_t value, std::int32_t multiple, bool up);

} // namespace zor
