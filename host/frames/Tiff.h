#pragma once

#include "host/frames/Frame.h"
#include "host/frames/StoredSamples.h"
#include "image/ZorImage.h"

#include <string>

namespace zor {

/// Reads the first picture of a TIFF file in grey or RGB of 8 or 16 unsigned bits, in strips or tiles, the
/// channels side by side or in planes, in the stored order of rows. `whiteIsZero` is given for a file whose 0
/// is white, and for no other. A MaxSampleValue in the file gives the significant bits; inverted samples then
/// have all bits of 8 or 16. Throws FrameError.
StoredSamples readTiff(const std::string& path, std::optional<WhiteIsZero> whiteIsZero);

/// The bytes of a TIFF file of 8 or 16 bits, uncompressed, with a frame's samples as they are, grey or RGB,
/// see PictureRows. Its MaxSampleValue is the full scale of the depth. Throws std::runtime_error when libtiff
/// refuses, as it does above 4 GiB.
std::string tiffBytes(const _ZorImage& frame);

} // namespace zor
