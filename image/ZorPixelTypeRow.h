#pragma once

#include <cstdint>

/// One pixel format.
struct ZorPixelTypeRow
{
    /// The format's name.
    const char* name;
    /// Channel tokens separated by single blanks: one token per channel for RGB, one per position of the
    /// colour cell for the raw and YUV families.
    const char* channelLayout;
    std::uint32_t channels;
    /// Significant bits per channel.
    std::uint32_t depth;
    /// The position in the pixel of a channel letter; -1 for a letter that the format does not have.
    int (*channelIndex)(char16_t letter);
    /// Where a TrueSense cell is entered, 0 to 3; 0 in every other family.
    std::uint32_t phase;
    /// The row's pixel type code.
    std::uint32_t code;
};
