#pragma once

#include "host/frames/StoredSamples.h"
#include "image/ZorImage.h"

#include <string>

namespace zor {

/// Reads a PNG file in grey or colour of 8 or 16 bits, or with a palette, whose colours have 8. Other bit
/// counts of grey and alpha channels are refused; what an entry declares transparent is a pixel like any
/// other. The file's sBIT entry, if any, gives the significant bits and says whether the samples are brought
/// up to the file's bits. It is not looked at when all samples fit into the depth that was `asked` for, when
/// its bits differ from channel to channel, or beside a palette. Throws FrameError.
StoredSamples readPng(const std::string& path, std::optional<std::uint32_t> asked);

/// The bytes of a PNG file of 8 or 16 bits with a frame's samples as they are, grey or in colour, see
/// PictureRows. Above 8 bits an sBIT entry gives the depth, so that a program that knows it gets samples and
/// depth back; one that does not shows 10 and 12 bits dark. Throws std::runtime_error when libpng refuses.
std::string pngBytes(const _ZorImage& frame);

} // namespace zor
