#pragma once

#include "image/ImageRecord.h"
#include "image/Pitch.h"

#include <cstddef>
#include <vector>

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

/// The last row is as long as the others.
inline _ZorImage recordOf(std::uint32_t code, std::uint32_t width, std::uint32_t height, std::uint32_t pitch,
                          std::uint8_t* data)
{
    return recordOf(code, width, height, pitch, data, std::size_t{pitch} * height);
}

inline _ZorImage recordOf(std::uint32_t code, std::uint32_t width, std::uint32_t height, std::uint32_t pitch,
                          std::vector<std::uint8_t>& bytes)
{
    return recordOf(code, width, height, pitch, bytes.data(), bytes.size());
}

/// Rows without padding.
inline _ZorImage recordOf(std::uint32_t code, std::uint32_t width, std::uint32_t height,
                          std::vector<std::uint8_t>& bytes)
{
    return recordOf(code, width, height, static_cast<std::uint32_t>(zor::tightPitch(code, width)), bytes);
}
