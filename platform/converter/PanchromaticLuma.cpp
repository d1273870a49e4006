#include "platform/converter/PanchromaticLuma.h"

#include "image/ColourFilter.h"
#include "image/ZorPixelTypeTable.h"

#include <algorithm>

namespace zor::platform {

namespace {

/// Column parity of the panchromatic samples of the first row.
std::size_t firstPanchromatic(std::uint32_t pixelType)
{
    const ColourFilter filter(*exactPixelTypeRow(pixelType));
    return filter.at(0, 0) == ColourFilter::Panchromatic ? 0 : 1;
}

std::uint16_t meanOf(unsigned a, unsigned b)
{
    return static_cast<std::uint16_t>((a + b + 1) / 2);
}

/// A pixel on the border.
std::uint16_t borderMean(const Mosaic& mosaic, std::size_t x, std::size_t y)
{
    const std::uint16_t* row = mosaic.row(y);
    const bool left = x > 0;
    const bool right = x + 1 < mosaic.width;
    const bool above = y > 0;
    const bool below = y + 1 < mosaic.height;
    if (left && right)
        return meanOf(row[x - 1], row[x + 1]);
    if (above && below)
        return meanOf(mosaic.row(y - 1)[x], mosaic.row(y + 1)[x]);
    const bool horizontal = left || right;
    const bool vertical = above || below;
    const std::uint16_t beside = horizontal ? row[left ? x - 1 : x + 1] : row[x];
    const std::uint16_t across = vertical ? mosaic.row(above ? y - 1 : y + 1)[x] : row[x];
    return horizontal && vertical ? meanOf(beside, across) : horizontal ? beside : across;
}

} // namespace

void panchromaticLuma(std::uint32_t pixelType, const Mosaic& mosaic, const Luma& luma)
{
    const std::size_t first = firstPanchromatic(pixelType);
    for (std::size_t y = 0; y < mosaic.height; ++y) {
        const std::uint16_t* row = mosaic.row(y);
        std::uint16_t* destination = luma.row(y);
        std::copy_n(row, mosaic.width, destination);
        const bool inner = y > 0 && y + 1 < mosaic.height;
        for (std::size_t x = (first + y + 1) % 2; x < mosaic.width; x += 2) {
            if (!inner || x == 0 || x + 1 == mosaic.width) {
                destination[x] = borderMean(mosaic, x, y);
            } else {
                const unsigned sum = row[x - 1] + row[x + 1] + mosaic.row(y - 1)[x] + mosaic.row(y + 1)[x];
                destination[x] = static_cast<std::uint16_t>((sum + 2) / 4);
            }
        }
    }
}

} // namespace zor::platform
