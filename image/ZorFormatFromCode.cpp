#include "image/ZorFormatFromCode.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

ZorFormatBlock ZorFormatFromCode(std::uint32_t code)
{
    ZorFormatBlock block = {};
    const ZorPixelTypeRow* row = pixelTypeRow(code);
    if (!row)
        return block;
    block.pixelType = code;
    block.depth = row->depth;
    block.packing = pixelTypePacking(code);
    block.channels = row->channels;
    block.pixelBits = pixelTypeBits(code);
    return block;
}
