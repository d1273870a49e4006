#pragma once

#include "image/ZorImage.h"

#include <array>
#include <cstdint>

namespace zor {

/// The samples of one pixel as its format holds them: unpacked, but neither converted nor, where a sample has
/// a word of its own, limited to the depth.
struct NativeCodes
{
    std::uint32_t count = 0; ///< how many there are; the rest is 0
    std::array<std::uint16_t, 4> codes{};
};

/// Pixels that are a whole number of bytes in every format, and an even number.
constexpr std::uint32_t NativeGroup = 8;

/// Whether the image has native codes: none for a pixel type code that no row of the table has, signed
/// samples, a record without pixels or with sides of 0, a pitch below a row, or a buffer that ends before the
/// last pixel.
bool hasNativeCodes(const _ZorImage& image);

/// The samples of `count` pixels from column `first` on, a multiple of NativeGroup, in the order in which
/// they lie in memory: samplesPerPixel() a pixel. All are within row `y` of an image that hasNativeCodes().
void unpackNativeCodes(const _ZorImage& image, std::uint32_t first, std::uint32_t y, std::uint32_t count,
                       std::uint16_t* samples);

/// The native codes of the pixel in column `x` of row `y`: one for mono, Bayer and TrueSense; three or four
/// for RGB, in the order of the layout; luma and the two colour differences for YUV, which two pixels of a
/// 4:2:2 format share, and the fourth channel of `YUV444_8`. An odd last pixel of a 4:2:2 row has no second
/// difference, hence two codes. `channelIndex` of the format's row finds a channel among them. None for a
/// place outside the image or its buffer, a pixel type code that no row of the table has, signed samples, or
/// a record without pixels. Reads nothing outside the row's own bytes.
NativeCodes nativeCodes(const _ZorImage& image, std::uint32_t x, std::uint32_t y);

} // namespace zor
