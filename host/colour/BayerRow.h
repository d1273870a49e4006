#pragma once

#include <cstddef>
#include <cstdint>

namespace zor {

/// A row of a Bayer frame and its neighbours, each from the sample before the first pixel to the one after
/// the last. Every second sample of the row is green; the others are red or blue, and so are those of the
/// rows above and below, the other way round.
struct BayerRow
{
    const std::uint16_t* above;
    const std::uint16_t* row;
    const std::uint16_t* below;
    bool isGreenFirst; ///< the first pixel is green
    bool isRedRow;     ///< the pixels that are not green are red
};

/// Red, green and blue of each pixel, 3 * `width` samples. A colour that the pixel has not itself is the mean
/// of the nearest ones, two or four, rounded to nearest and up at one half.
void demosaicRow(const BayerRow& source, std::uint16_t* destination, std::size_t width);

} // namespace zor
