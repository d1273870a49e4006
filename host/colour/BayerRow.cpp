#include "host/colour/BayerRow.h"

namespace zor {

namespace {

std::uint16_t meanOf(std::uint32_t a, std::uint32_t b)
{
    return static_cast<std::uint16_t>((a + b + 1) / 2);
}

std::uint16_t meanOf(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
{
    return static_cast<std::uint16_t>((a + b + c + d + 2) / 4);
}

/// `own` is the place in the destination's pixel of the row's colour beside green, `other` that of the rows
/// above and below. `at` is a pixel's place in the source, which begins one sample before the first one.
void greenPixel(const BayerRow& source, std::size_t at, std::uint16_t* pixel, int own, int other)
{
    pixel[own] = meanOf(source.row[at - 1], source.row[at + 1]);
    pixel[1] = source.row[at];
    pixel[other] = meanOf(source.above[at], source.below[at]);
}

void colouredPixel(const BayerRow& source, std::size_t at, std::uint16_t* pixel, int own, int other)
{
    pixel[own] = source.row[at];
    pixel[1] = meanOf(source.row[at - 1], source.row[at + 1], source.above[at], source.below[at]);
    pixel[other] =
        meanOf(source.above[at - 1], source.above[at + 1], source.below[at - 1], source.below[at + 1]);
}

template <int Own, int Other>
void demosaic(const BayerRow& source, std::uint16_t* destination, std::size_t width)
{
    std::size_t x = 0;
    if (source.isGreenFirst)
        greenPixel(source, ++x, destination, Own, Other);
    for (; x + 1 < width; x += 2) {
        colouredPixel(source, x + 1, destination + 3 * x, Own, Other);
        greenPixel(source, x + 2, destination + 3 * x + 3, Own, Other);
    }
    if (x < width)
        colouredPixel(source, x + 1, destination + 3 * x, Own, Other);
}

} // namespace

void demosaicRow(const BayerRow& source, std::uint16_t* destination, std::size_t width)
{
    if (source.isRedRow)
        demosaic<0, 2>(source, destination, width);
    else
        demosaic<2, 0>(source, destination, width);
}

} // namespace zor
