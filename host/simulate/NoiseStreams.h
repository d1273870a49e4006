#pragma once

#include <cstdint>

namespace zor {

/// Every source of randomness has its stream of the model's seed.
enum class NoiseStream : std::uint64_t
{
    Columns,
    Rows,
    PixelGain,
    PixelDark,
    Shot,
    Dark,
    Frames ///< all temporal noise of a scene's frames
};

constexpr std::uint64_t streamNumber(NoiseStream stream)
{
    return static_cast<std::uint64_t>(stream);
}

} // namespace zor
