#include "engine/HistogramPeak.h"

#include "engine/FixedPoint.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zor {
namespace {

std::int32_t wrapToInt32(std::int64_t value)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

std::int32_t grainFor(std::int32_t span)
{
    if (span > 10000)
        return 10000;
    if (span > 1000)
        return 500;
    return span > 100 ? 100 : 20;
}

} // namespace

std::int32_t histogramLevels(std::int32_t depth)
{
    return truncateToInt32(std::ldexp(1.0, depth));
}

std::int32_t largestInnerBin(const std::int32_t* bins, std::int32_t levels)
{
    std::int32_t largest = std::numeric_limits<std::int32_t>::min();
    for (std::int32_t i = 1; i < levels - 1; ++i)
        largest = std::max(largest, bins[i]);
    return largest;
}

std::int32_t nextHistogramPeak(std::int32_t peak, std::int32_t floor, std::int32_t largest)
{
    const bool shrink = peak * 0.6 > largest;
    if (!shrink && largest <= peak)
        return peak;
    const std::int32_t span = wrapToInt32(std::int64_t{largest} - floor);
    return RoundToMultiple(largest, grainFor(span), true);
}

std::int32_t RoundToMultiple(std::int32_t value, std::int32_t multiple, bool up)
{
    if (value == 0)
        return 0;
    const std::int64_t remainder = std::int64_t{value} % multiple;
    const std::int64_t truncated = value - remainder;
    if (up)
        return wrapToInt32(value > 0 ? truncated + multiple : value + remainder);
    return wrapToInt32(value > 0 ? truncated : truncated - multiple);
}

} // namespace zor
