#include "host/frames/encode/PackRow.h"

#include "image/PixelTypeCode.h"

#include <cstddef>

namespace zor {

namespace {

/// Adds a value whose lowest bit goes to `bit`, counted from the low bit of the first byte. The bits above
/// the value's highest one are left alone, and so are the bytes that hold none of its ones.
void putBits(std::uint8_t* bytes, std::size_t bit, std::uint32_t value)
{
    std::uint8_t* byte = bytes + bit / 8;
    for (value <<= bit % 8; value != 0; value >>= 8, ++byte)
        *byte = static_cast<std::uint8_t>(*byte | value);
}

/// Two samples in three bytes: the high bits in the outer ones, the low bits in the middle one, those of the
/// even pixel in its high nibble.
void packPairs(const std::vector<std::uint16_t>& samples, std::uint32_t sampleBits, std::uint8_t* row)
{
    const std::uint32_t lowBits = sampleBits - 8;
    const std::uint32_t lowMask = (1U << lowBits) - 1;
    for (std::size_t x = 0; x < samples.size(); ++x) {
        const bool odd = x % 2 == 1;
        const std::size_t pair = x / 2 * 24;
        putBits(row, pair + (odd ? 16 : 0), samples[x] >> lowBits);
        putBits(row, pair + (odd ? 8 : 12), samples[x] & lowMask);
    }
}

} // namespace

void packRow(const std::vector<std::uint16_t>& samples, std::uint32_t pixelType, std::uint32_t perPixel,
             std::uint8_t* row)
{
    if (pixelTypePackingClass(pixelType) == PackingClass::Packed) {
        packPairs(samples, pixelTypeSampleBits(pixelType), row);
        return;
    }
    // Every other format stores a pixel's samples in sequence from the low bit, in fields of equal width;
    // what does not divide is left over above the last one.
    const std::size_t pixelBits = pixelTypeBits(pixelType);
    const std::size_t fieldBits = pixelBits / perPixel;
    for (std::size_t i = 0; i < samples.size(); ++i)
        putBits(row, i / perPixel * pixelBits + i % perPixel * fieldBits, samples[i]);
}

} // namespace zor
