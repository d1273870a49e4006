#pragma once

#include "image/ZorImage.h"

#include <array>
#include <cstdint>

namespace zor::viewer {
/// The numbers that are drawn in the pixels of an image: its native codes, whatever it is converted to for
/// the screen. One for mono, Bayer and TrueSense; red, green and blue in this order for colour, without the
/// fourth channel; Y, U and V for YUV, where an odd last pixel of a 4:2:2 row has no V.
class PixelNumbers
{
public:
    /// The record is read at each call and must outlive this object.
    explicit PixelNumbers(const _ZorImage& image);

    /// Numbers in a pixel.
    int count() const { return m_count; }

    struct Numbers
    {
        int count = 0;
        std::array<int, 3> values{};
    };
    /// None for a place outside the image.
    Numbers at(int x, int y) const;

private:
    const _ZorImage& m_image;
    int m_count = 0;
    std::array<std::uint32_t, 3> m_places{}; ///< among the native codes
};
} // namespace zor::viewer
