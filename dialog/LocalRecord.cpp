#include "dialog/LocalRecord.h"

#include "image/ZorFormatFromCode.h"

_ZorImage localRecord(std::int32_t width, std::int32_t height, std::int32_t step, std::uint32_t imageSize,
                      std::uint32_t pixelFormat)
{
    _ZorImage record{};
    record.recordSize = ZorImageRecordSize;
    record.recordVersion = ZorImageRecordVersion;
    record.width = static_cast<std::uint32_t>(width);
    record.height = static_cast<std::uint32_t>(height);
    record.imageSize = imageSize;
    static_cast<ZorFormatBlock&>(record) = ZorFormatFromCode(pixelFormat);
    record.pitch = static_cast<std::uint32_t>(step);
    return record;
}
