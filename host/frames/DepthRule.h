#pragma once

#include "host/frames/Frame.h"
#include "host/frames/StoredSamples.h"

namespace zor {

/// Bits that hold all values from 0 to `largest`.
std::uint32_t bitsForValue(std::uint32_t largest);

/// The depth that a frame of so many significant bits gets: rounded up to 8, 10, 12 or 16.
std::uint32_t depthForBits(std::uint32_t bits);

/// The place of a pixel, for an error's text; `index` counts from 0, row after row.
std::string pixelPlace(std::uint32_t width, std::size_t index);

/// A frame in the mono format of its depth, or of three channels in the RGB format, a byte or a word a
/// sample, with the samples unchanged: the depth is that of the options when given, else what the file
/// states, else what the largest sample needs. Throws FrameError for a sample above the depth.
Frame frameFromSamples(const std::string& path, const StoredSamples& samples, const FrameOptions& options);

} // namespace zor
