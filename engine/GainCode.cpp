#include "engine/GainCode.h"

#include "engine/FixedPoint.h"

#include <algorithm>
#include <cmath>

namespace zor {

void EncodeGain(double value, std::uint16_t& code)
{
    const double magnitude = std::fabs(value);
    const auto integer = static_cast<std::uint32_t>(truncateToInt32(std::floor(magnitude)));
    double rest = magnitude - signedLow16(integer);
    std::uint32_t bits = integer & 0xF;
    for (double weight = 0.5; weight >= 1.0 / 256; weight *= 0.5) {
        const bool bit = rest >= weight;
        if (bit)
            rest -= weight;
        bits = bits * 2 + (bit ? 1 : 0);
    }
    code = static_cast<std::uint16_t>(bits);
}

void encodeGains(const std::list<double>& gains, std::uint16_t* codes, std::int32_t count,
                 std::int32_t capacity)
{
    std::int32_t made = 0;
    for (auto gain = gains.begin(); gain != gains.end() && made < count; ++gain)
        EncodeGain(*gain, codes[made++]);
    std::fill(codes + made, codes + capacity, GainCodeOne);
}

} // namespace zor
