#pragma once

#include <cstdint>

/// A pixel type code is four byte fields, from the low byte up: row number in the pixel type table (from 1),
/// packing byte, bits that one pixel takes in memory, family.

/// Colour family, the code's top byte.
enum class PixelFamily : std::uint8_t { Mono = 1, Rgb = 2, Bayer = 3, TrueSense = 4, Yuv = 5 };

/// How the samples of one line lie in memory, the high nibble of the packing byte.
enum class PackingClass : std::uint8_t {
    Plain = 0,  ///< whole bytes, low bits significant
    Packed = 1, ///< two pixels in three bytes, high bits first, the low bits in the middle byte
    P = 2,      ///< samples as one stream of bits from the low bit up
    Flex = 3,   ///< `FLEx`, `FLEX`, `PACKED`: samples in sequence from the low bit, in fields
};

constexpr std::uint32_t ZorMono8 = 0x01080101;
constexpr std::uint32_t ZorMono10 = 0x01100202;
constexpr std::uint32_t ZorMono12 = 0x01100306;
constexpr std::uint32_t ZorMono16 = 0x0110050B;

/// Row number in the pixel type table, from 1; 0 and numbers above the table's count name no row.
constexpr std::uint32_t pixelTypeRow(std::uint32_t code) { return code & 0xFF; }

/// The packing byte left in its place, as image records carry it.
constexpr std::uint32_t pixelTypePacking(std::uint32_t code) { return code & 0xFF00; }

/// Bits that one pixel takes in memory.
constexpr std::uint32_t pixelTypeBits(std::uint32_t code) { return (code >> 16) & 0xFF; }

constexpr PixelFamily pixelTypeFamily(std::uint32_t code) { return static_cast<PixelFamily>(code >> 24); }

constexpr PackingClass pixelTypePackingClass(std::uint32_t code)
{
    return static_cast<PackingClass>((code >> 12) & 0xF);
}

/// Bits per sample that the packing byte's depth class stands for: 8, 10, 12, 14 or 16; 0 for no class.
constexpr std::uint32_t pixelTypeSampleBits(std::uint32_t code)
{
    const std::uint32_t depthClass = (code >> 8) & 0xF;
    return depthClass >= 1 && depthClass <= 5 ? 6 + 2 * depthClass : 0;
}
