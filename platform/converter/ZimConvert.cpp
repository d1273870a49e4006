#include "image/ZorImageConverter.h"

#include "image/LineBytes.h"
#include "image/PixelTypeCode.h"
#include "image/UnpackRow.h"
#include "platform/Export.h"
#include "platform/converter/DepthChange.h"
#include "platform/converter/SourceCheck.h"
#include "platform/records/Records.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr int Done = 0;
constexpr int BadArgument = 1;
constexpr int Unsupported = 2;
constexpr int NoMemory = 3;

/// A result of the source's size in the target format, lines padded to a multiple of 4 bytes; null when it is
/// too large for a record or for the memory.
_ZorImage* makeResult(const _ZorImage& source, std::uint32_t target)
{
    const std::uint64_t pitch = (tightPitch(target, source.width) + 3) / 4 * 4;
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

/// One line, in pieces that stay in the cache. A piece is a whole number of bytes in every format.
void convertLine(const std::uint8_t* source, std::uint32_t sourceType, std::uint8_t* destination,
                 std::uint32_t target, std::uint32_t width)
{
    constexpr std::uint32_t Piece = 1024;
    std::array<std::uint16_t, Piece> samples;
    const auto unpack = zor::unpackRowFor(sourceType);
    const auto store = pixelTypeBits(target) == 8 ? zor::platform::storeBytes : zor::platform::storeWords;
    for (std::uint32_t left = width; left > 0;) {
        const std::uint32_t count = std::min(left, Piece);
        unpack(source, samples.data(), count);
        zor::platform::changeDepth(samples.data(), count, pixelTypeSampleBits(sourceType),
                                   pixelTypeSampleBits(target));
        store(samples.data(), count, destination);
        source += tightPitch(sourceType, count);
        destination += tightPitch(target, count);
        left -= count;
    }
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
    if (!zor::platform::isMonoTarget(targetPixelType) || !zor::platform::isReadable(*source))
        return Unsupported;
    const auto target = static_cast<std::uint32_t>(targetPixelType);
    _ZorImage* made = makeResult(*source, target);
    if (!made)
        return NoMemory;

    const std::size_t padding = made->pitch - tightPitch(target, made->width);
    for (std::size_t y = 0; y < made->height; ++y) {
        std::uint8_t* line = made->data + y * made->pitch;
        convertLine(source->data + y * source->pitch, source->pixelType, line, target, made->width);
        std::fill_n(line + made->pitch - padding, padding, std::uint8_t{0});
    }
    *result = made;
    return Done;
}
