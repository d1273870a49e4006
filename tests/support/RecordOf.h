#pragma once

#include "image/ImageRecord.h"

#include <cstddef>

/// A record over somebody's pixels.
inline _ZorImage recordOf(std::uint32_t code, std::uint32_t width, std::uint32_t height, std::uint32_t pitch,
                          std::uint8_t* data, std::size_t size)
{
    _ZorImage image = zor::imageRecord(code);
    image.width = width;
    image.height = height;
    image.pitch = pitch;
    image.imageSize = static_cast<std::uint32_t>(size);
    image.data = data;
    return image;
}
