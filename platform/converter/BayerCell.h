#pragma once

#include <cstddef>
#include <cstdint>

namespace zor::platform {

/// Which colours the 2 x 2 cell of a Bayer format has, as the letters of its name tell: `BayerRG8` begins its
/// even lines with R G and its odd lines with G B.
class BayerCell
{
public:
    enum Colour
    {
        Red,
        Green,
        Blue
    };

    /// The cell of a Bayer format of the pixel type table.
    explicit BayerCell(std::uint32_t pixelType);

    Colour at(std::size_t x, std::size_t y) const { return m_colours[y % 2][x % 2]; }

private:
    Colour m_colours[2][2];
};

} // namespace zor::platform
