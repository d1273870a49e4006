#include "engine/pix/PixMinMax.h"

#include "engine/ImageView.h"
#include "engine/pix/PixRows.h"

#include <algorithm>
#include <limits>

namespace zor {
namespace {

template <typename Pixel> struct Extremes
{
    Pixel least = std::numeric_limits<Pixel>::max();
    Pixel greatest = std::numeric_limits<Pixel>::min();

    /// Nothing further can widen them.
    bool complete() const
    {
        return least == std::numeric_limits<Pixel>::min() && greatest == std::numeric_limits<Pixel>::max();
    }
};

template <typename Pixel> Pixel pixelAt(const std::uint8_t* row, std::int32_t x)
{
    if constexpr (sizeof(Pixel) == 1)
        return row[x];
    else
        return static_cast<Pixel>(loadCell(row, x));
}

template <typename Pixel>
Extremes<Pixel> widened(Extremes<Pixel> seen, const std::uint8_t* row, std::int32_t width)
{
    for (std::int32_t x = 0; x < width; ++x) {
        const Pixel pixel = pixelAt<Pixel>(row, x);
        seen.least = std::min(seen.least, pixel);
        seen.greatest = std::max(seen.greatest, pixel);
    }
    return seen;
}

template <typename Pixel>
std::int32_t minMax(const Pixel* source, std::int32_t step, PixelRegion region, Pixel* minimum,
                    Pixel* maximum)
{
    if (!source || !minimum || !maximum)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    Extremes<Pixel> seen;
    for (std::int32_t y = 0; y < region.height && !seen.complete(); ++y)
        seen = widened(seen, pixRow(source, step, y), region.width);
    *minimum = seen.least;
    *maximum = seen.greatest;
    return PixDone;
}

/// The first column of a row that holds the value, which the row does hold.
std::int32_t firstColumn(const std::uint8_t* row, std::uint16_t value)
{
    std::int32_t x = 0;
    while (loadCell(row, x) != value)
        ++x;
    return x;
}

} // namespace

std::int32_t pixMinMax8u(const std::uint8_t* source, std::int32_t step, PixelRegion region,
                         std::uint8_t* minimum, std::uint8_t* maximum)
{
    return minMax(source, step, region, minimum, maximum);
}

std::int32_t pixMinMax16s(const std::int16_t* source, std::int32_t step, PixelRegion region,
                          std::int16_t* minimum, std::int16_t* maximum)
{
    return minMax(source, step, region, minimum, maximum);
}

std::int32_t pixMinMaxLocate16u(const std::uint16_t* source, std::int32_t step, PixelRegion region,
                                float* minimum, float* maximum, PixelPosition* minimumPosition,
                                PixelPosition* maximumPosition)
{
    if (!source)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    if (step < std::int64_t{region.width} * 2)
        return PixStepTooSmall;
    if (step % 2 != 0)
        return PixOddStep;

    // Rows are remembered, columns looked up once at the end: only a strictly better row takes over.
    Extremes<std::uint16_t> seen = widened(Extremes<std::uint16_t>{}, pixRow(source, step, 0), region.width);
    std::int32_t leastRow = 0;
    std::int32_t greatestRow = 0;
    for (std::int32_t y = 1; y < region.height && !seen.complete(); ++y) {
        const Extremes<std::uint16_t> before = seen;
        seen = widened(seen, pixRow(source, step, y), region.width);
        if (seen.least != before.least)
            leastRow = y;
        if (seen.greatest != before.greatest)
            greatestRow = y;
    }

    if (minimum)
        *minimum = seen.least;
    if (maximum)
        *maximum = seen.greatest;
    if (minimumPosition)
        *minimumPosition = {firstColumn(pixRow(source, step, leastRow), seen.least), leastRow};
    if (maximumPosition)
        *maximumPosition = {firstColumn(pixRow(source, step, greatestRow), seen.greatest), greatestRow};
    return PixDone;
}

} // namespace zor
