#include "platform/records/Records.h"

#include "image/ZorFormatFromCode.h"

#include <cstdlib>
#include <cstring>

namespace zor::platform {

_ZorImage* makeRecord(std::uint32_t pixelType)
{
    auto* record = static_cast<_ZorImage*>(std::calloc(1, sizeof(_ZorImage)));
    if (!record)
        return nullptr;
    record->recordSize = ZorImageRecordSize;
    record->recordVersion = ZorImageRecordVersion;
    static_cast<ZorFormatBlock&>(*record) = ZorFormatFromCode(pixelType);
    return record;
}

bool makePixels(_ZorImage* record, std::uint32_t imageSize)
{
    auto* data = static_cast<std::uint8_t*>(std::malloc(std::size_t{imageSize} + SpareBytes));
    if (!data)
        return false;
    std::memset(data + imageSize, 0, SpareBytes);
    record->data = data;
    record->imageSize = imageSize;
    return true;
}

void freeRecord(_ZorImage* record)
{
    if (!record)
        return;
    std::free(record->data);
    std::free(record);
}

void freeHeader(_ZorImage* record)
{
    std::free(record);
}

} // namespace zor::platform
