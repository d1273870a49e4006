#pragma once

#include <cstdint>
#include <optional>

namespace zor {

/// The pixel type of a record for a 32-bit code of GenICam's Pixel Format Naming Convention (PFNC), by which
/// a camera names the format of an image. Nothing for a format that the pixel type table lacks.
std::optional<std::uint32_t> pixelTypeOfPfnc(std::uint32_t pfncCode);

} // namespace zor
