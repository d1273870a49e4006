#pragma once

#include "host/frames/StoredSamples.h"

namespace zor {

/// Reads the first picture of a grey TIFF file of 8 or 16 unsigned bits, in strips or tiles, in the stored
/// order of lines. White is the largest sample: files where it is 0 are refused, as an inversion would need
/// to know the full scale. A MaxSampleValue that stands in the file tells the significant bits. Throws
/// FrameError.
StoredSamples readTiff(const std::string& path);

} // namespace zor
