#pragma once

#include "image/ZorImage.h"

namespace zor::platform {

/// Fills the pixels of `result`, one of the four mono formats and of the source's size, tile by tile: for the
/// families with a colour filter on each pixel, Bayer and TrueSense. Throws std::bad_alloc, and what OpenCV
/// throws.
void convertMosaic(const _ZorImage& source, const _ZorImage& result);

} // namespace zor::platform
