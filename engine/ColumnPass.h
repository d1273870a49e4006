#pragma once

#include "engine/ImageView.h"

namespace zor {

/// Codes that the column pass may read: one per column, or half the frame's step when that is more.
std::int32_t columnCodeCapacity(std::int32_t width, std::int32_t frameStep);

/// Multiplies a working image by one gain code per column, in place. `cells.depth` is the frame's depth.
///
/// Depth 8: product / 256 rounded to nearest, ties to even, limited to the signed 16-bit range only.
/// Depths 9 to 16: the block is taken as height rows of frameStep / 2 cells without a gap; a cell that equals
/// the saturation limit stays, any other becomes (cell x code) >> 8, truncated to 16 bits and limited when
/// that reads as a signed number above the limit. The walk ends with the block (height + 1 rows of
/// cells.step). `codes` holds columnCodeCapacity entries. A depth that is not corrected leaves the cells
/// alone.
void applyColumnCodes(const ImageView& cells, std::int32_t frameStep, const std::uint16_t* codes);

} // namespace zor
