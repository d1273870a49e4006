#include "platform/records/Records.h"

#include "image/ImageRecord.h"

#include <cstdlib>
#include <cstring>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace zor::platform {

namespace {

/// Asks for huge pages within a large block: the first touch of each small page costs several times what the
/// pixels cost that are written to it. A refusal leaves small pages, which are just as right.
void preferHugePages(void* block, std::size_t size)
{
#if defined(__linux__)
    constexpr std::uintptr_t HugePage = std::uintptr_t{2} << 20;
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t begin = (address + HugePage - 1) / HugePage * HugePage;
    const std::uintptr_t end = (address + size) / HugePage * HugePage;
    if (end >= begin + 3 * HugePage)
        static_cast<void>(madvise(static_cast<char*>(block) + (begin - address), end - begin, MADV_HUGEPAGE));
#else
    static_cast<void>(block);
    static_cast<void>(size);
#endif
}

} // namespace

_ZorImage* makeRecord(std::uint32_t pixelType)
{
    auto* record = static_cast<_ZorImage*>(std::malloc(sizeof(_ZorImage)));
    if (!record)
        return nullptr;
    *record = imageRecord(pixelType);
    return record;
}

bool makePixels(_ZorImage* record, std::uint32_t imageSize)
{
    auto* data = static_cast<std::uint8_t*>(std::malloc(std::size_t{imageSize} + SpareBytes));
    if (!data)
        return false;
    preferHugePages(data, std::size_t{imageSize} + SpareBytes);
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
