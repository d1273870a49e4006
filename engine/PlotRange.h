#pragma once

#include <cstdint>

namespace zor {

/// A plot's value axis.
struct PlotRange
{
    std::int32_t minimum;
    std::int32_t maximum;
};

/// The multiples of 20 around two pairs of extremes: floor of the lesser minimum, ceiling of the greater
/// maximum.
PlotRange plotRange(std::int32_t imageMin, std::int32_t imageMax, std::int32_t flatMin, std::int32_t flatMax);

} // namespace zor
