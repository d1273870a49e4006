#pragma once

#include "host/frames/FrameSize.h"

#include <cstdint>
#include <string>

namespace zor {

/// How much a TIFF file with this compression holds at most. Throws FrameError for a compression that is not
/// for grey samples of 8 or 16 bits.
Inflation tiffInflation(const std::string& path, std::uint16_t compression);

} // namespace zor
