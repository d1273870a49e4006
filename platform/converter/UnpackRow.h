#pragma once

#include <cstddef>
#include <cstdint>

namespace zor::platform {

/// Takes `width` samples of one line apart, from the line's first byte or from any place in the line that
/// stands an even number of pixels and a whole number of bytes behind it. Reads no byte behind the one that
/// holds the last sample's last bit. A field wider than the format's depth, with bits above the depth set,
/// gives full scale.
using UnpackRow = void (*)(const std::uint8_t* source, std::uint16_t* destination, std::size_t width);

/// The row function of a mono format of the pixel type table; null for any other code.
UnpackRow unpackRowFor(std::uint32_t pixelType);

} // namespace zor::platform
