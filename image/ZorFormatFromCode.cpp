#include "image/ZorFormatFromCode.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

zor::FormatBlock ZorFormatFromCode(std::uint32_t code)
{
    zor::FormatBlock block = {};
    const ZorPixelTypeRow* row = zor::pixelTypeRow(code);
    if (!row)
        return block;
    block.pixelType = code;
    block.depth = row->depth;
    block.packing = zor::pixelTypePacking(code);
    block.channels = row->channels;
    block.pixelBits = zor::pixelTypeBits(code);
    return block;
}
