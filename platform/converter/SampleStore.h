#pragma once

#include <cstddef>
#include <cstdint>

namespace zor::platform {

/// Brings samples of one depth to that of the target format and stores them as it holds them: a byte each or
/// a little-endian word of 16 bits.
class SampleStore
{
public:
    /// `target` is one of the four mono formats that the converter makes.
    SampleStore(std::uint32_t sourceBits, std::uint32_t target);

    /// Whether samples need no more than to be copied as words.
    bool isPlainCopy() const { return m_bytes == 2 && m_sourceBits == m_targetBits; }

    /// Uses up `samples`. `row` is the first byte of the destination's row, `first` the pixel in it that
    /// gets the first sample.
    void store(std::uint16_t* samples, std::size_t count, std::uint8_t* row, std::size_t first) const;

private:
    std::uint32_t m_sourceBits;
    std::uint32_t m_targetBits;
    std::size_t m_bytes;
};

} // namespace zor::platform
