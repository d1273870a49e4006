#pragma once

#include <cstddef>
#include <cstdint>

namespace zor::viewer {
/// What one pixel of a shown image looks like: unpacked unsigned samples, interleaved.
struct PixelShape
{
    int bytes = 1;          ///< of one sample: 1 or 2
    int channels = 1;       ///< 1 (mono) or 3 (colour)
    int depth = 8;          ///< significant bits of a sample, 1 to 16
    bool blueFirst = false; ///< colour: B G R instead of R G B
};

inline bool operator==(const PixelShape& a, const PixelShape& b)
{
    return a.bytes == b.bytes && a.channels == b.channels && a.depth == b.depth && a.blueFirst == b.blueFirst;
}
inline bool operator!=(const PixelShape& a, const PixelShape& b)
{
    return !(a == b);
}

/// Rows of samples that somebody else owns. Every row of 2-byte samples starts at an even address.
struct Samples
{
    const std::uint8_t* data = nullptr;
    std::size_t pitch = 0; ///< bytes from row to row
    int width = 0;         ///< pixels
    int height = 0;

    const std::uint8_t* row(int y) const { return data + static_cast<std::size_t>(y) * pitch; }
};
} // namespace zor::viewer
