#pragma once

#include "host/frames/StoredSamples.h"
#include "image/ZorImage.h"

#include <string>

namespace zor {

/// Reads a grey PGM or a colour PPM file, decimal (P2, P3) or binary (P5, P6: one byte a sample up to a
/// maxval of 255, else two, the high one first). The samples are not rescaled; the maxval (1 to 65535) gives
/// the significant bits. After the last sample only white space may follow, in decimal also comments: more
/// would mean that the header is that of another picture. Throws FrameError.
StoredSamples readPnm(const std::string& path);

/// The bytes of a binary PGM file with a frame's grey samples, or of a PPM file with its red, green and blue
/// ones, see PictureRows. The maxval is the full scale of the depth; up to 255 a sample takes one byte, else
/// two, the high one first.
std::string pnmBytes(const _ZorImage& frame);

} // namespace zor
