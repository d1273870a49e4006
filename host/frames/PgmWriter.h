#pragma once

#include "image/ZorImage.h"

#include <string>

namespace zor {

/// The bytes of a binary PGM file with the picture's samples. Its maxval is the full scale of the depth: 255,
/// 1023, 4095 or 65535; up to 255 a sample takes one byte, else two, the high one first.
/// `picture` is a record in one of the four plain mono formats that the converter makes.
std::string pgmBytes(const _ZorImage& picture);

} // namespace zor
