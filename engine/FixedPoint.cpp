#include "engine/FixedPoint.h"

#include <limits>

namespace zor {

std::int32_t truncateToInt32(double value)
{
    // Written so that a NaN fails it.
    const bool fits = value > -2147483649.0 && value < 2147483648.0;
    return fits ? static_cast<std::int32_t>(value) : std::numeric_limits<std::int32_t>::min();
}

} // namespace zor
