#pragma once

#include "platform/viewer/picture/PixelShape.h"

#include <array>
#include <cstdint>

namespace zor::viewer {
/// How samples become colours of the screen. A sample of depth d keeps its upper 8 bits: shifted right by
/// d - 8 (left below 8 bits), values beyond the depth are white. Mono goes through the table, colour doesn't.
struct Tone
{
    int shift = 0; ///< to the right; negative: to the left
    bool isGrey = true;
    bool isColour = false;
    bool blueFirst = false;
    std::array<std::uint32_t, 256> table{}; ///< 0xFFRRGGBB
};

/// `coloration` chooses false colours for mono images: black, blue, cyan, yellow, red, white.
Tone makeTone(const PixelShape& shape, bool coloration);

/// What a sample becomes before the table.
inline std::uint32_t toneLevel(std::uint32_t sample, int shift)
{
    const std::uint32_t level = shift >= 0 ? sample >> shift : sample << -shift;
    return level > 255 ? 255 : level;
}

/// A row of resampled samples (one or three a pixel) to 0xFFRRGGBB words.
void toneRow(const Tone& tone, const std::uint16_t* samples, std::uint32_t* target, int pixels);
} // namespace zor::viewer
