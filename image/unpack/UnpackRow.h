#pragma once

#include "image/ZorPixelTypeRow.h"

#include <cstddef>
#include <cstdint>

namespace zor {

/// Takes `width` pixels of one row apart into samples of 16 bits, each as the format holds it, in the order
/// in which they lie in memory: samplesPerPixel() a pixel. Starts at the row's first byte, or at any place in
/// the row that is an even number of pixels and a whole number of bytes after it. Reads no byte after the one
/// that holds the last sample's last bit. A word of 16 bits with bits above the format's depth gives full
/// scale; the spare bits of packed fields mean nothing and are ignored.
using UnpackRow = void (*)(const std::uint8_t* source, std::uint16_t* destination, std::size_t width);

/// The row function of any format of the pixel type table; null for a code that no row of the table has.
UnpackRow unpackRowFor(std::uint32_t pixelType);

/// Samples that a pixel comes apart into: 1 for mono, Bayer and TrueSense, one for each channel (3 or 4) for
/// RGB and `YUV444_8`, 2 for the other YUV formats, whose pixels each have a luma sample of their own and, by
/// turns, the first or the second colour difference: two pixels share what their two pairs hold. An odd last
/// pixel has its luma and the first difference. 0 for a code that no row of the table has.
std::uint32_t samplesPerPixel(std::uint32_t pixelType);

/// Of a YUV format whose pixels have two samples each: whether the luma is the first of them.
bool isLumaFirst(const ZorPixelTypeRow& row);

} // namespace zor
