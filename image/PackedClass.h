#pragma once

#include <cstdint>

/// The packing bytes of the two `Packed` classes: two pixels in three bytes, 12 bits a pixel. The even
/// pixel's high bits are the first byte, the odd one's the last; the middle byte holds the even pixel's low
/// bits in its high nibble and the odd one's in its low nibble.
constexpr std::uint32_t ZorPacked10 = 0x1200;
constexpr std::uint32_t ZorPacked12 = 0x1300;

/// Whether pixels of this packing start at the middle of bytes.
constexpr bool isBitAddressed(std::uint32_t packing)
{
    return packing == ZorPacked10 || packing == ZorPacked12;
}
