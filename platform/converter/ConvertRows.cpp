#include "platform/converter/ConvertRows.h"

#include "image/Pitch.h"
#include "image/unpack/UnpackRow.h"
#include "platform/converter/LumaRow.h"
#include "platform/converter/SampleStore.h"

#include <algorithm>
#include <array>

namespace zor::platform {

namespace {

/// Pixels taken at a time, so that their samples stay in the cache. A whole number of bytes in every format.
constexpr std::uint32_t Piece = 2048;
constexpr std::uint32_t MostSamples = 4;

class RowConverter
{
public:
    RowConverter(std::uint32_t sourceType, std::uint32_t target)
        : m_sourceType(sourceType)
        , m_unpack(unpackRowFor(sourceType))
        , m_luma(lumaRowFor(sourceType))
        , m_store(pixelTypeSampleBits(sourceType), target)
    {
    }

    void operator()(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t width)
    {
        if (!m_luma && m_store.isPlainCopy()) {
            m_unpack(source, reinterpret_cast<std::uint16_t*>(destination), width);
            return;
        }
        for (std::uint32_t first = 0; first < width;) {
            const std::uint32_t count = std::min(width - first, Piece);
            m_store.store(lumaOf(source + tightPitch(m_sourceType, first), count), count, destination, first);
            first += count;
        }
    }

private:
    std::uint16_t* lumaOf(const std::uint8_t* source, std::uint32_t count)
    {
        m_unpack(source, m_samples.data(), count);
        if (!m_luma)
            return m_samples.data();
        m_luma(m_samples.data(), m_grey.data(), count);
        return m_grey.data();
    }

    std::uint32_t m_sourceType;
    UnpackRow m_unpack;
    LumaRow m_luma;
    SampleStore m_store;
    std::array<std::uint16_t, Piece * MostSamples> m_samples;
    std::array<std::uint16_t, Piece> m_grey;
};

} // namespace

void convertRows(const _ZorImage& source, const _ZorImage& result)
{
    RowConverter convert(source.pixelType, result.pixelType);
    for (std::size_t y = 0; y < source.height; ++y)
        convert(source.data + y * source.pitch, result.data + y * result.pitch, source.width);
}

} // namespace zor::platform
