#pragma once

#include <cstddef>
#include <cstdint>

/// `count` bits from bit `first` on, counted from the low bit of the first byte.
inline std::uint32_t bitsAt(const std::uint8_t* bytes, std::size_t first, std::size_t count)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value |= std::uint32_t{(bytes[(first + i) / 8] >> ((first + i) % 8)) & 1u} << i;
    return value;
}

inline void setBitsAt(std::uint8_t* bytes, std::size_t first, std::size_t count, std::uint32_t value)
{
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned bit = 1u << ((first + i) % 8);
        std::uint8_t& byte = bytes[(first + i) / 8];
        byte = static_cast<std::uint8_t>((value >> i & 1) != 0 ? byte | bit : byte & ~bit);
    }
}

/// A number of `count` bits with its highest one as sign.
inline int asSigned(std::uint32_t bits, std::size_t count)
{
    const std::int64_t range = std::int64_t{1} << count;
    return static_cast<int>(bits >= range / 2 ? bits - range : bits);
}
