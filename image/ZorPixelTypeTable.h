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

constexpr std::uint32_t ZorPixelTypeCount = 133;

/// Every pixel format that the system knows. Row n (from 1) has n in the low byte of its code.
extern const ZorPixelTypeRow ZorPixelTypeTable[ZorPixelTypeCount];

/// The row whose code is exactly this one; null when the table has none, also when only the upper bytes
/// differ from those of the row that the low byte names.
inline const ZorPixelTypeRow* pixelTypeTableRow(std::uint32_t code)
{
    const std::uint32_t index = (code & 0xFF) - 1;
    return index < ZorPixelTypeCount && ZorPixelTypeTable[index].code == code ? &ZorPixelTypeTable[index]
                                                                              : nullptr;
}
