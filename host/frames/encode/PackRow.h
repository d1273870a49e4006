#pragma once

#include <cstdint>
#include <vector>

namespace zor {

/// Lays the samples of one row out as a format of the pixel type table stores them: `perPixel` samples a
/// pixel, none above the format's full scale. The row's bytes, as many as tightPitch() gives, must be zero
/// before.
void packRow(const std::vector<std::uint16_t>& samples, std::uint32_t pixelType, std::uint32_t perPixel,
             std::uint8_t* row);

} // namespace zor
