#pragma once

#include "host/frames/encode/Scene.h"
#include "image/ZorPixelTypeTable.h"

#include <vector>

namespace zor {

/// Samples that a pixel of the format takes in memory: one on a raw sensor, one for each channel in colour,
/// two in 4:2:2.
std::uint32_t storedSamplesPerPixel(const ZorPixelTypeRow& row);

/// The samples of line `y` of the scene, in the order in which the format stores them;
/// width x storedSamplesPerPixel of them.
std::vector<std::uint16_t> lineSamples(const Scene& scene, const ZorPixelTypeRow& row, std::uint32_t y);

} // namespace zor
