#include "host/frames/PngSignificantBits.h"

#include <algorithm>

namespace zor {

namespace {

/// `value` of `bits` bits repeated from the top down until `fileBits` are full.
std::uint32_t repeated(std::uint32_t value, std::uint32_t bits, std::uint32_t fileBits)
{
    std::uint32_t result = value;
    std::uint32_t filled = bits;
    for (; filled < fileBits; filled += bits)
        result = result << bits | value;
    return result >> (filled - fileBits);
}

/// `value` of `bits` bits times the ratio of the full scales, to nearest.
std::uint32_t scaled(std::uint32_t value, std::uint32_t bits, std::uint32_t fileBits)
{
    const std::uint32_t full = (1U << bits) - 1;
    return (value * ((1U << fileBits) - 1) + full / 2) / full;
}

} // namespace

void applySignificantBits(StoredSamples& samples, std::uint32_t fileBits, std::uint32_t significantBits)
{
    samples.stated = {significantBits, "sBIT " + std::to_string(significantBits)};
    const std::uint32_t shift = fileBits - significantBits;
    auto& values = samples.values;
    if (std::all_of(values.begin(), values.end(),
                    [=](std::uint16_t sample) { return sample >> significantBits == 0; }))
        return;
    const auto isBroughtUp = [=](std::uint16_t sample) {
        const std::uint32_t high = std::uint32_t{sample} >> shift;
        return sample == high << shift || sample == repeated(high, significantBits, fileBits) ||
               sample == scaled(high, significantBits, fileBits);
    };
    if (!std::all_of(values.begin(), values.end(), isBroughtUp))
        return;
    for (std::uint16_t& sample : values)
        sample = static_cast<std::uint16_t>(sample >> shift);
    samples.stated->source += ", in the high bits of " + std::to_string(fileBits);
}

} // namespace zor
