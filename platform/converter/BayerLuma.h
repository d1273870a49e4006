#pragma once

#include "platform/converter/Plane.h"

namespace zor::platform {

/// Bilinear demosaicing and the Rec. 601 luma 0.299 R + 0.587 G + 0.114 B in one step, rounded to nearest.
/// The outermost rows and columns repeat their inner neighbours. For at least 3 x 3 samples. A uniform grey
/// keeps its value at every depth up to 16 bits.
void bayerLuma(std::uint32_t pixelType, const Mosaic& mosaic, const Luma& luma);

/// The same for any size, slowly: each missing colour is the mean of its samples within the 3 x 3 around it,
/// where they exist, and a colour that has none there has no share in the luma. Needed below 3 samples a
/// side, where OpenCV gives zeros.
void smallBayerLuma(std::uint32_t pixelType, const Mosaic& mosaic, const Luma& luma);

} // namespace zor::platform
