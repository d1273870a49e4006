#pragma once

#include "platform/viewer/picture/PixelShape.h"
#include "platform/viewer/picture/RecordSlot.h"
#include "platform/viewer/picture/ViewerStatus.h"

#include <vector>

namespace zor::viewer {
/// Samples of an image whose pixels don't lie in memory as they are shown: colours of every packing, without
/// their fourth channel; the luma of all other families, at the depth of their packing.
class ConvertedSamples
{
public:
    /// Once. Keeps nothing of the record's memory. After an answer other than Ok there are no samples.
    ViewerStatus take(const _ZorImage& image);
    /// The samples keep their addresses.
    void swap(ConvertedSamples& other);

    /// Of the shape that shownShape() gives for the record.
    const Samples& samples() const { return m_samples; }

private:
    ViewerStatus takeColour(const _ZorImage& image);
    ViewerStatus takeLuma(const _ZorImage& image);

    std::vector<std::uint16_t> m_colour;
    RecordSlot m_luma;
    Samples m_samples;
};
} // namespace zor::viewer
