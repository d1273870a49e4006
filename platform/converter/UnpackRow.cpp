#include "platform/converter/UnpackRow.h"

#include "image/PixelTypeCode.h"

#include <algorithm>

namespace zor::platform {

namespace {

template <unsigned Depth> constexpr unsigned FullScale = (1U << Depth) - 1;

template <unsigned Depth> std::uint16_t limited(unsigned sample)
{
    return static_cast<std::uint16_t>(std::min(sample, FullScale<Depth>));
}

void unpackBytes(const std::uint8_t* source, std::uint16_t* destination, std::size_t width)
{
    std::copy(source, source + width, destination);
}

/// Little-endian words of 16 bits, byte by byte, as a line may start at an odd address.
template <unsigned Depth>
void unpackWords(const std::uint8_t* source, std::uint16_t* destination, std::size_t width)
{
    for (std::size_t x = 0; x < width; ++x)
        destination[x] = limited<Depth>(source[2 * x] | unsigned{source[2 * x + 1]} << 8);
}

/// One stream of bits, the first sample in the lowest ones, `FieldBits` (10 or 12) a sample: no sample lies
/// in more than two bytes, as it starts at an even bit.
template <unsigned FieldBits, unsigned Depth>
void unpackStream(const std::uint8_t* source, std::uint16_t* destination, std::size_t width)
{
    for (std::size_t x = 0; x < width; ++x) {
        const std::size_t bit = x * FieldBits;
        const unsigned word = source[bit / 8] | unsigned{source[bit / 8 + 1]} << 8;
        destination[x] = limited<Depth>((word >> (bit % 8)) & FullScale<FieldBits>);
    }
}

/// Two samples in three bytes: high bits in the outer ones; the low bits of the even pixel at the foot of the
/// middle byte's high nibble, those of the odd one at the foot of its low nibble.
template <unsigned Depth>
void unpackPairs(const std::uint8_t* source, std::uint16_t* destination, std::size_t width)
{
    constexpr unsigned LowBits = Depth - 8;
    constexpr unsigned LowMask = (1U << LowBits) - 1;
    const std::size_t paired = width / 2 * 2;
    for (std::size_t x = 0; x < paired; x += 2, source += 3) {
        const unsigned middle = source[1];
        destination[x] = static_cast<std::uint16_t>(source[0] << LowBits | (middle >> 4 & LowMask));
        destination[x + 1] = static_cast<std::uint16_t>(source[2] << LowBits | (middle & LowMask));
    }
    if (paired < width)
        destination[paired] = static_cast<std::uint16_t>(source[0] << LowBits | (source[1] >> 4 & LowMask));
}

/// By depth class and packing class, the packing byte.
UnpackRow byPacking(std::uint32_t pixelType)
{
    switch (pixelTypePacking(pixelType)) {
    case 0x0100:
    case 0x3100:
        return unpackBytes;
    case 0x0200:
        return unpackWords<10>;
    case 0x0300:
        return unpackWords<12>;
    case 0x0400:
        return unpackWords<14>;
    case 0x0500:
        return unpackWords<16>;
    case 0x1200:
        return unpackPairs<10>;
    case 0x1300:
        return unpackPairs<12>;
    case 0x2200:
        return unpackStream<10, 10>;
    case 0x2300:
    case 0x3300:
        return unpackStream<12, 12>;
    case 0x3200:
        return unpackStream<12, 10>;
    default:
        return nullptr;
    }
}

} // namespace

UnpackRow unpackRowFor(std::uint32_t pixelType)
{
    return pixelTypeFamily(pixelType) == PixelFamily::Mono ? byPacking(pixelType) : nullptr;
}

} // namespace zor::platform
