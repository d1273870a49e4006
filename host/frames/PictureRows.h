#pragma once

#include "image/ZorImage.h"
#include "image/unpack/UnpackRow.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zor {

/// A frame's rows as picture files hold them: each sample as the format has it, unpacked, in a byte to depth
/// 8, else in a word in the machine's order. Mono formats and those of a colour filter have one grey sample a
/// pixel, the filter's own; RGB formats have red, green and blue, in this order.
class PictureRows
{
public:
    /// Whether a frame in this format has such rows. Those with a fourth channel and YUV formats have none.
    static bool has(std::uint32_t pixelType);

    /// `frame` is in a format that has such rows, holds all its pixels, and outlives this object.
    explicit PictureRows(const _ZorImage& frame);

    std::uint32_t channels() const { return m_channels; } ///< 1: grey; 3: red, green and blue
    std::uint32_t depth() const { return m_depth; }       ///< bits of a sample
    std::uint32_t fullScale() const { return (1U << m_depth) - 1; }
    std::size_t sampleBytes() const { return m_depth > 8 ? 2 : 1; }
    std::size_t rowBytes() const { return m_samples.size() * sampleBytes(); }

    /// The samples of a row, valid until the next one is asked for. Takes no memory.
    std::uint8_t* row(std::uint32_t y);

private:
    const _ZorImage& m_frame;
    UnpackRow m_unpack;
    std::uint32_t m_channels;
    std::uint32_t m_depth;
    bool m_blueFirst;
    std::vector<std::uint16_t> m_samples; ///< of one row
};

} // namespace zor
