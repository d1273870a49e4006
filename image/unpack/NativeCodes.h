#pragma once

#include "image/ZorImage.h"

#include <array>
#include <cstdint>

namespace zor {

/// The samples of one pixel as its format holds them: unpacked, but neither converted nor limited to the
/// depth where a sample stands in a word of its own.
struct NativeCodes
{
    std::uint32_t count = 0; ///< how many there are; the rest is 0
    std::array<std::uint16_t, 4> codes{};
};

/// The native codes of the pixel in column `x` of line `y`: one for mono, Bayer and TrueSense; three or four
/// for RGB, in the order of the layout; luma and the two colour differences for YUV, which two pixels of a
/// 4:2:2 format share, and the fourth channel of `YUV444_8`. An odd last pixel of a 4:2:2 line has no second
/// difference, hence two codes. `channelIndex` of the format's row finds a channel among them.
/// None for a place outside the image or its buffer, a format that is not in the table as it stands, signed
/// samples, or a record without pixels. Reads nothing outside the line's own bytes.
NativeCodes nativeCodes(const _ZorImage& image, std::uint32_t x, std::uint32_t y);

} // namespace zor
