#include "engine/pix/PixArithmetic.h"

#include "engine/ImageView.h"
#include "engine/pix/PixRows.h"

#include <algorithm>

namespace zor {
namespace {

void subtractRow(const std::uint8_t* source, std::uint8_t* destination, std::int32_t width)
{
    for (std::int32_t x = 0; x < width; ++x) {
        // Within 16 bits, so that the compiler takes as many cells at a time as a vector holds.
        const std::uint16_t subtrahend = loadCell(source, x);
        storeCell(destination, x,
                  static_cast<std::uint16_t>(std::max(loadCell(destination, x), subtrahend) - subtrahend));
    }
}

/// value / 2^scale to nearest, ties to even. `half` is 2^(scale - 1) - 1.
std::int32_t roundedShift(std::int32_t value, std::int32_t half, std::int32_t scale)
{
    return (value + half + ((value >> scale) & 1)) >> scale;
}

std::uint16_t limitedTo16s(std::int32_t value)
{
    return static_cast<std::uint16_t>(std::clamp(value, -32768, 32767));
}

std::int32_t product(const std::uint8_t* source, const std::uint8_t* destination, std::int32_t x)
{
    return std::int32_t{static_cast<std::int16_t>(loadCell(source, x))} *
           static_cast<std::int16_t>(loadCell(destination, x));
}

void multiplyRow(const std::uint8_t* source, std::uint8_t* destination, std::int32_t width)
{
    for (std::int32_t x = 0; x < width; ++x)
        storeCell(destination, x, limitedTo16s(product(source, destination, x)));
}

void multiplyRowScaled(const std::uint8_t* source, std::uint8_t* destination, std::int32_t width,
                       std::int32_t scale)
{
    const auto half = static_cast<std::int32_t>((1u << (scale - 1)) - 1);
    for (std::int32_t x = 0; x < width; ++x)
        storeCell(destination, x, limitedTo16s(roundedShift(product(source, destination, x), half, scale)));
}

} // namespace

std::int32_t pixSubtractInPlace16u(const std::uint16_t* source, std::int32_t sourceStep,
                                   std::uint16_t* sourceDestination, std::int32_t step, PixelRegion region,
                                   std::int32_t /*scale*/)
{
    if (!source || !sourceDestination)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    for (std::int32_t y = 0; y < region.height; ++y)
        subtractRow(pixRow(source, sourceStep, y), pixRow(sourceDestination, step, y), region.width);
    return PixDone;
}

std::int32_t pixMultiplyInPlace16s(const std::int16_t* source, std::int32_t sourceStep,
                                   std::int16_t* sourceDestination, std::int32_t step, PixelRegion region,
                                   std::int32_t scale)
{
    if (!source || !sourceDestination)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    // A product is at most 2^30 in magnitude: from 31 on each rounds to 0, and at 31 nothing overflows yet.
    const std::int32_t shift = std::clamp(scale, 0, 31);
    for (std::int32_t y = 0; y < region.height; ++y) {
        const std::uint8_t* from = pixRow(source, sourceStep, y);
        std::uint8_t* to = pixRow(sourceDestination, step, y);
        if (shift == 0)
            multiplyRow(from, to, region.width);
        else
            multiplyRowScaled(from, to, region.width, shift);
    }
    return PixDone;
}

} // namespace zor
