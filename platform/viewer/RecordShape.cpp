#include "platform/viewer/RecordShape.h"

#include "image/PixelTypeCode.h"

namespace zorview {
namespace {
constexpr std::uint32_t Mono14 = 0x0110040A;
constexpr std::uint32_t FirstPlainColour = 113;
constexpr std::uint32_t LastPlainColour = 124;
constexpr std::uint32_t LastRow = 133;
constexpr std::uint32_t LongestSide = 1u << 30;

bool isPlainMono(std::uint32_t pixelType)
{
    return pixelType == ZorMono8 || pixelType == ZorMono10 || pixelType == ZorMono12 || pixelType == Mono14 ||
           pixelType == ZorMono16;
}

// RGB and BGR rows alternate; the four-channel rows between them take 32 bits.
bool isPlainColour(std::uint32_t pixelType)
{
    const std::uint32_t row = pixelTypeRow(pixelType);
    const std::uint32_t bits = pixelTypeBits(pixelType);
    const bool eight = row <= FirstPlainColour + 1;
    return pixelTypeFamily(pixelType) == PixelFamily::Rgb && row >= FirstPlainColour &&
           row <= LastPlainColour && pixelTypePackingClass(pixelType) == PackingClass::Plain &&
           bits == (eight ? 24u : 48u);
}
} // namespace

PixelRoute pixelRoute(const _ZorImage& image)
{
    const std::uint32_t row = pixelTypeRow(image.pixelType);
    if (row == 0 || row > LastRow || image.isSigned)
        return PixelRoute::Refused;
    if (isPlainMono(image.pixelType) || isPlainColour(image.pixelType))
        return PixelRoute::AsIs;
    return PixelRoute::Converted;
}

PixelShape plainShape(const _ZorImage& image)
{
    PixelShape shape;
    shape.channels = pixelTypeFamily(image.pixelType) == PixelFamily::Mono ? 1 : 3;
    shape.bytes = static_cast<int>(pixelTypeBits(image.pixelType)) / (8 * shape.channels);
    shape.depth = static_cast<int>(image.depth);
    shape.blueFirst = shape.channels == 3 && pixelTypeRow(image.pixelType) % 2 == 0;
    return shape;
}

std::uint32_t monoTarget(const _ZorImage& image)
{
    switch (pixelTypeSampleBits(image.pixelType)) {
    case 10:
        return ZorMono10;
    case 12:
        return ZorMono12;
    case 14:
    case 16:
        return ZorMono16;
    default:
        return ZorMono8;
    }
}

ViewerStatus checkHeader(const _ZorImage* header)
{
    if (!header)
        return ViewerStatus::Ok;
    if (header->width == 0 || header->height == 0 || header->width > LongestSide ||
        header->height > LongestSide)
        return ViewerStatus::Argument;
    return pixelRoute(*header) == PixelRoute::Refused ? ViewerStatus::Format : ViewerStatus::Ok;
}

ViewerStatus checkRecord(const _ZorImage* image)
{
    if (!image || !image->data)
        return ViewerStatus::Argument;
    if (const ViewerStatus status = checkHeader(image); status != ViewerStatus::Ok)
        return status;
    const std::uint64_t bits = pixelTypeBits(image->pixelType);
    if (image->pixelBits != bits || image->packing != pixelTypePacking(image->pixelType))
        return ViewerStatus::Argument;
    const std::uint64_t line = (image->width * bits + 7) / 8;
    const std::uint64_t all = std::uint64_t{image->pitch} * (image->height - 1) + line;
    if (image->pitch < line || image->imageSize < all)
        return ViewerStatus::Argument;
    if (pixelRoute(*image) == PixelRoute::AsIs) {
        const std::uint32_t held = static_cast<std::uint32_t>(plainShape(*image).bytes) * 8;
        const auto channels = static_cast<std::uint32_t>(plainShape(*image).channels);
        if (image->depth == 0 || image->depth > held || image->channels != channels)
            return ViewerStatus::Argument;
    }
    return ViewerStatus::Ok;
}
} // namespace zorview
