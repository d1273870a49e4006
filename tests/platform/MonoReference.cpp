#include "platform/MonoReference.h"

#include <algorithm>

namespace {

template <std::uint64_t Stride> std::uint64_t inSequence(std::uint64_t x, std::uint32_t bit)
{
    return x * Stride + bit;
}

/// Three bytes for a pair: the even pixel's high bits in byte 0, the odd one's in byte 2; in byte 1 the low
/// bits of the even pixel from bit 4 on, those of the odd pixel from bit 0 on.
template <std::uint32_t LowBits> std::uint64_t inPairs(std::uint64_t x, std::uint32_t bit)
{
    const std::uint64_t pair = x / 2 * 24;
    const bool odd = x % 2 == 1;
    if (bit < LowBits)
        return pair + 8 + (odd ? 0 : 4) + bit;
    return pair + (odd ? 16 : 0) + bit - LowBits;
}

} // namespace

const std::vector<MonoFormat>& monoFormats()
{
    static const std::vector<MonoFormat> formats = {
        {"Mono8", 0x01080101, 8, 8, inSequence<8>, 8},
        {"Mono10", 0x01100202, 10, 16, inSequence<16>, 16},
        {"Mono10p", 0x010A2203, 10, 10, inSequence<10>, 10},
        {"Mono10Packed", 0x010C1204, 10, 12, inPairs<2>, 10},
        {"Mono10_FLExPacked", 0x010C3205, 10, 12, inSequence<12>, 12},
        {"Mono12", 0x01100306, 12, 16, inSequence<16>, 16},
        {"Mono12p", 0x010C2307, 12, 12, inSequence<12>, 12},
        {"Mono12Packed", 0x010C1308, 12, 12, inPairs<4>, 12},
        {"Mono12_FLExPacked", 0x010C3309, 12, 12, inSequence<12>, 12},
        {"Mono14", 0x0110040A, 14, 16, inSequence<16>, 16},
        {"Mono16", 0x0110050B, 16, 16, inSequence<16>, 16},
        {"Mono8_FLExPacked", 0x0108310C, 8, 8, inSequence<8>, 8},
    };
    return formats;
}

std::uint32_t referenceSample(const MonoFormat& format, const std::uint8_t* line, std::uint64_t x)
{
    std::uint32_t sample = 0;
    for (std::uint32_t bit = 0; bit < format.storedBits; ++bit) {
        const std::uint64_t place = format.bitPlace(x, bit);
        if ((line[place / 8] >> (place % 8)) % 2 == 1)
            sample += 1U << bit;
    }
    return std::min(sample, (1U << format.heldBits) - 1);
}

std::uint32_t referenceDepth(std::uint32_t sample, std::uint32_t from, std::uint32_t to)
{
    std::uint32_t result = 0;
    for (std::uint32_t i = 0; i < to; ++i) {
        const std::uint32_t bit = sample >> (from - 1 - i % from) & 1;
        result = result * 2 + bit;
    }
    return result;
}
