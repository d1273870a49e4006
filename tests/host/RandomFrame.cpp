#include "tests/host/RandomFrame.h"

#include "tests/support/RecordOf.h"

#include <random>

RandomFrame::RandomFrame(const reference::PixelFormat& format, std::uint32_t width, std::uint32_t height,
                         std::uint32_t padding, std::uint32_t seed)
    : m_format(format)
    , m_bytes(std::size_t{height - 1} * (format.rowBytes(width) + padding) + format.rowBytes(width))
    , m_record(recordOf(format.code, width, height, format.rowBytes(width) + padding, m_bytes.data(),
                        m_bytes.size()))
{
    std::mt19937 random(seed);
    for (std::size_t i = 0; i < m_bytes.size(); ++i)
        m_bytes.data()[i] = static_cast<std::uint8_t>(random());
}

std::uint32_t RandomFrame::code(std::uint32_t x, std::uint32_t y, std::uint32_t sample) const
{
    const std::uint8_t* line = m_bytes.data() + std::size_t{y} * m_record.pitch;
    std::uint32_t value = 0;
    for (std::uint32_t bit = 0; bit < m_format.storedBits; ++bit) {
        const std::uint64_t place = m_format.bitPlace(x, sample, bit);
        value |= (line[place / 8] >> (place % 8) & 1u) << bit;
    }
    return value;
}

std::map<char, std::vector<std::uint32_t>> RandomFrame::samplesOf(const zor::PixelRegion& region) const
{
    std::map<char, std::vector<std::uint32_t>> samples;
    for (const std::string& line : m_format.cell)
        for (const char letter : line)
            samples[letter];
    const auto isIn = [](std::uint32_t place, std::int32_t first, std::int32_t count) {
        return place >= std::int64_t{first} && place < std::int64_t{first} + count;
    };
    for (std::uint32_t y = 0; y < m_record.height; ++y)
        for (std::uint32_t x = 0; x < m_record.width; ++x)
            for (std::uint32_t i = 0; i < m_format.samplesPerPixel; ++i)
                if (isIn(x, region.x, region.width) && isIn(y, region.y, region.height))
                    samples[m_format.component(x, y, i)].push_back(code(x, y, i));
    return samples;
}
