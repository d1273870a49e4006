#include "image/ColourFilter.h"

#include "image/PixelTypeCode.h"

#include <utility>

namespace zor {

namespace {

ColourFilter::Colour colourOf(char letter)
{
    switch (letter) {
    case 'R':
        return ColourFilter::Red;
    case 'G':
        return ColourFilter::Green;
    case 'B':
        return ColourFilter::Blue;
    default:
        return ColourFilter::Panchromatic;
    }
}

} // namespace

ColourFilter::ColourFilter(const ZorPixelTypeRow& row)
    : m_side(pixelTypeFamily(row.code) == PixelFamily::Bayer ? 2 : 4)
    , m_firstColumn(row.phase & 1)
    , m_firstRow(row.phase >> 1)
{
    // The first letter of each token; what follows it numbers the two greens.
    std::size_t count = 0;
    for (const char* letter = row.channelLayout; *letter != '\0' && count < m_side * m_side; ++letter) {
        if (letter == row.channelLayout || letter[-1] == ' ')
            m_cell[count++] = colourOf(*letter);
    }
    // The tokens of a Bayer cell run round it, so that its lower row comes from right to left.
    if (m_side == 2)
        std::swap(m_cell[2], m_cell[3]);
}

} // namespace zor
