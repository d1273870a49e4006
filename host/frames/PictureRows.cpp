#include "host/frames/PictureRows.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

#include <utility>

namespace zor {

bool PictureRows::has(std::uint32_t pixelType)
{
    const std::uint32_t samples = samplesPerPixel(pixelType);
    return samples == 1 || samples == 3;
}

PictureRows::PictureRows(const _ZorImage& frame)
    : m_frame(frame)
    , m_unpack(unpackRowFor(frame.pixelType))
    , m_channels(samplesPerPixel(frame.pixelType))
    , m_depth(pixelTypeSampleBits(frame.pixelType))
    , m_blueFirst(m_channels == 3 && pixelTypeRow(frame.pixelType)->channelIndex('B') == 0)
    , m_samples(std::size_t{frame.width} * m_channels)
{
}

std::uint8_t* PictureRows::row(std::uint32_t y)
{
    m_unpack(m_frame.data + std::size_t{y} * m_frame.pitch, m_samples.data(), m_frame.width);
    for (std::size_t i = 0; m_blueFirst && i < m_samples.size(); i += 3)
        std::swap(m_samples[i], m_samples[i + 2]);
    auto* bytes = reinterpret_cast<std::uint8_t*>(m_samples.data());
    // A byte is never written before its own word has been read.
    for (std::size_t i = 0; sampleBytes() == 1 && i < m_samples.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(m_samples[i]);
    return bytes;
}

} // namespace zor
