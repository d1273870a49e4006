#include "image/ZorImageApi.h"

#include "platform/Export.h"
#include "platform/records/Records.h"

#include <cstring>

namespace {

constexpr int Done = 0;
constexpr int BadArgument = 1;
constexpr int NoMemory = 2;

void release(_ZorImage** slot)
{
    zor::platform::freeRecord(*slot);
    *slot = nullptr;
}

/// Whether a record's pixel buffer takes the pixels of `source` as it is, which spares the next image of a
/// live view a fresh block.
bool isReusable(const _ZorImage* record, const _ZorImage& source)
{
    return record && record->data && source.data && record->imageSize == source.imageSize;
}

/// A new record with room for the pixels of `source`; null when there is no memory.
_ZorImage* newRecordFor(const _ZorImage& source)
{
    _ZorImage* made = zor::platform::makeRecord(source.pixelType);
    if (made && source.data && !zor::platform::makePixels(made, source.imageSize))
        release(&made);
    return made;
}

/// Everything but the place of the pixels. The pixels of both may overlap.
void copyInto(_ZorImage& copy, const _ZorImage& source)
{
    std::uint8_t* data = copy.data;
    copy = source;
    copy.data = data;
    if (data)
        std::memmove(data, source.data, source.imageSize);
}

} // namespace

extern "C" {

ZOR_PLATFORM_EXPORT int ZorCreateImageHeader(_ZorImage** slot, std::uint64_t size, std::uint32_t pixelType,
                                             std::uint32_t, std::uint32_t, std::uint32_t)
{
    if (!slot)
        return BadArgument;
    *slot = zor::platform::makeRecord(pixelType);
    if (!*slot)
        return NoMemory;
    // The code itself also when the table does not know it: the header's user compares it with the next
    // image's.
    (*slot)->pixelType = pixelType;
    (*slot)->width = static_cast<std::uint32_t>(size);
    (*slot)->height = static_cast<std::uint32_t>(size >> 32);
    return Done;
}

ZOR_PLATFORM_EXPORT int ZorReleaseImageHeader(_ZorImage** slot)
{
    if (slot) {
        zor::platform::freeHeader(*slot);
        *slot = nullptr;
    }
    return Done;
}

ZOR_PLATFORM_EXPORT int ZorCloneImage(_ZorImage** slot, const _ZorImage* source)
{
    if (!slot)
        return BadArgument;
    if (!source || (!source->data && source->imageSize != 0)) {
        release(slot);
        return BadArgument;
    }
    if (*slot == source)
        return Done;
    if (isReusable(*slot, *source)) {
        copyInto(**slot, *source);
        return Done;
    }
    // The source's pixels may be those of the slot, so these go last.
    _ZorImage* copy = newRecordFor(*source);
    if (copy)
        copyInto(*copy, *source);
    release(slot);
    *slot = copy;
    return copy ? Done : NoMemory;
}

ZOR_PLATFORM_EXPORT int ZorReleaseImage(_ZorImage** slot)
{
    if (slot)
        release(slot);
    return Done;
}
}
