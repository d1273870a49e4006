#pragma once

#include <cstdint>

namespace zor {

/// (cell x code) / 256, floored, its low 16 bits: the cell is read as signed, the code as unsigned. Made of
/// the two halves of the unsigned product, in 16 bits throughout, so that the compiler takes as many cells at
/// a time as a vector holds; in 32 bits it would be half as many, through a multiplication that basic x86-64
/// lacks.
constexpr std::int16_t scaledCell(std::uint16_t cell, std::uint16_t code)
{
    const std::uint32_t product = std::uint32_t{cell} * code;
    const auto low = static_cast<std::uint16_t>(product);
    const auto high = static_cast<std::uint16_t>(product >> 16);
    // A negative cell is 65536 less than its unsigned value, which takes the code off the upper half.
    const auto negative = static_cast<std::uint16_t>(static_cast<std::int16_t>(cell) >> 15);
    const auto signedHigh = static_cast<std::uint16_t>(high - (code & negative));
    return static_cast<std::int16_t>(
        static_cast<std::uint16_t>(static_cast<std::uint16_t>(signedHigh << 8) | low >> 8));
}

} // namespace zor
