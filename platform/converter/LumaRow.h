#pragma once

#include <cstddef>
#include <cstdint>

namespace zor::platform {

/// Makes the luma of `width` pixels out of their samples, as a row function of UnpackRow.h gives them.
using LumaRow = void (*)(const std::uint16_t* samples, std::uint16_t* luma, std::size_t width);

/// For RGB formats the Rec. 601 luma 0.299 R + 0.587 G + 0.114 B, rounded to nearest, exact for grey, alpha
/// unused; for YUV formats their luma sample as it is. Null for formats of one sample a pixel.
LumaRow lumaRowFor(std::uint32_t pixelType);

} // namespace zor::platform
