#pragma once

#include "host/frames/Frame.h"

namespace zor {

/// Looks at the bits that a raw format leaves unused above its samples: those of 10, 12 and 14 bits in words
/// of 16, whatever their family. A frame that is read in the right format has zeros there. Throws FrameError
/// that names the first pixel with a sample which does not fit. Packed formats have no such bits, or spare
/// ones that mean nothing.
void checkRawRange(const std::string& path, const Frame& frame);

} // namespace zor
