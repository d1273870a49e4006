#pragma once

#include "host/frames/Frame.h"
#include "host/frames/StoredSamples.h"

namespace zor {

/// Reads the first picture of a grey TIFF file of 8 or 16 unsigned bits, in strips or tiles, in the stored
/// order of lines. `whiteIsZero` is given for a file whose 0 is white, and for no other. A MaxSampleValue
/// that stands in the file tells the significant bits; inverted samples then have all bits of 8 or 16. Throws
/// FrameError.
StoredSamples readTiff(const std::string& path, std::optional<WhiteIsZero> whiteIsZero);

} // namespace zor
