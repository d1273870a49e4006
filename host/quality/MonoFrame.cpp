#include "host/quality/MonoFrame.h"

#include "image/MonoTarget.h"
#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"
#include "image/ZorPixelTypeTable.h"

#include <limits>
#include <stdexcept>
#include <string>

namespace zor {

void MonoFrame::Release::operator()(_ZorImage* record) const
{
    ZorReleaseImage(&record);
}

MonoFrame::MonoFrame(const _ZorImage& source)
{
    _ZorImage* converted = nullptr;
    const std::uint32_t target = monoTargetForDepth(source.depth);
    if (ZimConvert(&source, target, &converted) != 0 || converted == nullptr)
        throw std::runtime_error(std::string("frames of the format ") + pixelTypeName(source.pixelType) +
                                 " cannot be brought to " + pixelTypeName(target) +
                                 "; use a frame in a mono format");
    m_record.reset(converted);

    constexpr auto largest = static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
    if (converted->width > largest || converted->height >= largest || converted->pitch > largest)
        throw std::runtime_error("the frame is too large; no side and no line may pass 2147483647");
}

ConstImageView MonoFrame::view() const
{
    return {m_record->data, static_cast<std::int32_t>(m_record->pitch),
            static_cast<std::int32_t>(m_record->width), static_cast<std::int32_t>(m_record->height),
            static_cast<std::int32_t>(m_record->depth)};
}

const char* pixelTypeName(std::uint32_t pixelType)
{
    const std::uint32_t row = pixelTypeRow(pixelType);
    if (row < 1 || row > ZorPixelTypeCount)
        return "unknown format";
    return ZorPixelTypeTable[row - 1].name;
}

} // namespace zor
