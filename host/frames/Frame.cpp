#include "host/frames/Frame.h"

#include "image/ImageRecord.h"

namespace zor {

_ZorImage Frame::record() const
{
    _ZorImage record = imageRecord(pixelType);
    record.width = width;
    record.height = height;
    record.imageSize = static_cast<std::uint32_t>(pixels.size());
    record.pitch = pitch;
    // Records know no constant pixels; whoever takes one as a source only reads.
    record.data = const_cast<std::uint8_t*>(pixels.data());
    return record;
}

} // namespace zor
