#pragma once

#include <cstdint>
#include <cstring>

/// Four samples side by side in one word of 64 bits, 16 bits each, the first in the lowest ones: as they lie
/// in memory on a little-endian machine. Unpacking is bound by the number of operations a sample, and here
/// one operation does the work of four on every CPU.
namespace zor::unpack {

/// Bytes that a load takes, whatever it uses of them.
constexpr std::size_t LoadBytes = 8;

inline std::uint64_t loadBytes(const std::uint8_t* source)
{
    std::uint64_t word;
    std::memcpy(&word, source, sizeof(word));
    return word;
}

inline void storeLanes(std::uint16_t* destination, std::uint64_t lanes)
{
    std::memcpy(destination, &lanes, sizeof(lanes));
}

/// The same value in each of the four lanes.
constexpr std::uint64_t everyLane(std::uint64_t value)
{
    return value | value << 16 | value << 32 | value << 48;
}

/// Two runs of `Bits` bits (at most 32), one after the other, each at the foot of 32 bits of its own.
template <unsigned Bits> constexpr std::uint64_t spreadToHalves(std::uint64_t word)
{
    constexpr std::uint64_t Mask = (std::uint64_t{1} << Bits) - 1;
    return (word & Mask) | (word >> Bits & Mask) << 32;
}

} // namespace zor::unpack
