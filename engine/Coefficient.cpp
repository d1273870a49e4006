#include "engine/Coefficient.h"

#include "engine/FixedPoint.h"

#include <cmath>

namespace zor {

std::int32_t EncodeCoefficient(double value, std::uint8_t fractionBits)
{
    if (fractionBits > 31)
        return 0;
    const std::int32_t integer = truncateToInt32(value);
    // The signed integer part is taken off the magnitude: the rest of a value of -1 and below is above 1.
    double rest = std::fabs(value) - integer;
    auto code = static_cast<std::uint32_t>(integer);
    double weight = 0.5;
    int left = fractionBits;
    for (; rest != 0.0 && left > 0; --left, weight *= 0.5) {
        code *= 2;
        if (rest >= weight) {
            code += 1;
            rest -= weight;
        }
    }
    return static_cast<std::int32_t>(code << left);
}

} // namespace zor
