#pragma once

#include "platform/viewer/picture/ConvertedSamples.h"
#include "platform/viewer/picture/MipLevels.h"
#include "platform/viewer/picture/RecordSlot.h"
#include "platform/viewer/picture/ViewerStatus.h"

#include <QSize>

namespace zor::viewer {
class ProcessorChain;

/// One image of a view: a copy of what `display` was given, one of what the processors made of it, the
/// samples that are shown and their mip levels. Nothing of a caller's or a processor's memory is kept.
class Picture
{
public:
    /// Copies the image, runs the processors, copies their outcome and converts it where needed. An image
    /// that can't be shown leaves everything as it was; a lack of memory may leave no picture. `processed`
    /// gets the processors' result.
    ViewerStatus load(const _ZorImage* image, ProcessorChain& chain, int* processed);
    /// Runs the processors on the copy again.
    ViewerStatus reload(ProcessorChain& chain, int* processed);
    void clear();
    void swap(Picture& other);

    bool isEmpty() const { return m_mipLevels.isEmpty(); }
    QSize size() const;
    const MipLevels& mipLevels() const { return m_mipLevels; }
    /// The copy of the last image; null without one.
    _ZorImage* source() const { return m_source.get(); }
    /// What the last processor put out, or the source: the image that is shown, in its own format.
    const _ZorImage& shown() const { return m_output.get() ? *m_output.get() : *m_source.get(); }

private:
    ViewerStatus show(const _ZorImage* shown, const _ZorImage* source);

    RecordSlot m_source;
    RecordSlot m_output;          ///< holds a record when something else than the source is shown
    ConvertedSamples m_converted; ///< without samples while the shown image's own are shown
    MipLevels m_mipLevels;
};
} // namespace zor::viewer
