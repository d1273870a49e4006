#include "dialog/LocalRecord.h"

#include "image/ZorFormatFromCode.h"

#include <algorithm>

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

std::size_t coveringBytes(const _ZorImage& record, std::uint32_t width, std::uint32_t height)
{
    const std::uint64_t pixelBytes = record.depth == 8 ? 1 : 2;
    const std::uint64_t lines = height == 0 ? 0 : (height - std::uint64_t{1}) * record.pitch;
    return std::max<std::uint64_t>(record.imageSize, lines + width * pixelBytes);
}
