#include "host/quality/MonoFrame.h"

#include "image/MonoTarget.h"
#include "image/Pitch.h"
#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"
#include "image/ZorPixelTypeTable.h"

#include <limits>
#include <stdexcept>
#include <string>

namespace zor {

namespace {

/// Why the converter refused; its answer alone does not say.
std::string conversionProblem(const _ZorImage& source, std::uint32_t target)
{
    const std::string formats =
        std::string("from ") + pixelTypeName(source.pixelType) + " to " + pixelTypeName(target);
    if (!exactPixelTypeRow(source.pixelType))
        return "there is no conversion " + formats + "; use a frame in one of the known pixel formats";

    const std::string size =
        "a frame of " + std::to_string(source.width) + " x " + std::to_string(source.height) + " pixels ";
    // The converted rows may be padded.
    constexpr std::uint64_t mostPadding = 3;
    constexpr std::uint64_t mostBytes = std::numeric_limits<std::uint32_t>::max();
    if (source.height * (tightPitch(target, source.width) + mostPadding) > mostBytes)
        return size + "is too large to be brought " + formats + "; use a smaller frame";
    return size + "could not be brought " + formats +
           "; check its size and pitch, use a smaller frame or close other programs";
}

} // namespace

void MonoFrame::Release::operator()(_ZorImage* record) const
{
    ZorReleaseImage(&record);
}

MonoFrame::MonoFrame(const _ZorImage& source)
    : MonoFrame(source, computeFormat(source.depth))
{
}

MonoFrame::MonoFrame(const _ZorImage& source, std::uint32_t target)
{
    _ZorImage* converted = nullptr;
    if (ZimConvert(&source, target, &converted) != 0 || converted == nullptr)
        throw std::runtime_error(conversionProblem(source, target));
    m_record.reset(converted);

    constexpr auto largest = static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
    if (converted->width > largest || converted->height >= largest || converted->pitch > largest)
        throw std::runtime_error("the frame is too large; no side and no row may pass 2147483647");
}

ConstImageView MonoFrame::view() const
{
    return {m_record->data, static_cast<std::int32_t>(m_record->pitch),
            static_cast<std::int32_t>(m_record->width), static_cast<std::int32_t>(m_record->height),
            static_cast<std::int32_t>(m_record->depth)};
}

const char* pixelTypeName(std::uint32_t pixelType)
{
    const ZorPixelTypeRow* row = pixelTypeRow(pixelType);
    return row ? row->name : "unknown format";
}

} // namespace zor
