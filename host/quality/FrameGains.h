#pragma once

#include "engine/Gains.h"

#include <cstddef>
#include <list>

namespace zor {

/// The two gain lists of one frame, 1.0 leaves a pixel as it is. Entries may be infinite or NaN.
struct FrameGains
{
    std::list<double> columns; ///< left to right
    std::list<double> rows;    ///< top to bottom
    /// The largest share by which a row gain is off because cells of the working image wrapped: they hold 16
    /// bits that the column pass reads as signed, so that pixels and products from 32768 on may come out as
    /// another value than the limited product. 0 where none did.
    double rowError = 0.0;
};

/// Computes both lists as the utility's dialog does: column gains from the frame, row gains from the working
/// image that the rounded column gains leave. `frameBytes` is the size of the frame's pixel buffer.
FrameGains computeFrameGains(const ConstImageView& frame, std::size_t frameBytes, const GainRule& rule);

} // namespace zor
