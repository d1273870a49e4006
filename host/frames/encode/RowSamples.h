#pragma once

#include "host/frames/encode/SampleImage.h"
#include "image/ZorPixelTypeTable.h"

#include <vector>

namespace zor {

/// The samples of row `y` of the scene, in the order in which the format stores them; width x
/// samplesPerPixel() of them.
std::vector<std::uint16_t> rowSamples(const SampleImage& scene, const ZorPixelTypeRow& row, std::uint32_t y);

} // namespace zor
