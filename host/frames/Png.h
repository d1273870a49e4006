#pragma once

#include "host/frames/StoredSamples.h"
#include "image/ZorImage.h"

#include <string>

namespace zor {

/// Reads a grey PNG file of 8 or 16 bits. Colour, palette, alpha and other bit counts are refused. The file's
/// sBIT entry, if any, gives the significant bits and says whether the samples are brought up to the file's
/// bits; it is not looked at when all samples fit into the depth that was `asked` for. Throws FrameError.
StoredSamples readPng(const std::string& path, std::optional<std::uint32_t> asked);

/// The bytes of a grey PNG file of 8 or 16 bits with the picture's samples as they are. Above 8 bits an sBIT
/// entry gives the depth, so that a program that knows it gets samples and depth back; one that does not
/// shows 10 and 12 bits dark. `picture` is a record in one of the four plain mono formats that the converter
/// makes. Throws std::runtime_error when libpng refuses.
std::string pngBytes(const _ZorImage& picture);

} // namespace zor
