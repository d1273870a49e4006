#pragma once

#include <algorithm>
#include <cstdint>

namespace zor {

/// One pixel's channels, all of the same depth.
struct Rgb
{
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
};

/// The luma of Rec. 601, 0.299 R + 0.587 G + 0.114 B, to nearest, halves up. Grey gives exactly that grey.
constexpr std::uint32_t rec601Luma(const Rgb& colour)
{
    return (299 * colour.red + 587 * colour.green + 114 * colour.blue + 500) / 1000;
}

/// A colour difference of Rec. 601 at full range and `bits` per sample: (channel - luma) / (2 - 2 weight)
/// around the middle of the scale, to nearest, limited to the scale. Cb is that of blue with the weight 114,
/// Cr that of red with 299; weights in thousandths. The luma enters unrounded.
constexpr std::uint32_t rec601Chroma(const Rgb& colour, std::uint32_t channel, std::int64_t weight,
                                     std::uint32_t bits)
{
    const std::int64_t luma =
        299 * std::int64_t{colour.red} + 587 * std::int64_t{colour.green} + 114 * std::int64_t{colour.blue};
    const std::int64_t middle = std::int64_t{1} << (bits - 1);
    const std::int64_t fullScale = 2 * middle - 1;
    const std::int64_t range = 2 * (1000 - weight);
    // Above 0 throughout, so that the division rounds the same way on both sides of the middle.
    const std::int64_t scaled = 1000 * std::int64_t{channel} - luma + middle * range + range / 2;
    return static_cast<std::uint32_t>(std::min(scaled / range, fullScale));
}

} // namespace zor
