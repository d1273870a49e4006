#pragma once

#include "host/frames/Frame.h"

namespace zor {

/// The frame without what the sensor shows in the dark: each sample less the one at its place in `dark`, 0
/// where that would be negative. Same format, tight rows; bits that belong to no sample are 0, and what is
/// known about the depth is that of the frame.
///
/// Samples that are no amounts of light stay as they are: colour differences, whose code for none is in the
/// middle of their scale, and the fourth channel. Of a YUV frame the luma alone becomes darker.
///
/// Throws std::invalid_argument for frames of unlike sizes or formats, and for one whose samples cannot be
/// read.
Frame subtractDark(const Frame& frame, const Frame& dark);

} // namespace zor
