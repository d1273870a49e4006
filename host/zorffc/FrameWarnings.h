#pragma once

#include "host/quality/CorrectedFrame.h"
#include "host/quality/FrameGains.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zor {

/// Warnings are one line each, without a line end, and say what to do.

/// What makes a frame a poor base for gains: no light or next to none, saturated pixels, columns or rows
/// without light.
std::vector<std::string> frameWarnings(const ConstImageView& frame);

/// Gains that are no finite number although the frame has light there, gains that the file's 32-bit values
/// cannot hold, and row gains that are off because the working image wraps.
std::vector<std::string> gainWarnings(const ConstImageView& frame, const FrameGains& gains,
                                      std::uint8_t fractionBits);

/// Pixels that only the correction brings to the limit of the depth, which may be too low where it was
/// guessed.
std::vector<std::string> limitWarnings(const ConstImageView& frame, const ConstImageView& corrected,
                                       bool depthGuessed);

} // namespace zor
