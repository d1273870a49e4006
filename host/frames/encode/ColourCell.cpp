#include "host/frames/encode/ColourCell.h"

#include "image/PixelTypeCode.h"

#include <sstream>
#include <string>
#include <utility>

namespace zor {

ColourCell::ColourCell(const ZorPixelTypeRow& row)
{
    std::istringstream layout(row.channelLayout);
    std::size_t count = 0;
    for (std::string token; count < m_filters.size() && layout >> token; ++count)
        m_filters[count] = token[0];

    if (pixelTypeFamily(row.code) == PixelFamily::Bayer) {
        m_side = 2;
        // The tokens run round the cell, so that the lower line comes from right to left.
        std::swap(m_filters[2], m_filters[3]);
    } else {
        m_side = 4;
        m_firstColumn = row.phase & 1;
        m_firstRow = row.phase >> 1;
    }
}

} // namespace zor
