#pragma once

#include "host/frames/StoredSamples.h"

namespace zor {

/// Reads a grey PNG file of 8 or 16 bits. Colour, palette, alpha and other bit counts are refused. The file's
/// sBIT entry, if any, tells the significant bits and whether the samples are brought up to the file's bits;
/// it is not looked at when all samples fit into the depth that was `asked` for. Throws FrameError.
StoredSamples readPng(const std::string& path, std::optional<std::uint32_t> asked);

} // namespace zor
