#pragma once

#include <cstdint>
#include <cstring>

namespace zor {

/// A borrowed image: rows from the top down, `step` bytes apart, pixels from left to right.
/// A pixel is one byte at depth 8 and two bytes, little-endian, at any other depth. `Byte` is
/// `std::uint8_t` or `const std::uint8_t`. Rows need no alignment.
template <typename Byte> struct BasicImageView
{
    Byte* data;
    std::int32_t step;
    std::int32_t width;
    std::int32_t height;
    std::int32_t depth; ///< significant bits of a pixel

    Byte* row(std::int32_t y) const { return data + static_cast<std::ptrdiff_t>(y) * step; }
};

/// Frames of 8 to 16 bits are corrected. Those of any other depth have no gains, means of 0 and black cells.
constexpr bool isCorrectedDepth(std::int32_t depth)
{
    return depth >= 8 && depth <= 16;
}

using ImageView = BasicImageView<std::uint8_t>;
using ConstImageView = BasicImageView<const std::uint8_t>;

inline ConstImageView readOnly(const ImageView& view)
{
    return {view.data, view.step, view.width, view.height, view.depth};
}

/// The 16-bit cell with the given index in a row that may start at any address.
inline std::uint16_t loadCell(const std::uint8_t* row, std::int32_t index)
{
    std::uint16_t cell;
    std::memcpy(&cell, row + 2 * static_cast<std::ptrdiff_t>(index), sizeof cell);
    return cell;
}

inline void storeCell(std::uint8_t* row, std::int32_t index, std::uint16_t cell)
{
    std::memcpy(row + 2 * static_cast<std::ptrdiff_t>(index), &cell, sizeof cell);
}

} // namespace zor
