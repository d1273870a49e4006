#pragma once

#include "platform/viewer/picture/PixelShape.h"

#include <cstdint>
#include <vector>

namespace zor::viewer {
/// An image and its mip levels down to a single pixel. Level 0 is the image itself, which stays the caller's
/// and must live as long as the levels show it; pixel (x, y) of level n is the mean of the 2^n x 2^n image
/// pixels from (x 2^n, y 2^n) on, as far as they exist.
class MipLevels
{
public:
    /// Takes the memory for the levels of an image of that size; throws std::bad_alloc and changes nothing
    /// when it can't be had. Memory of an earlier image is used again.
    void reserve(const Samples& image, const PixelShape& shape);
    /// Computes the levels of the image that `reserve` was called for. Rows of 2-byte samples that start at
    /// an odd address are copied.
    void build(const Samples& image, const PixelShape& shape);
    /// Gives the memory back.
    void clear();

    bool isEmpty() const { return m_levels.empty(); }
    int levelCount() const { return static_cast<int>(m_levels.size()); }
    const Samples& level(int index) const { return m_levels[static_cast<std::size_t>(index)]; }
    const PixelShape& shape() const { return m_shape; }
    /// Another number for every image that any mip levels were built for.
    std::uint64_t generation() const { return m_generation; }

    /// The native value of one sample of the image; the place must lie on it.
    int sample(int x, int y, int channel) const;

private:
    std::vector<Samples> m_levels;
    std::vector<std::uint16_t> m_memory;
    PixelShape m_shape;
    std::uint64_t m_generation = 0;
};
} // namespace zor::viewer
