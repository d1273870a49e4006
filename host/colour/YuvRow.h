#pragma once

#include <cstddef>
#include <cstdint>

namespace zor {

/// How the samples of a row of a YUV format follow each other.
enum class YuvOrder
{
    LumaFirst,       ///< Y U Y V
    DifferenceFirst, ///< U Y V Y
    Whole            ///< Y U V and a fourth sample that is passed over
};

/// Red, green and blue of each pixel, 3 * `width` samples of `bits` bits, by Rec. 601 at full range, rounded
/// to nearest and limited. Pixels that share two differences both have them; an odd last pixel has the second
/// one of the pair before it, or none.
void colourYuvRow(const std::uint16_t* source, YuvOrder order, std::uint32_t bits, std::uint16_t* destination,
                  std::size_t width);

} // namespace zor
