#include "host/frames/Frame.h"

#include "image/ZorFormatFromCode.h"

namespace zor {

_ZorImage Frame::record() const
{
    _ZorImage record = {};
    record.recordSize = ZorImageRecordSize;
    record.recordVersion = ZorImageRecordVersion;
    static_cast<ZorFormatBlock&>(record) = ZorFormatFromCode(pixelType);
    record.width = width;
    record.height = height;
    record.imageSize = static_cast<std::uint32_t>(pixels.size());
    record.pitch = pitch;
    // Records know no constant pixels; whoever takes one as a source only reads.
    record.data = const_cast<std::uint8_t*>(pixels.data());
    return record;
}

} // namespace zor
