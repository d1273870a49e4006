#pragma once

#include <cstdint>

namespace zor {

/// Spreads numbers that lie close together over all 64 bits (SplitMix64).
constexpr std::uint64_t spreadBits(std::uint64_t value)
{
    value += 0x9E3779B97F4A7C15u;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9u;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBu;
    return value ^ (value >> 31);
}

} // namespace zor
