#pragma once

#include "image/ZorPixelTypeRow.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zor {

/// The colour filter of a Bayer or RGBW sensor: a cell of filters that repeats over the sensor, and the place
/// where the image enters it. Layout and phase come from the format's row in the pixel type table.
class ColourFilter
{
public:
    enum Colour : std::uint8_t
    {
        Red,
        Green,
        Blue,
        Panchromatic ///< no filter: sees the whole visible light
    };

    /// `row` is one of the Bayer or TrueSense families.
    explicit ColourFilter(const ZorPixelTypeRow& row);

    /// The filter over the pixel in column `x` of row `y` of the image.
    Colour at(std::size_t x, std::size_t y) const
    {
        return m_cell[(y + m_firstRow) % m_side * m_side + (x + m_firstColumn) % m_side];
    }

private:
    std::size_t m_side;
    std::size_t m_firstColumn;
    std::size_t m_firstRow;
    std::array<Colour, 16> m_cell{};
};

} // namespace zor
