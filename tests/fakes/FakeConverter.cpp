#include "fakes/FakeConverter.h"

#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"

#include <cstring>

FakeConverter fakeConverter;

extern "C" int ZimConvert(const _ZorImage* source, unsigned long targetPixelType, _ZorImage** result)
{
    ++fakeConverter.conversions;
    fakeConverter.askedSource = source;
    fakeConverter.askedType = targetPixelType;
    if (fakeConverter.answer != 0)
        return fakeConverter.answer;
    auto* record = new _ZorImage(fakeConverter.record);
    record->imageSize = static_cast<std::uint32_t>(fakeConverter.pixels.size());
    record->data = new std::uint8_t[fakeConverter.pixels.size()];
    std::memcpy(record->data, fakeConverter.pixels.data(), fakeConverter.pixels.size());
    *result = record;
    ++fakeConverter.live;
    return 0;
}

extern "C" int ZorReleaseImage(_ZorImage** slot)
{
    delete[](*slot)->data;
    delete *slot;
    *slot = nullptr;
    --fakeConverter.live;
    return 0;
}
