#pragma once

#include "image/ZorImage.h"

namespace zor::platform {

/// Whether the converter can read this record: a format of the pixel type table, unsigned, with packing
/// and pixel bits that agree with its code, at least one pixel, and a pitch and `imageSize` that hold every
/// row. The last row may end right after its last pixel.
bool isReadable(const _ZorImage& source);

} // namespace zor::platform
