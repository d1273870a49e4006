#include "dialog/LocalRecord.h"

#include "image/ImageRecord.h"

#include <algorithm>

namespace zor {

_ZorImage localRecord(std::int32_t width, std::int32_t height, std::int32_t step, std::uint32_t imageSize,
                      std::uint32_t pixelFormat)
{
    _ZorImage record = imageRecord(pixelFormat);
    record.width = static_cast<std::uint32_t>(width);
    record.height = static_cast<std::uint32_t>(height);
    record.imageSize = imageSize;
    record.pitch = static_cast<std::uint32_t>(step);
    return record;
}

std::size_t coveringBytes(const _ZorImage& record, std::uint32_t width, std::uint32_t height)
{
    const std::uint64_t pixelBytes = record.depth == 8 ? 1 : 2;
    const std::uint64_t otherRows = height == 0 ? 0 : (height - std::uint64_t{1}) * record.pitch;
    return std::max<std::uint64_t>(record.imageSize, otherRows + width * pixelBytes);
}

} // namespace zor
