#include "host/quality/SampleLanes.h"

#include "image/ColourFilter.h"
#include "image/PixelTypeCode.h"
#include "image/unpack/NativeCodes.h"
#include "image/unpack/UnpackRow.h"

#include <algorithm>

namespace zor {

namespace {

/// Pixels of a run: a whole number of lanes.
constexpr std::uint32_t RunPixels = 1536;
static_assert(RunPixels % LaneCount == 0);
constexpr std::size_t MostSamplesPerPixel = 4;

std::vector<std::string> filterCell(const ZorPixelTypeRow& row)
{
    const ColourFilter filter(row);
    const std::size_t side = pixelTypeFamily(row.code) == PixelFamily::Bayer ? 2 : 4;
    std::vector<std::string> cell(side);
    for (std::size_t y = 0; y < side; ++y)
        for (std::size_t x = 0; x < side; ++x)
            cell[y] += "RGBW"[filter.at(x, y)];
    return cell;
}

/// The letter of a token of the channel layout.
char channelOf(const std::string& token)
{
    if (token == "Cb")
        return 'U';
    return token == "Cr" ? 'V' : token[0];
}

std::vector<std::string> cellOf(const ZorPixelTypeRow& row)
{
    const PixelFamily family = pixelTypeFamily(row.code);
    if (family == PixelFamily::Bayer || family == PixelFamily::TrueSense)
        return filterCell(row);
    std::string letters;
    std::string token;
    for (const char letter : row.channelLayout + std::string(" ")) {
        if (letter != ' ') {
            token += letter;
            continue;
        }
        letters += channelOf(token);
        token.clear();
    }
    return {letters};
}

} // namespace

PixelRegion clippedTo(const _ZorImage& image, const PixelRegion& region)
{
    const std::int64_t left = std::max<std::int64_t>(region.x, 0);
    const std::int64_t top = std::max<std::int64_t>(region.y, 0);
    const std::int64_t right = std::min<std::int64_t>(std::int64_t{region.x} + region.width, image.width);
    const std::int64_t bottom = std::min<std::int64_t>(std::int64_t{region.y} + region.height, image.height);
    if (left >= right || top >= bottom)
        return {};
    return {static_cast<std::int32_t>(left), static_cast<std::int32_t>(top),
            static_cast<std::int32_t>(right - left), static_cast<std::int32_t>(bottom - top)};
}

SampleLanes::SampleLanes(const ZorPixelTypeRow& row)
    : m_cell(cellOf(row))
    , m_samplesPerPixel(samplesPerPixel(row.code))
{
    for (const char letter : {'Y', 'U', 'V', 'R', 'G', 'B', 'W', 'A'}) {
        const auto has = [letter](const std::string& line) { return line.find(letter) != std::string::npos; };
        if (std::any_of(m_cell.begin(), m_cell.end(), has))
            m_channels += letter;
    }
}

std::array<std::size_t, LaneCount> SampleLanes::lanesFrom(std::size_t x, std::size_t y) const
{
    const std::string& letters = m_cell[y % m_cell.size()];
    std::array<std::size_t, LaneCount> lanes{};
    for (std::size_t i = 0; i < LaneCount; ++i)
        lanes[i] = m_channels.find(letters[(x * m_samplesPerPixel + i) % letters.size()]);
    return lanes;
}

void forEachRun(const _ZorImage& image, const PixelRegion& region, const TakeSamples& take)
{
    std::vector<std::uint16_t> samples((RunPixels + NativeGroup) * MostSamplesPerPixel);
    const std::uint32_t perPixel = samplesPerPixel(image.pixelType);
    const auto left = static_cast<std::uint32_t>(region.x);
    const auto top = static_cast<std::uint32_t>(region.y);
    const std::uint32_t right = left + static_cast<std::uint32_t>(region.width);
    const std::uint32_t bottom = top + static_cast<std::uint32_t>(region.height);
    for (std::uint32_t y = top; y < bottom; ++y) {
        for (std::uint32_t x = left, count = 0; x < right; x += count) {
            count = std::min(RunPixels, right - x);
            const std::uint32_t skipped = x % NativeGroup;
            unpackNativeCodes(image, x - skipped, y, skipped + count, samples.data());
            take(y, samples.data() + std::size_t{skipped} * perPixel, std::size_t{count} * perPixel);
        }
    }
}

} // namespace zor
