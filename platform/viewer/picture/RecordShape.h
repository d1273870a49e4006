#pragma once

#include "image/ZorImage.h"
#include "platform/viewer/picture/PixelShape.h"
#include "platform/viewer/picture/ViewerStatus.h"

namespace zor::viewer {
/// How a record's pixels come to the screen.
enum class PixelRoute
{
    Refused,
    AsIs,   ///< unpacked mono, RGB and BGR: as they lie in a copy
    Colour, ///< RGB and BGR with a fourth channel or packed: unpacked, the fourth channel left out
    Luma,   ///< everything else: brought to mono by the converter
};

PixelRoute pixelRoute(const _ZorImage& image);

/// The shape of the samples that a record of a format that isn't refused is shown with.
PixelShape shownShape(const _ZorImage& image);

/// Whether the record can be read at all: pixels, a size, rows inside the buffer, a depth that its samples
/// can hold. Says nothing of the format.
ViewerStatus checkRecord(const _ZorImage* image);

/// The same for a header, which has no pixels. Null is no geometry and fits.
ViewerStatus checkHeader(const _ZorImage* header);
} // namespace zor::viewer
