#pragma once

#include "host/frames/FrameLimits.h"

#include <cstdint>
#include <string>

namespace zor {

/// How much a TIFF file with this compression holds at most. Throws FrameError for a compression that is not
/// read: those of other pictures, PixarLog, which rounds to 11 bits, and JPEG's old way.
Inflation tiffInflation(const std::string& path, std::uint16_t compression);

} // namespace zor
