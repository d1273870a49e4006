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

/// A record for a copy of `source`: the one in the slot when its pixel buffer has the right size, which
/// spares the next image of a live view a fresh block, else a new one.
_ZorImage* recordForCopy(_ZorImage** slot, const _ZorImage& source)
{
    if (*slot && (*slot)->data && source.data && (*slot)->imageSize == source.imageSize)
        return *slot;
    release(slot);
    *slot = zor::platform::makeRecord(source.pixelType);
    if (*slot && source.data && !zor::platform::makePixels(*slot, source.imageSize))
        release(slot);
    return *slot;
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
    _ZorImage* copy = recordForCopy(slot, *source);
    if (!copy)
        return NoMemory;
    std::uint8_t* data = copy->data;
    *copy = *source;
    copy->data = data;
    if (data)
        std::memcpy(data, source->data, source->imageSize);
    return Done;
}

ZOR_PLATFORM_EXPORT int ZorReleaseImage(_ZorImage** slot)
{
    if (slot)
        release(slot);
    return Done;
}
}
