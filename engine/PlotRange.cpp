#include "engine/PlotRange.h"

#include "engine/FixedPoint.h"

#include <algorithm>
#include <cmath>

namespace zor {

PlotRange plotRange(std::int32_t imageMin, std::int32_t imageMax, std::int32_t flatMin, std::int32_t flatMax)
{
    constexpr double Grain = 20.0;
    const std::int32_t lowest = std::min(imageMin, flatMin);
    const std::int32_t highest = std::max(imageMax, flatMax);
    return {truncateToInt32(std::floor(lowest / Grain) * Grain),
            truncateToInt32(std::ceil(highest / Grain) * Grain)};
}

} // namespace zor
