#include "host/frames/encode/PackRow.h"

#include "image/PixelTypeCode.h"

#include <cstddef>
#include <cstring>

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
    std::size_t x = 0;
    for (; x + 1 < samples.size(); x += 2, row += 3) {
        row[0] = static_cast<std::uint8_t>(samples[x] >> lowBits);
        row[1] = static_cast<std::uint8_t>((samples[x] & lowMask) << 4 | (samples[x + 1] & lowMask));
        row[2] = static_cast<std::uint8_t>(samples[x + 1] >> lowBits);
    }
    if (x < samples.size()) {
        row[0] = static_cast<std::uint8_t>(samples[x] >> lowBits);
        row[1] = static_cast<std::uint8_t>((samples[x] & lowMask) << 4);
    }
}

/// Samples in bytes or words of their own, as they are. Bytes may alias anything, so nothing is read through
/// the vector between them.
void packWhole(const std::vector<std::uint16_t>& samples, std::size_t bytesPerSample, std::uint8_t* row)
{
    const std::uint16_t* const source = samples.data();
    const std::size_t count = samples.size();
    if (bytesPerSample == 1)
        for (std::size_t i = 0; i < count; ++i)
            row[i] = static_cast<std::uint8_t>(source[i]);
    else
        std::memcpy(row, source, count * sizeof(std::uint16_t));
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
    if (fieldBits % 8 == 0) {
        packWhole(samples, fieldBits / 8, row);
        return;
    }
    for (std::size_t i = 0; i < samples.size(); ++i)
        putBits(row, i / perPixel * pixelBits + i % perPixel * fieldBits, samples[i]);
}

} // namespace zor
