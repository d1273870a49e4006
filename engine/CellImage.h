#pragma once

#include "engine/ImageView.h"

#include <cstddef>

namespace zor {

/// Bytes from row to row of a working image: 16-bit cells whatever the frame's depth, rows padded to a
/// multiple of 4 bytes.
std::int32_t cellStep(std::int32_t width);

/// Bytes of a working image's block: one row more than the image has.
std::size_t cellBlockBytes(std::int32_t width, std::int32_t height);

/// The value at which a pixel of the given depth is saturated: 255, 1023, 4095 or 65535.
constexpr std::int32_t saturationLimit(std::int32_t depth)
{
    return static_cast<std::int32_t>((std::int64_t{1} << (depth & 63)) - 1);
}

/// Fills a working image from a frame of `frameBytes` bytes: at depth 8 pixel by pixel, at depths 9 to 16
/// with one flat copy of height x cells.step bytes whatever the frame's step is. Where the flat copy is
/// longer than the frame the rest is zero, and so are the cells that belong to no pixel and all cells at a
/// depth that is not corrected.
void fillCells(const ConstImageView& frame, std::size_t frameBytes, const ImageView& cells);

/// Clears the cells that belong to no pixel: the padding of each row and the spare row.
void clearSpareCells(const ImageView& cells);

} // namespace zor
