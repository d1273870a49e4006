#pragma once

#include "host/frames/StoredSamples.h"

namespace zor {

/// Reads a PGM file, P2 (decimal) or P5 (one byte a sample up to a maxval of 255, else two, the high one
/// first). The samples are not rescaled; the maxval (1 to 65535) tells the significant bits. Behind the last
/// sample only white space may stand: more would mean that the header tells of another picture. Throws
/// FrameError.
StoredSamples readPgm(const std::string& path);

} // namespace zor
