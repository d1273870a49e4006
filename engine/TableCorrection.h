#pragma once

#include "engine/ImageView.h"

#include <cstdint>

namespace zor {

/// What a camera makes of one pixel with the two tables of a coefficient file: pixel x column x row in
/// unlimited integers, shifted right by 2 x fractionBits (truncated), from 0 to the saturation limit of
/// `depth`. A negative product gives 0. `column` and `row` are the tables' entries, any value; `fractionBits`
/// is 8 or 12.
std::uint32_t correctedPixel(std::uint16_t pixel, std::int32_t column, std::int32_t row,
                             std::uint8_t fractionBits, std::int32_t depth);

/// correctedPixel for a whole frame: `columns` holds frame.width entries, `rows` frame.height entries.
/// `destination` has the frame's depth, width and height; it may be the frame itself.
void applyTables(const ConstImageView& frame, const std::int32_t* columns, const std::int32_t* rows,
                 std::uint8_t fractionBits, const ImageView& destination);

} // namespace zor
