#pragma once

#include <cstdint>

namespace zor {

/// A pixel type code is four byte fields, from the low byte up: row number in the pixel type table (from 1),
/// packing byte, bits that one pixel takes in memory, family.

/// Colour family, the code's top byte.
enum class PixelFamily : std::uint8_t
{
    Mono = 1,
    Rgb = 2,
    Bayer = 3,
    TrueSense = 4,
    Yuv = 5
};

/// How the samples of one row lie in memory, the high nibble of the packing byte.
enum class PackingClass : std::uint8_t
{
    Unpacked = 0, ///< whole bytes, low bits significant
    /// Two pixels in three bytes. The even pixel's high bits are the first byte, the odd one's the last; the
    /// middle byte holds the even pixel's low bits in its high nibble and the odd one's in its low nibble.
    Packed = 1,
    P = 2,    ///< samples as one stream of bits from the low bit up
    Flex = 3, ///< `FLEx`, `FLEX`, `PACKED`: samples in sequence from the low bit, in fields
};

/// The packings of the pixel type table, after the formats' names: a code's packing byte, left in its place.
/// The number is the depth class, in bits of a sample.
enum class Packing : std::uint32_t
{
    Unpacked8 = 0x0100,
    Unpacked10 = 0x0200,
    Unpacked12 = 0x0300,
    Unpacked14 = 0x0400,
    Unpacked16 = 0x0500,
    Packed10 = 0x1200,
    Packed12 = 0x1300,
    P10 = 0x2200,
    P12 = 0x2300,
    Flex8 = 0x3100,
    Flex10 = 0x3200,
    Flex12 = 0x3300,
};

constexpr std::uint32_t Mono8 = 0x01080101;
constexpr std::uint32_t Mono10 = 0x01100202;
constexpr std::uint32_t Mono12 = 0x01100306;
constexpr std::uint32_t Mono16 = 0x0110050B;

/// Number of a row in the pixel type table, from 1; 0 and numbers above the table's count name no row.
constexpr std::uint32_t pixelTypeNumber(std::uint32_t code)
{
    return code & 0xFF;
}

/// The packing byte left in its place, as image records carry it.
constexpr std::uint32_t pixelTypePacking(std::uint32_t code)
{
    return code & 0xFF00;
}

/// Bits that one pixel takes in memory.
constexpr std::uint32_t pixelTypeBits(std::uint32_t code)
{
    return (code >> 16) & 0xFF;
}

/// Whether pixels of this packing, a packing byte left in its place, start at the middle of bytes.
constexpr bool isBitAddressed(std::uint32_t packing)
{
    return Packing{packing} == Packing::Packed10 || Packing{packing} == Packing::Packed12;
}

constexpr PixelFamily pixelTypeFamily(std::uint32_t code)
{
    return static_cast<PixelFamily>(code >> 24);
}

constexpr PackingClass pixelTypePackingClass(std::uint32_t code)
{
    return static_cast<PackingClass>((code >> 12) & 0xF);
}

/// Bits per sample that the packing byte's depth class means: 8, 10, 12, 14 or 16; 0 for no class.
constexpr std::uint32_t pixelTypeSampleBits(std::uint32_t code)
{
    const std::uint32_t depthClass = (code >> 8) & 0xF;
    return depthClass >= 1 && depthClass <= 5 ? 6 + 2 * depthClass : 0;
}

} // namespace zor
