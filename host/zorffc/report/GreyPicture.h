#pragma once

#include "engine/ImageView.h"

#include <QImage>
#include <QSize>

#include <cstdint>

namespace zor {

/// The grey values that a picture shows as black and as white, in DN; `white` is above `black`.
struct GreyRange
{
    std::int32_t black;
    std::int32_t white;
};

/// The range that leaves 0.5 % of the pixels of both images below and 0.5 % above it. A single value gets a
/// range around it, limited to the depth.
GreyRange commonGreyRange(const ConstImageView& first, const ConstImageView& second);

/// The image in 8-bit grey at the given size, the range spread over black to white. A side that shrinks
/// averages the pixels below each of its own, by their area and rounded once; along one that grows a pixel is
/// repeated. Throws std::bad_alloc.
QImage greyPicture(const ConstImageView& image, const GreyRange& range, const QSize& size);

} // namespace zor
