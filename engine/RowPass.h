#pragma once

#include "engine/ImageView.h"

namespace zor {

/// Multiplies an image of 16-bit cells by one gain code per row into another of the same size. `source.depth`
/// is the frame's depth. A cell that equals the saturation limit is copied; any other becomes
/// (cell x code) >> 8, truncated, and the limit when its low 16 bits, read as a signed number, are above the
/// limit's low 16 bits, read so too: at depth 16 every result with bit 15 clear becomes white. Both steps are
/// used with their lowest bit cleared.
void applyRowCodes(const ConstImageView& source, const ImageView& destination, const std::uint16_t* codes);

} // namespace zor
