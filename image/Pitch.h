#pragma once

#include "image/PixelTypeCode.h"

namespace zor {

/// Bytes that one row of `width` pixels takes at least: its bits rounded up to whole bytes. Every row starts
/// at a byte. In the `Packed` formats the last pixel of a row of odd width takes two bytes, the high bits and
/// half of the middle byte.
constexpr std::uint64_t tightPitch(std::uint32_t code, std::uint32_t width)
{
    return (std::uint64_t{width} * pixelTypeBits(code) + 7) / 8;
}

/// Bytes from the first one of an image to the last one of its last row, which may be shorter than the pitch.
/// `height` is at least 1, and `pitch` at least tightPitch(): with a smaller pitch the sum can exceed 64
/// bits.
constexpr std::uint64_t neededBytes(std::uint32_t code, std::uint32_t width, std::uint32_t height,
                                    std::uint32_t pitch)
{
    return std::uint64_t{height - 1} * pitch + tightPitch(code, width);
}

} // namespace zor
