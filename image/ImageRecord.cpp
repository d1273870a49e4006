#include "image/ImageRecord.h"

#include "image/ZorFormatFromCode.h"

namespace zor {

_ZorImage imageRecord(std::uint32_t pixelType)
{
    _ZorImage record{};
    record.recordSize = ImageRecordSize;
    record.recordVersion = ImageRecordVersion;
    static_cast<FormatBlock&>(record) = ZorFormatFromCode(pixelType);
    return record;
}

} // namespace zor
