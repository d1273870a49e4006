#include "platform/viewer/picture/RecordShape.h"

#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

namespace zor::viewer {
namespace {
constexpr std::uint32_t LongestSide = 1u << 30;

bool isColour(std::uint32_t pixelType)
{
    return pixelTypeFamily(pixelType) == PixelFamily::Rgb;
}

} // namespace

PixelRoute pixelRoute(const _ZorImage& image)
{
    const ZorPixelTypeRow* row = exactPixelTypeRow(image.pixelType);
    if (!row || image.isSigned)
        return PixelRoute::Refused;
    const bool isUnpacked = pixelTypePackingClass(image.pixelType) == PackingClass::Unpacked;
    if (isColour(image.pixelType))
        return isUnpacked && row->channels == 3 ? PixelRoute::AsIs : PixelRoute::Colour;
    return isUnpacked && pixelTypeFamily(image.pixelType) == PixelFamily::Mono ? PixelRoute::AsIs
                                                                               : PixelRoute::Luma;
}

PixelShape shownShape(const _ZorImage& image)
{
    const PixelRoute route = pixelRoute(image);
    const auto sampleBits = static_cast<int>(pixelTypeSampleBits(image.pixelType));
    PixelShape shape;
    shape.bytes = route == PixelRoute::Colour || sampleBits > 8 ? 2 : 1;
    shape.depth = route == PixelRoute::Luma ? sampleBits : static_cast<int>(image.depth);
    if (isColour(image.pixelType)) {
        shape.channels = 3;
        shape.blueFirst = exactPixelTypeRow(image.pixelType)->channelIndex(u'B') == 0;
    }
    return shape;
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
    if (image->pitch < tightPitch(image->pixelType, image->width) ||
        image->imageSize < neededBytes(image->pixelType, image->width, image->height, image->pitch))
        return ViewerStatus::Argument;
    // Processors take the width of a sample from the depth.
    const std::uint32_t sampleBits = pixelTypeSampleBits(image->pixelType);
    const bool isUnpacked = pixelTypePackingClass(image->pixelType) == PackingClass::Unpacked;
    const std::uint32_t heldBits = isUnpacked && sampleBits > 8 ? 16 : sampleBits;
    if (image->depth == 0 || image->depth > heldBits)
        return ViewerStatus::Argument;
    if (pixelRoute(*image) != PixelRoute::Luma &&
        image->channels != exactPixelTypeRow(image->pixelType)->channels)
        return ViewerStatus::Argument;
    return ViewerStatus::Ok;
}
} // namespace zor::viewer
