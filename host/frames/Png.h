#pragma once

#include "host/frames/StoredSamples.h"
#include "image/ZorImage.h"

#include <string>

namespace zor {

/// Reads a grey PNG file of 8 or 16 bits. Colour, palette, alpha and other bit counts are refused. The file's
/// sBIT entry, if any, tells the significant bits and whether the samples are brought up to the file's bits;
/// it is not looked at when all samples fit into the depth that was `asked` for. Throws FrameError.
StoredSamples readPng(const std::string& path, std::optional<std::uint32_t> asked);

/// The bytes of a grey PNG file of 8 or 16 bits with the picture's samples as they stand. Above 8 bits an
/// sBIT entry tells the depth, so that whoever knows it gets samples and depth back; programs that do not see
/// 10 and 12 bits dark. `picture` is a record in one of the four plain mono formats that the converter makes.
/// Throws std::runtime_error when libpng refuses.
std::string pngBytes(const _ZorImage& picture);

} // namespace zor
