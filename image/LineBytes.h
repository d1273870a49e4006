#pragma once

#include "image/PixelTypeCode.h"

/// Bytes that one line of `width` pixels takes at least: its bits rounded up to whole bytes. Every line
/// starts at a byte. An odd last pixel of the `Packed` formats takes its high byte and its half of the middle
/// byte, which this covers.
constexpr std::uint64_t tightPitch(std::uint32_t code, std::uint32_t width)
{
    return (std::uint64_t{width} * pixelTypeBits(code) + 7) / 8;
}

/// Bytes from the first one of an image to the last one of its last line, which may be shorter than the
/// pitch. `height` is at least 1. Does not overflow for any pitch and height of 32 bits.
constexpr std::uint64_t neededBytes(std::uint32_t code, std::uint32_t width, std::uint32_t height,
                                    std::uint32_t pitch)
{
    return std::uint64_t{height - 1} * pitch + tightPitch(code, width);
}
