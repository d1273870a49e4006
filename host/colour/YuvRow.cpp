#include "host/colour/YuvRow.h"

#include <algorithm>

namespace zor {

namespace {

constexpr int FractionBits = 14;

constexpr std::int32_t fixed(double factor)
{
    return static_cast<std::int32_t>(factor * (1 << FractionBits) + 0.5);
}

// With the luma 0.299 R + 0.587 G + 0.114 B, U goes with B - Y and V with R - Y, both over their full range.
constexpr std::int32_t RedOfV = fixed(2 * (1 - 0.299));
constexpr std::int32_t BlueOfU = fixed(2 * (1 - 0.114));
constexpr std::int32_t GreenOfU = fixed(2 * (1 - 0.114) * 0.114 / 0.587);
constexpr std::int32_t GreenOfV = fixed(2 * (1 - 0.299) * 0.299 / 0.587);

class YuvColour
{
public:
    explicit YuvColour(std::uint32_t bits)
        : m_middle(1 << (bits - 1))
        , m_fullScale((1 << bits) - 1)
    {
    }

    std::uint16_t middle() const { return static_cast<std::uint16_t>(m_middle); }

    void operator()(std::uint16_t luma, std::uint16_t u, std::uint16_t v, std::uint16_t* pixel) const
    {
        const std::int32_t blueness = u - m_middle;
        const std::int32_t redness = v - m_middle;
        pixel[0] = limited(luma, RedOfV * redness);
        pixel[1] = limited(luma, -GreenOfU * blueness - GreenOfV * redness);
        pixel[2] = limited(luma, BlueOfU * blueness);
    }

private:
    std::uint16_t limited(std::int32_t luma, std::int32_t difference) const
    {
        const std::int32_t half = 1 << (FractionBits - 1);
        return static_cast<std::uint16_t>(
            std::clamp(luma + ((difference + half) >> FractionBits), 0, m_fullScale));
    }

    std::int32_t m_middle;
    std::int32_t m_fullScale;
};

} // namespace

void colourYuvRow(const std::uint16_t* source, YuvOrder order, std::uint32_t bits, std::uint16_t* destination,
                  std::size_t width)
{
    const YuvColour colour(bits);
    if (order == YuvOrder::Whole) {
        for (std::size_t x = 0; x < width; ++x)
            colour(source[4 * x], source[4 * x + 1], source[4 * x + 2], destination + 3 * x);
        return;
    }
    const std::size_t luma = order == YuvOrder::LumaFirst ? 0 : 1;
    const std::size_t difference = 1 - luma;
    std::uint16_t v = colour.middle();
    for (std::size_t x = 0; x < width; x += 2) {
        const std::uint16_t* pair = source + 2 * x;
        const std::uint16_t u = pair[difference];
        const bool isWhole = x + 1 < width;
        if (isWhole)
            v = pair[2 + difference];
        colour(pair[luma], u, v, destination + 3 * x);
        if (isWhole)
            colour(pair[2 + luma], u, v, destination + 3 * x + 3);
    }
}

} // namespace zor
