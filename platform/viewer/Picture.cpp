#include "platform/viewer/Picture.h"

#include "image/PixelTypeCode.h"
#include "image/ZorImageConverter.h"
#include "platform/viewer/ProcessorChain.h"
#include "platform/viewer/RecordShape.h"

#include <functional>
#include <new>

namespace zorview {
namespace {
Samples samplesOf(const _ZorImage& record)
{
    return {record.data, record.pitch, static_cast<int>(record.width), static_cast<int>(record.height)};
}

// The converter widens 14 bits to 16 by repeating the upper two; the native value is the upper 14.
void dropRepeatedBits(_ZorImage& record)
{
    for (std::uint32_t y = 0; y < record.height; ++y) {
        auto* row = reinterpret_cast<std::uint16_t*>(record.data + std::size_t{y} * record.pitch);
        for (std::uint32_t x = 0; x < record.width; ++x)
            row[x] = static_cast<std::uint16_t>(row[x] >> 2);
    }
}
} // namespace

ViewerStatus Picture::convert(const _ZorImage& image, RecordSlot& converted, PixelShape* shape) const
{
    const std::uint32_t target = monoTarget(image);
    if (ZimConvert(&image, target, converted.place()) != 0 || !converted.get())
        return ViewerStatus::Format;
    shape->bytes = target == ZorMono8 ? 1 : 2;
    shape->depth = static_cast<int>(pixelTypeSampleBits(target));
    if (pixelTypeSampleBits(image.pixelType) == 14) {
        dropRepeatedBits(*converted.get());
        shape->depth = 14;
    }
    return ViewerStatus::Ok;
}

// Asked to show its own copy again, there is nothing to copy; asked for a part of it, the copy must not be
// written over while it is read.
ViewerStatus Picture::keepSource(const _ZorImage* source)
{
    const _ZorImage* own = m_source.get();
    if (source == own)
        return ViewerStatus::Ok;
    const std::less<const std::uint8_t*> before;
    if (own && !before(source->data, own->data) && before(source->data, own->data + own->imageSize)) {
        RecordSlot fresh;
        if (ZorCloneImage(fresh.place(), source) != 0)
            return ViewerStatus::Memory;
        m_source.swap(fresh);
        return ViewerStatus::Ok;
    }
    return ZorCloneImage(m_source.place(), source) == 0 ? ViewerStatus::Ok : ViewerStatus::Memory;
}

// Everything that can refuse comes before the first change.
ViewerStatus Picture::show(const _ZorImage* shown, const _ZorImage* source)
{
    PixelShape shape;
    RecordSlot record;
    if (pixelRoute(*shown) == PixelRoute::Converted) {
        if (const ViewerStatus status = convert(*shown, record, &shape); status != ViewerStatus::Ok)
            return status;
    } else {
        shape = plainShape(*shown);
        if (shown != source && ZorCloneImage(record.place(), shown) != 0)
            return ViewerStatus::Memory;
    }
    try {
        m_pyramid.reserve(samplesOf(record.get() ? *record.get() : *source), shape);
    } catch (const std::bad_alloc&) {
        return ViewerStatus::Memory;
    }
    if (const ViewerStatus status = keepSource(source); status != ViewerStatus::Ok) {
        clear();
        return status;
    }
    m_shown.swap(record);
    m_pyramid.build(samplesOf(m_shown.get() ? *m_shown.get() : *m_source.get()), shape);
    return ViewerStatus::Ok;
}

ViewerStatus Picture::load(const _ZorImage* image, ProcessorChain& chain, int* processed)
{
    if (const ViewerStatus status = checkRecord(image); status != ViewerStatus::Ok)
        return status;
    const ProcessorChain::Outcome outcome = chain.run(image);
    *processed = outcome.result;
    return show(outcome.image, image);
}

ViewerStatus Picture::reload(ProcessorChain& chain, int* processed)
{
    return load(m_source.get(), chain, processed);
}

void Picture::clear()
{
    m_pyramid.clear();
    m_shown.release();
    m_source.release();
}

// Levels point into their memory and level 0 into a record, all of which keep their places.
void Picture::swap(Picture& other)
{
    m_source.swap(other.m_source);
    m_shown.swap(other.m_shown);
    std::swap(m_pyramid, other.m_pyramid);
}

QSize Picture::size() const
{
    return isEmpty() ? QSize() : QSize(m_pyramid.level(0).width, m_pyramid.level(0).height);
}
} // namespace zorview
