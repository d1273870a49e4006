#include "tests/fakes/FakeConverter.h"

#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"

#include <algorithm>
#include <utility>

FakeConverter fakeConverter;

void FakeConverter::deliver(const _ZorImage& record, std::vector<std::uint8_t> pixels)
{
    m_echoes = false;
    m_record = record;
    m_pixels = std::move(pixels);
}

int FakeConverter::convert(const _ZorImage* source, unsigned long targetPixelType, _ZorImage** result)
{
    ++conversions;
    askedSource = source;
    askedType = targetPixelType;
    if (answer != 0)
        return answer;
    const std::size_t size = m_echoes ? source->imageSize : m_pixels.size();
    const std::uint8_t* from = m_echoes ? source->data : m_pixels.data();
    m_delivered.push_back({m_echoes ? *source : m_record, std::make_unique<std::uint8_t[]>(size)});
    Delivered& made = m_delivered.back();
    std::copy_n(from, size, made.pixels.get());
    made.record.imageSize = static_cast<std::uint32_t>(size);
    made.record.data = made.pixels.get();
    *result = &made.record;
    return 0;
}

void FakeConverter::release(_ZorImage** slot)
{
    m_delivered.remove_if([&](const Delivered& made) { return &made.record == *slot; });
    *slot = nullptr;
}

extern "C" int ZimConvert(const _ZorImage* source, unsigned long targetPixelType, _ZorImage** result)
{
    return fakeConverter.convert(source, targetPixelType, result);
}

extern "C" int ZorReleaseImage(_ZorImage** slot)
{
    fakeConverter.release(slot);
    return 0;
}

/// Nothing is copied in these programs: a processor of images has no output here.
extern "C" int ZorCloneImage(_ZorImage** slot, const _ZorImage*)
{
    *slot = nullptr;
    return 1;
}
