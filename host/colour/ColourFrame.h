#pragma once

#include "host/frames/Frame.h"

#include <cstdint>
#include <optional>

namespace zor {

/// Whether frames of this format hold colour that a viewer shows as grey: Bayer and YUV.
bool hasHiddenColour(std::uint32_t pixelType);

/// The frame in colour, for showing it, in the RGB format of its samples' bits and of the same size: a Bayer
/// frame demosaiced by bilinear interpolation, a YUV frame by Rec. 601 at full range. Bits above the depth
/// give full scale. Nothing for a format without hidden colour, a record without native codes, a Bayer frame
/// of one column or one row, which lacks a colour, and a frame that takes 4 GiB or more in colour.
std::optional<Frame> colourFrame(const _ZorImage& image);

} // namespace zor
