#pragma once

#include "host/frames/Frame.h"
#include "host/frames/StoredSamples.h"
#include "image/ZorImage.h"

#include <string>

namespace zor {

/// Reads the first picture of a grey TIFF file of 8 or 16 unsigned bits, in strips or tiles, in the stored
/// order of rows. `whiteIsZero` is given for a file whose 0 is white, and for no other. A MaxSampleValue in
/// the file gives the significant bits; inverted samples then have all bits of 8 or 16. Throws FrameError.
StoredSamples readTiff(const std::string& path, std::optional<WhiteIsZero> whiteIsZero);

/// The bytes of a grey TIFF file of 8 or 16 bits, uncompressed, with the picture's samples as they are. Its
/// MaxSampleValue is the full scale of the depth: 255, 1023, 4095 or 65535. `picture` is a record in one of
/// the four plain mono formats that the converter makes. Throws std::runtime_error when libtiff refuses, as
/// it does above 4 GiB.
std::string tiffBytes(const _ZorImage& picture);

} // namespace zor
