#include "platform/converter/ConvertMosaic.h"

#include "image/Pitch.h"
#include "image/unpack/UnpackRow.h"
#include "platform/converter/BayerLuma.h"
#include "platform/converter/PanchromaticLuma.h"
#include "platform/converter/SampleStore.h"

#include <algorithm>
#include <vector>

namespace zor::platform {

namespace {

/// Samples around a tile that its luma needs, where the image has them. One would do; two rows keep the
/// colour cell in step, four columns also begin at a whole byte in every format.
constexpr std::uint32_t MarginRows = 2;
constexpr std::uint32_t MarginColumns = 4;
/// A tile with its luma stays in the cache and is little enough for OpenCV to do it on the calling thread.
constexpr std::uint32_t TileRows = 64;
constexpr std::uint32_t TileColumns = 1024;

/// A range of rows or columns, and the same with its margins.
struct Range
{
    Range(std::uint32_t first, std::uint32_t count, std::uint32_t margin, std::uint32_t size)
        : begin(first)
        , end(first + std::min(count, size - first))
        , outerBegin(first > 0 ? first - margin : 0)
        , outerEnd(end + std::min(margin, size - end))
    {
    }

    std::uint32_t begin;
    std::uint32_t end;
    std::uint32_t outerBegin;
    std::uint32_t outerEnd;
};

MosaicToLuma conversionFor(const _ZorImage& source)
{
    if (pixelTypeFamily(source.pixelType) == PixelFamily::TrueSense)
        return panchromaticLuma;
    return source.width < 3 || source.height < 3 ? smallBayerLuma : bayerLuma;
}

/// Of the largest tile, margins included.
std::size_t samplesOfTile(const _ZorImage& image)
{
    return std::size_t{std::min(image.height, TileRows + 2 * MarginRows)} *
           std::min(image.width, TileColumns + 2 * MarginColumns);
}

class TileConverter
{
public:
    TileConverter(const _ZorImage& source, const _ZorImage& result)
        : m_source(source)
        , m_result(result)
        , m_unpack(unpackRowFor(source.pixelType))
        , m_toLuma(conversionFor(source))
        , m_store(pixelTypeSampleBits(source.pixelType), result.pixelType)
        , m_mosaic(samplesOfTile(source))
        , m_luma(m_mosaic.size())
    {
    }

    void operator()(const Range& rows, const Range& columns)
    {
        const std::size_t width = columns.outerEnd - columns.outerBegin;
        const std::size_t height = rows.outerEnd - rows.outerBegin;
        for (std::size_t y = 0; y < height; ++y) {
            const std::uint8_t* row = m_source.data + (rows.outerBegin + y) * m_source.pitch;
            m_unpack(row + tightPitch(m_source.pixelType, columns.outerBegin), m_mosaic.data() + y * width,
                     width);
        }
        const Luma luma{m_luma.data(), width, width, height};
        m_toLuma(m_source.pixelType, {m_mosaic.data(), width, width, height}, luma);
        for (std::size_t y = rows.begin; y < rows.end; ++y) {
            m_store.store(luma.row(y - rows.outerBegin) + (columns.begin - columns.outerBegin),
                          columns.end - columns.begin, m_result.data + y * m_result.pitch, columns.begin);
        }
    }

private:
    const _ZorImage& m_source;
    const _ZorImage& m_result;
    UnpackRow m_unpack;
    MosaicToLuma m_toLuma;
    SampleStore m_store;
    std::vector<std::uint16_t> m_mosaic;
    std::vector<std::uint16_t> m_luma;
};

} // namespace

void convertMosaic(const _ZorImage& source, const _ZorImage& result)
{
    TileConverter convert(source, result);
    for (std::uint64_t y = 0; y < source.height; y += TileRows) {
        const Range rows(static_cast<std::uint32_t>(y), TileRows, MarginRows, source.height);
        for (std::uint64_t x = 0; x < source.width; x += TileColumns)
            convert(rows, {static_cast<std::uint32_t>(x), TileColumns, MarginColumns, source.width});
    }
}

} // namespace zor::platform
