#include "image/ColourFilter.h"
#include "image/ZorPixelTypeTable.h"
#include "platform/converter/BayerLuma.h"

#include <algorithm>

namespace zor::platform {

namespace {

/// Thousandths of red, green and blue in the Rec. 601 luma.
constexpr std::uint32_t Share[3] = {299, 587, 114};

/// One pixel. At most four samples of a colour lie in 3 x 3, so that all means have 12 as a common
/// denominator and only the last division rounds.
std::uint16_t lumaAt(const ColourFilter& filter, const Mosaic& mosaic, std::size_t x, std::size_t y)
{
    constexpr std::uint32_t Denominator = 12;
    std::uint32_t sum[3] = {};
    std::uint32_t count[3] = {};
    const std::size_t endY = std::min(y + 2, mosaic.height);
    const std::size_t endX = std::min(x + 2, mosaic.width);
    for (std::size_t v = y > 0 ? y - 1 : 0; v < endY; ++v) {
        for (std::size_t u = x > 0 ? x - 1 : 0; u < endX; ++u) {
            sum[filter.at(u, v)] += mosaic.row(v)[u];
            ++count[filter.at(u, v)];
        }
    }
    const ColourFilter::Colour own = filter.at(x, y);
    sum[own] = mosaic.row(y)[x];
    count[own] = 1;

    std::uint64_t weighted = 0;
    std::uint64_t shares = 0;
    for (int colour = 0; colour < 3; ++colour) {
        if (count[colour] == 0)
            continue;
        weighted += std::uint64_t{Share[colour]} * (Denominator / count[colour]) * sum[colour];
        shares += Share[colour];
    }
    return static_cast<std::uint16_t>((weighted + shares * Denominator / 2) / (shares * Denominator));
}

} // namespace

void smallBayerLuma(std::uint32_t pixelType, const Mosaic& mosaic, const Luma& luma)
{
    const ColourFilter filter(*exactPixelTypeRow(pixelType));
    for (std::size_t y = 0; y < mosaic.height; ++y) {
        for (std::size_t x = 0; x < mosaic.width; ++x)
            luma.row(y)[x] = lumaAt(filter, mosaic, x, y);
    }
}

} // namespace zor::platform
