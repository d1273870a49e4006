#include "platform/viewer/picture/ConvertedSamples.h"

#include "image/MonoTarget.h"
#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorImageConverter.h"
#include "image/unpack/UnpackRow.h"
#include "platform/viewer/picture/RecordShape.h"
#include "platform/viewer/picture/RowBands.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace zor::viewer {
namespace {
constexpr int LeastRowsToShare = 64;

// The converter widens 14 bits to 16 by repeating the upper two; the value at its own depth is the upper 14.
void dropRepeatedBits(_ZorImage& record)
{
    for (std::uint32_t y = 0; y < record.height; ++y) {
        auto* row = reinterpret_cast<std::uint16_t*>(record.data + std::size_t{y} * record.pitch);
        for (std::uint32_t x = 0; x < record.width; ++x)
            row[x] = static_cast<std::uint16_t>(row[x] >> 2);
    }
}

// The first three of the four samples of each pixel of a row, in pieces that stay in the cache.
void takeThreeOfFour(std::uint32_t pixelType, const std::uint8_t* source, std::uint16_t* target, int width)
{
    constexpr int Piece = 1024;
    const std::uint64_t pieceBytes = tightPitch(pixelType, Piece);
    const zor::UnpackRow unpack = zor::unpackRowFor(pixelType);
    std::array<std::uint16_t, Piece * 4> samples;
    for (int left = width; left > 0; left -= Piece, source += pieceBytes) {
        const int count = std::min(left, Piece);
        unpack(source, samples.data(), static_cast<std::size_t>(count));
        for (const std::uint16_t* pixel = samples.data(); pixel < samples.data() + count * 4; pixel += 4)
            target = std::copy_n(pixel, 3, target);
    }
}
} // namespace

ViewerStatus ConvertedSamples::take(const _ZorImage& image)
{
    m_samples.width = static_cast<int>(image.width);
    m_samples.height = static_cast<int>(image.height);
    return pixelRoute(image) == PixelRoute::Colour ? takeColour(image) : takeLuma(image);
}

ViewerStatus ConvertedSamples::takeLuma(const _ZorImage& image)
{
    if (ZimConvert(&image, displayFormat(image.pixelType), m_luma.place()) != 0 || !m_luma.get())
        return ViewerStatus::Format;
    if (pixelTypeSampleBits(image.pixelType) == 14)
        dropRepeatedBits(*m_luma.get());
    m_samples.data = m_luma.get()->data;
    m_samples.pitch = m_luma.get()->pitch;
    return ViewerStatus::Ok;
}

ViewerStatus ConvertedSamples::takeColour(const _ZorImage& image)
{
    const std::size_t rowSamples = std::size_t{image.width} * 3;
    try {
        m_colour.resize(rowSamples * image.height);
    } catch (const std::bad_alloc&) {
        return ViewerStatus::Memory;
    }
    const zor::UnpackRow unpack = zor::unpackRowFor(image.pixelType);
    const bool hasFourth = zor::samplesPerPixel(image.pixelType) == 4;
    forRowBands(m_samples.height, LeastRowsToShare, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const std::uint8_t* source = image.data + static_cast<std::size_t>(y) * image.pitch;
            std::uint16_t* target = m_colour.data() + static_cast<std::size_t>(y) * rowSamples;
            if (hasFourth)
                takeThreeOfFour(image.pixelType, source, target, m_samples.width);
            else
                unpack(source, target, image.width);
        }
    });
    m_samples.data = reinterpret_cast<const std::uint8_t*>(m_colour.data());
    m_samples.pitch = rowSamples * sizeof(std::uint16_t);
    return ViewerStatus::Ok;
}

void ConvertedSamples::swap(ConvertedSamples& other)
{
    m_colour.swap(other.m_colour);
    m_luma.swap(other.m_luma);
    std::swap(m_samples, other.m_samples);
}
} // namespace zor::viewer
