#pragma once

#include <cstdint>

namespace zor {

/// Truncates toward zero. A value that does not fit, an infinity or a NaN gives -2147483648, as the CPU's own
/// conversion does.
std::int32_t truncateToInt32(double value);

/// The low 16 bits of truncateToInt32: how means are stored.
inline std::uint16_t truncateToMean(double value)
{
    return static_cast<std::uint16_t>(static_cast<std::uint32_t>(truncateToInt32(value)) & 0xFFFF);
}

/// The low 16 bits read as a signed number.
constexpr std::int32_t signedLow16(std::uint32_t value)
{
    const std::int32_t low = static_cast<std::int32_t>(value & 0xFFFF);
    return low < 0x8000 ? low : low - 0x10000;
}

} // namespace zor
