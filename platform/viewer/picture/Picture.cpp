#include "platform/viewer/picture/Picture.h"

#include "platform/viewer/picture/ProcessorChain.h"
#include "platform/viewer/picture/RecordShape.h"

#include <new>

namespace zor::viewer {
namespace {
Samples samplesOf(const _ZorImage& record)
{
    return {record.data, record.pitch, static_cast<int>(record.width), static_cast<int>(record.height)};
}
} // namespace

// Everything that can refuse comes before the first change.
ViewerStatus Picture::show(const _ZorImage* shown, const _ZorImage* source)
{
    const PixelShape shape = shownShape(*shown);
    const bool isConverted = pixelRoute(*shown) != PixelRoute::AsIs;
    ConvertedSamples converted;
    if (isConverted)
        if (const ViewerStatus status = converted.take(*shown); status != ViewerStatus::Ok)
            return status;
    RecordSlot output;
    if (shown != source && ZorCloneImage(output.place(), shown) != 0)
        return ViewerStatus::Memory;
    const auto samples = [&](const _ZorImage& record) {
        return isConverted ? converted.samples() : samplesOf(record);
    };
    try {
        m_mipLevels.reserve(samples(output.get() ? *output.get() : *source), shape);
    } catch (const std::bad_alloc&) {
        return ViewerStatus::Memory;
    }
    // The image may be this picture's own copy, or a part of it, so the copy is overwritten only now.
    if (ZorCloneImage(m_source.place(), source) != 0) {
        clear();
        return ViewerStatus::Memory;
    }
    m_output.swap(output);
    m_mipLevels.build(samples(this->shown()), shape);
    m_converted.swap(converted);
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
    m_mipLevels.clear();
    ConvertedSamples().swap(m_converted);
    m_output.release();
    m_source.release();
}

// Levels point into their memory and level 0 into a record or converted samples, all of which keep their
// addresses.
void Picture::swap(Picture& other)
{
    m_source.swap(other.m_source);
    m_output.swap(other.m_output);
    m_converted.swap(other.m_converted);
    std::swap(m_mipLevels, other.m_mipLevels);
}

QSize Picture::size() const
{
    return isEmpty() ? QSize() : QSize(m_mipLevels.level(0).width, m_mipLevels.level(0).height);
}
} // namespace zor::viewer
