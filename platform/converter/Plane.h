#pragma once

#include <cstddef>
#include <cstdint>

namespace zor::platform {

/// Samples in rows of `width`, `stride` samples from one row to the next. Borrows its memory.
template <typename Sample> struct Plane
{
    Sample* samples = nullptr;
    std::size_t stride = 0;
    std::size_t width = 0;
    std::size_t height = 0;

    Sample* row(std::size_t y) const { return samples + y * stride; }
};

/// What is read from: one sample a pixel, each of its own colour filter.
using Mosaic = Plane<const std::uint16_t>;
/// What is written to, of the same width and height as the mosaic.
using Luma = Plane<std::uint16_t>;

/// Makes the luma of a mosaic whose first sample is the first of its colour cell. A luma sample depends on
/// mosaic samples at most one row and one column away, so that a large image can be taken in tiles.
using MosaicToLuma = void (*)(std::uint32_t pixelType, const Mosaic& mosaic, const Luma& luma);

} // namespace zor::platform
