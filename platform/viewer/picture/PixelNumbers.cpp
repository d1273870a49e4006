#include "platform/viewer/picture/PixelNumbers.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/NativeCodes.h"

#include <string_view>

namespace zor::viewer {
namespace {
std::u16string_view lettersOf(PixelFamily family)
{
    return family == PixelFamily::Rgb ? u"RGB" : family == PixelFamily::Yuv ? u"YUV" : u"Y";
}
} // namespace

PixelNumbers::PixelNumbers(const _ZorImage& image)
    : m_image(image)
{
    const ZorPixelTypeRow* row = exactPixelTypeRow(image.pixelType);
    if (!row)
        return;
    for (const char16_t letter : lettersOf(pixelTypeFamily(image.pixelType)))
        m_places[m_count++] = static_cast<std::uint32_t>(row->channelIndex(letter));
}

PixelNumbers::Numbers PixelNumbers::at(int x, int y) const
{
    const zor::NativeCodes native =
        zor::nativeCodes(m_image, static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y));
    Numbers numbers;
    for (int i = 0; i < m_count; ++i)
        if (const std::uint32_t place = m_places[static_cast<std::size_t>(i)]; place < native.count)
            numbers.values[static_cast<std::size_t>(numbers.count++)] = native.codes[place];
    return numbers;
}
} // namespace zor::viewer
