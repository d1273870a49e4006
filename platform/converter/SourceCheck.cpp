#include "platform/converter/SourceCheck.h"

#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

namespace zor::platform {

bool isReadable(const _ZorImage& source)
{
    const std::uint32_t code = source.pixelType;
    if (!source.data || source.isSigned || !exactPixelTypeRow(code))
        return false;
    if (source.packing != pixelTypePacking(code) || source.pixelBits != pixelTypeBits(code))
        return false;
    if (source.width == 0 || source.height == 0)
        return false;
    return source.pitch >= tightPitch(code, source.width) &&
           source.imageSize >= neededBytes(code, source.width, source.height, source.pitch);
}

} // namespace zor::platform
