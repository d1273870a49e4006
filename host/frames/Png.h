#pragma once

#include "host/frames/StoredSamples.h"

namespace zor {

/// Reads a grey PNG file of 8 or 16 bits. Colour, palette, alpha and other bit counts are refused. The file's
/// sBIT entry, if any, tells the significant bits. Throws FrameError.
StoredSamples readPng(const std::string& path);

} // namespace zor
