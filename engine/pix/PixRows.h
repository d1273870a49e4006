#pragma once

#include "engine/pix/PixTypes.h"

#include <cstddef>

namespace zor {

inline bool isEmpty(PixelRegion region)
{
    return region.width < 1 || region.height < 1;
}

/// Row y of an image as bytes: rows may start at any address and lie at any distance.
inline const std::uint8_t* pixRow(const void* image, std::int32_t step, std::int32_t y)
{
    return static_cast<const std::uint8_t*>(image) + static_cast<std::ptrdiff_t>(y) * step;
}

inline std::uint8_t* pixRow(void* image, std::int32_t step, std::int32_t y)
{
    return static_cast<std::uint8_t*>(image) + static_cast<std::ptrdiff_t>(y) * step;
}

} // namespace zor
