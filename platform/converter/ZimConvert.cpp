#include "image/ZorImageConverter.h"

#include "image/MonoTarget.h"
#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "platform/Export.h"
#include "platform/converter/ConvertMosaic.h"
#include "platform/converter/ConvertRows.h"
#include "platform/converter/SourceCheck.h"
#include "platform/records/Records.h"

#include <algorithm>
#include <exception>
#include <limits>

namespace {

constexpr int Done = 0;
constexpr int BadArgument = 1;
constexpr int Unsupported = 2;
constexpr int NoMemory = 3;

/// A result of the source's size in the target format, rows padded to a multiple of 4 bytes; null when it is
/// too large for a record or for the memory.
_ZorImage* makeResult(const _ZorImage& source, std::uint32_t target)
{
    const std::uint64_t pitch = (zor::tightPitch(target, source.width) + 3) / 4 * 4;
    constexpr std::uint64_t Largest = std::numeric_limits<std::uint32_t>::max();
    if (pitch > Largest || pitch * source.height > Largest)
        return nullptr;
    _ZorImage* result = zor::platform::makeRecord(target);
    if (!result)
        return nullptr;
    if (!zor::platform::makePixels(result, static_cast<std::uint32_t>(pitch * source.height))) {
        zor::platform::freeRecord(result);
        return nullptr;
    }
    result->width = source.width;
    result->height = source.height;
    result->pitch = static_cast<std::uint32_t>(pitch);
    return result;
}

/// Rows are written to their last pixel; what pads them is 0.
void fillPadding(const _ZorImage& image)
{
    const std::size_t used = zor::tightPitch(image.pixelType, image.width);
    for (std::size_t y = 0; y < image.height; ++y)
        std::fill_n(image.data + y * image.pitch + used, image.pitch - used, std::uint8_t{0});
}

void convert(const _ZorImage& source, const _ZorImage& result)
{
    const zor::PixelFamily family = zor::pixelTypeFamily(source.pixelType);
    if (family == zor::PixelFamily::Bayer || family == zor::PixelFamily::TrueSense)
        zor::platform::convertMosaic(source, result);
    else
        zor::platform::convertRows(source, result);
    fillPadding(result);
}

} // namespace

extern "C" ZOR_PLATFORM_EXPORT int ZimConvert(const _ZorImage* source, unsigned long targetPixelType,
                                              _ZorImage** result)
{
    if (!result)
        return BadArgument;
    *result = nullptr;
    if (!source)
        return BadArgument;
    if (!zor::isMonoTarget(targetPixelType) || !zor::platform::isReadable(*source))
        return Unsupported;
    const auto target = static_cast<std::uint32_t>(targetPixelType);
    _ZorImage* made = makeResult(*source, target);
    if (!made)
        return NoMemory;

    // Nothing but working memory can be missing by now, and no exception may leave a function of C linkage.
    try {
        convert(*source, *made);
    } catch (const std::exception&) {
        zor::platform::freeRecord(made);
        return NoMemory;
    }
    *result = made;
    return Done;
}
