#include "image/ZorFormatFromCode.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

ZorFormatBlock ZorFormatFromCode(std::uint32_t code)
{
    ZorFormatBlock block = {};
    // Row 0 wraps to an index far above the count and misses as well.
    const std::uint32_t index = pixelTypeRow(code) - 1;
    if (index >= ZorPixelTypeCount)
        return block;
    const ZorPixelTypeRow& row = ZorPixelTypeTable[index];
    block.pixelType = code;
    block.depth = row.depth;
    block.packing = pixelTypePacking(code);
    block.channels = row.channels;
    block.pixelBits = pixelTypeBits(code);
    return block;
}
