#pragma once

#include "platform/converter/Plane.h"

namespace zor::platform {

/// Luma of a TrueSense (RGBW) mosaic: the samples without a colour filter, W in the cell's layout, see the
/// whole visible light and lie on every other pixel, like the fields of one colour of a chess board. They are
/// kept, and a pixel between them gets the mean of its left, right, upper and lower neighbours, rounded half
/// up. On the outermost rows and columns it gets the mean of the two neighbours along the border, in the
/// corners of those that exist. For any size; a uniform grey keeps its value, and so does a straight rise but
/// for the corners. The single pixel of a 1 x 1 image is kept whatever its filter.
void panchromaticLuma(std::uint32_t pixelType, const Mosaic& mosaic, const Luma& luma);

} // namespace zor::platform
