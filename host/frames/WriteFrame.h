#pragma once

#include "image/ZorImage.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zor {

/// The endings of the files that a frame in this pixel format goes into, with their dots and in small
/// letters. Mono formats and those of a colour filter go into grey PGM, PNG and TIFF files, whose samples are
/// the format's own codes; RGB formats into PPM, PNG and TIFF files in colour; every format into a raw dump.
std::vector<std::string> frameFileEndings(std::uint32_t pixelType);

/// Throws FrameError when the name of a file has none of these endings, in small or capital letters.
void checkFrameFileEnding(const std::string& path, std::uint32_t pixelType);

/// The bytes of the file that holds the frame, of the kind that the ending of `path` names, in small or
/// capital letters. Reading it back gives the samples, and the depth where that is 8, 10, 12 or 16; 14 bits
/// come back as 16. A raw dump is in tight rows and in the order of GigE Vision, as it is read when only
/// format and size are given. `frame` holds all its pixels. Throws FrameError for a format that does not go
/// into such a file, a sample above the format's depth that a picture file cannot hold, and what the format's
/// library refuses.
std::string frameFileBytes(const std::string& path, const _ZorImage& frame);

} // namespace zor
