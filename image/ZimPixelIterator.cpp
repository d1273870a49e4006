#include "image/ZimPixelIterator.h"

#include "image/PixelTypeCode.h"

ZimPixelIterator::ZimPixelIterator(const _ZorImage* image, std::uint32_t x, std::uint32_t y)
    : bitAddressed(zor::isBitAddressed(image->packing))
{
    if (bitAddressed) {
        const std::uint32_t step = image->pixelBits;
        const std::uint32_t offset = image->pitch * 8 * y + x * step;
        const zor::WalkPosition common{image, step, image->pitch * 8 - image->width * step};
        position = new zor::BitWalkPosition{common, offset, ahead(image->data, offset >> 3)};
    } else {
        const std::uint32_t step = image->pixelBits >> 3;
        const zor::WalkPosition common{image, step, image->pitch - image->width * step};
        position = new zor::ByteWalkPosition{common, ahead(image->data, image->pitch * y + x * step)};
    }
}

ZimPixelIterator::~ZimPixelIterator()
{
    position->image = nullptr;
    if (bitAddressed)
        delete &bits();
    else
        delete &bytes();
    position = nullptr;
}
