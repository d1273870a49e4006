#include "image/ImageRecord.h"

#include "image/ZorFormatFromCode.h"

_ZorImage imageRecord(std::uint32_t pixelType)
{
    _ZorImage record{};
    record.recordSize = ZorImageRecordSize;
    record.recordVersion = ZorImageRecordVersion;
    static_cast<ZorFormatBlock&>(record) = ZorFormatFromCode(pixelType);
    return record;
}
