#pragma once

#include "host/frames/Frame.h"
#include "host/frames/encode/SampleImage.h"

namespace zor {

/// How the rows of an encoded frame lie in memory.
struct EncodeLayout
{
    std::optional<std::uint32_t> pitch; ///< bytes from row to row; tight rows when not given
    std::uint8_t padding = 0;           ///< fills the bytes between a row's pixels and the next row
};

/// A frame as a camera with this pixel format would deliver the scene; `Packed` low bits are in a record's
/// order. A Bayer or RGBW site sees its own channel, a panchromatic one the luma; RGB takes the channels as
/// they are, with alpha at full scale; YUV is full-range Rec. 601, and the chroma of a 4:2:2 pair is that of
/// its even pixel, so that an odd last pixel has the luma and the chroma sample that comes with it. Bits
/// within a row that belong to no sample are 0.
///
/// Throws std::invalid_argument for a code that is not in the pixel type table, a scene without pixels, with
/// another number of samples than its sizes ask for or with a sample above the format's full scale, a pitch
/// smaller than a row, or a frame of 4 GiB or more.
Frame encodeFrame(const SampleImage& scene, std::uint32_t pixelType, const EncodeLayout& layout = {});

} // namespace zor
