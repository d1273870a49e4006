#pragma once

#include "image/ZorImage.h"

#include <string>

namespace zor {

/// The bytes of a grey TIFF file of 8 or 16 bits, uncompressed, with the picture's samples as they stand. Its
/// MaxSampleValue is the full scale of the depth: 255, 1023, 4095 or 65535.
/// `picture` is a record in one of the four plain mono formats that the converter makes.
/// Throws std::runtime_error when libtiff refuses, as it does above 4 GiB.
std::string tiffBytes(const _ZorImage& picture);

} // namespace zor
