#pragma once

#include "host/frames/StoredSamples.h"
#include "image/ZorImage.h"

#include <string>

namespace zor {

/// Reads a PGM file, P2 (decimal) or P5 (one byte a sample up to a maxval of 255, else two, the high one
/// first). The samples are not rescaled; the maxval (1 to 65535) gives the significant bits. After the last
/// sample only white space may follow, in P2 also comments: more would mean that the header is that of
/// another picture. Throws FrameError.
StoredSamples readPnm(const std::string& path);

/// The bytes of a binary PGM file with the picture's samples. Its maxval is the full scale of the depth: 255,
/// 1023, 4095 or 65535; up to 255 a sample takes one byte, else two, the high one first.
/// `picture` is a record in one of the four plain mono formats that the converter makes.
std::string pnmBytes(const _ZorImage& picture);

} // namespace zor
