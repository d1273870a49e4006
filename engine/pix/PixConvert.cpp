#include "engine/pix/PixConvert.h"

#include "engine/ImageView.h"
#include "engine/pix/PixRows.h"

#include <algorithm>
#include <cstring>

namespace zor {
namespace {

void widenRow(const std::uint8_t* source, std::uint8_t* destination, std::int32_t width)
{
    for (std::int32_t x = 0; x < width; ++x)
        storeCell(destination, x, source[x]);
}

void narrowRow(const std::uint8_t* source, std::uint8_t* destination, std::int32_t width)
{
    for (std::int32_t x = 0; x < width; ++x)
        destination[x] = static_cast<std::uint8_t>(std::min<std::uint16_t>(loadCell(source, x), 255));
}

std::int32_t checkConversion(const void* source, std::int32_t sourceStep, const void* destination,
                             std::int32_t destinationStep, PixelRegion region)
{
    if (!source || !destination)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    return sourceStep < 1 || destinationStep < 1 ? PixStepTooSmall : PixDone;
}

} // namespace

std::int32_t pixWiden8uTo16u(const std::uint8_t* source, std::int32_t sourceStep, std::uint16_t* destination,
                             std::int32_t destinationStep, PixelRegion region)
{
    const std::int32_t status = checkConversion(source, sourceStep, destination, destinationStep, region);
    if (status != PixDone)
        return status;
    for (std::int32_t y = 0; y < region.height; ++y)
        widenRow(pixRow(source, sourceStep, y), pixRow(destination, destinationStep, y), region.width);
    return PixDone;
}

std::int32_t pixNarrow16uTo8u(const std::uint16_t* source, std::int32_t sourceStep, std::uint8_t* destination,
                              std::int32_t destinationStep, PixelRegion region)
{
    const std::int32_t status = checkConversion(source, sourceStep, destination, destinationStep, region);
    if (status != PixDone)
        return status;
    for (std::int32_t y = 0; y < region.height; ++y)
        narrowRow(pixRow(source, sourceStep, y), pixRow(destination, destinationStep, y), region.width);
    return PixDone;
}

std::int32_t pixCopy16(const void* source, std::int32_t sourceStep, void* destination,
                       std::int32_t destinationStep, PixelRegion region)
{
    if (!source || !destination)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    const std::size_t rowBytes = static_cast<std::size_t>(region.width) * 2;
    for (std::int32_t y = 0; y < region.height; ++y)
        std::memmove(pixRow(destination, destinationStep, y), pixRow(source, sourceStep, y), rowBytes);
    return PixDone;
}

} // namespace zor
