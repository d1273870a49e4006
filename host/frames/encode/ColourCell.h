#pragma once

#include "image/ZorPixelTypeTable.h"

#include <array>

namespace zor {

/// The cell of colour filters that a Bayer or RGBW sensor repeats, as the format's row in the pixel type
/// table lays it out.
class ColourCell
{
public:
    /// `row` is one of the Bayer or TrueSense families.
    explicit ColourCell(const ZorPixelTypeRow& row);

    /// The filter over the site: R, G, B, or W for a panchromatic one.
    char at(std::uint32_t x, std::uint32_t y) const
    {
        return m_filters[(y + m_firstRow) % m_side * m_side + (x + m_firstColumn) % m_side];
    }

private:
    std::uint32_t m_side = 0;
    std::uint32_t m_firstColumn = 0;
    std::uint32_t m_firstRow = 0;
    std::array<char, 16> m_filters{};
};

} // namespace zor
