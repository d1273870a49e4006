#pragma once

#include "image/ZorImage.h"

namespace zor::platform {

/// Fills the pixels of `result`, one of the four mono formats and of the source's size, row by row: for the
/// families whose luma needs no neighbours, mono, RGB and YUV. May throw what OpenCV throws.
void convertRows(const _ZorImage& source, const _ZorImage& result);

} // namespace zor::platform
