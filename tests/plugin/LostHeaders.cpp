#include "tests/plugin/LostHeaders.h"

#include "image/ZorImageApi.h"

#include <QSet>
#include <QtGlobal>

#include <dlfcn.h>

namespace {

QSet<_ZorImage*>& headers()
{
    static QSet<_ZorImage*> living;
    return living;
}

/// A function of the image library.
template <typename Function> Function realOne(const char* name)
{
    void* found = dlsym(RTLD_NEXT, name);
    if (!found)
        qFatal("the image library has no %s", name);
    return reinterpret_cast<Function>(found);
}

} // namespace

Q_DECL_EXPORT int ZorCreateImageHeader(_ZorImage** slot, std::uint64_t size, std::uint32_t pixelType,
                                       std::uint32_t first, std::uint32_t second, std::uint32_t third)
{
    static const auto real = realOne<decltype(&ZorCreateImageHeader)>("ZorCreateImageHeader");
    const int status = real(slot, size, pixelType, first, second, third);
    if (status == 0)
        headers().insert(*slot);
    return status;
}

Q_DECL_EXPORT int ZorReleaseImageHeader(_ZorImage** slot)
{
    static const auto real = realOne<decltype(&ZorReleaseImageHeader)>("ZorReleaseImageHeader");
    if (slot)
        headers().remove(*slot);
    return real(slot);
}

int releaseLostHeaders()
{
    const QSet<_ZorImage*> lost = headers();
    for (_ZorImage* header : lost)
        ZorReleaseImageHeader(&header);
    return lost.size();
}
