#include "host/colour/ColourFrame.h"

#include "host/colour/BayerRow.h"
#include "host/colour/YuvRow.h"
#include "host/frames/FormatName.h"
#include "host/frames/FrameLimits.h"
#include "image/ColourFilter.h"
#include "image/Pitch.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/NativeCodes.h"
#include "image/unpack/UnpackRow.h"

#include <algorithm>
#include <array>

namespace zor {

namespace {

using Samples = std::vector<std::uint16_t>;

/// Puts a row of samples into the frame, a byte or a word each.
void storeRow(const Samples& samples, Frame& frame, std::uint32_t y)
{
    std::uint8_t* row = frame.pixels.data() + std::size_t{y} * frame.pitch;
    if (pixelTypeSampleBits(frame.pixelType) == 8) {
        std::transform(samples.begin(), samples.end(), row,
                       [](std::uint16_t sample) { return static_cast<std::uint8_t>(sample); });
        return;
    }
    for (const std::uint16_t sample : samples) {
        *row++ = static_cast<std::uint8_t>(sample & 0xFF);
        *row++ = static_cast<std::uint8_t>(sample >> 8);
    }
}

/// The rows of a Bayer frame, mirrored at its edges so that the colours stay in their places.
class MirroredRows
{
public:
    explicit MirroredRows(const _ZorImage& image)
        : m_image(image)
        , m_unpack(unpackRowFor(image.pixelType))
    {
        m_rows.fill(Samples(std::size_t{image.width} + 2));
        m_held.fill(image.height);
    }

    /// Row `y`, from -1 to the height, with a sample before and one after it. Three rows are held at a time.
    const std::uint16_t* at(std::int64_t y)
    {
        const std::int64_t last = std::int64_t{m_image.height} - 1;
        const auto row = static_cast<std::uint32_t>(y < 0 ? -y : y > last ? 2 * last - y : y);
        Samples& samples = m_rows[row % 3];
        if (m_held[row % 3] != row) {
            m_held[row % 3] = row;
            m_unpack(m_image.data + std::size_t{row} * m_image.pitch, samples.data() + 1, m_image.width);
            samples.front() = samples[2];
            samples.back() = samples[m_image.width - std::size_t{1}];
        }
        return samples.data();
    }

private:
    const _ZorImage& m_image;
    UnpackRow m_unpack;
    std::array<Samples, 3> m_rows;
    std::array<std::uint32_t, 3> m_held; ///< the height where there is none yet
};

void demosaic(const _ZorImage& image, const ZorPixelTypeRow& format, Frame& frame)
{
    const ColourFilter filter(format);
    MirroredRows rows(image);
    Samples samples(std::size_t{image.width} * 3);
    for (std::uint32_t y = 0; y < image.height; ++y) {
        BayerRow row;
        row.above = rows.at(std::int64_t{y} - 1);
        row.row = rows.at(y);
        row.below = rows.at(std::int64_t{y} + 1);
        row.isGreenFirst = filter.at(0, y) == ColourFilter::Green;
        row.isRedRow = filter.at(row.isGreenFirst ? 1 : 0, y) == ColourFilter::Red;
        demosaicRow(row, samples.data(), image.width);
        storeRow(samples, frame, y);
    }
}

YuvOrder orderOf(const ZorPixelTypeRow& format)
{
    if (samplesPerPixel(format.code) == 4)
        return YuvOrder::Whole;
    return isLumaFirst(format) ? YuvOrder::LumaFirst : YuvOrder::DifferenceFirst;
}

void colourYuv(const _ZorImage& image, const ZorPixelTypeRow& format, Frame& frame)
{
    const UnpackRow unpack = unpackRowFor(format.code);
    Samples source(std::size_t{image.width} * samplesPerPixel(format.code));
    Samples samples(std::size_t{image.width} * 3);
    for (std::uint32_t y = 0; y < image.height; ++y) {
        unpack(image.data + std::size_t{y} * image.pitch, source.data(), image.width);
        colourYuvRow(source.data(), orderOf(format), pixelTypeSampleBits(format.code), samples.data(),
                     image.width);
        storeRow(samples, frame, y);
    }
}

} // namespace

bool hasHiddenColour(std::uint32_t pixelType)
{
    const ZorPixelTypeRow* format = exactPixelTypeRow(pixelType);
    if (!format)
        return false;
    const PixelFamily family = pixelTypeFamily(pixelType);
    return family == PixelFamily::Bayer || family == PixelFamily::Yuv;
}

std::optional<Frame> colourFrame(const _ZorImage& image)
{
    if (!hasHiddenColour(image.pixelType) || !hasNativeCodes(image))
        return std::nullopt;
    const ZorPixelTypeRow& format = *exactPixelTypeRow(image.pixelType);
    const bool isBayer = pixelTypeFamily(image.pixelType) == PixelFamily::Bayer;
    if (isBayer && (image.width < 2 || image.height < 2))
        return std::nullopt;

    const std::string name = "RGB" + std::to_string(pixelTypeSampleBits(image.pixelType));
    Frame frame;
    frame.width = image.width;
    frame.height = image.height;
    frame.pixelType = formatByName("colour", name).code;
    const std::uint64_t pitch = tightPitch(frame.pixelType, image.width);
    if (pitch > MaxFrameBytes / image.height)
        return std::nullopt;
    frame.pitch = static_cast<std::uint32_t>(pitch);
    frame.pixels.resize(std::size_t{frame.pitch} * frame.height);
    frame.depthSource = std::string("format ") + format.name;
    if (isBayer)
        demosaic(image, format, frame);
    else
        colourYuv(image, format, frame);
    return frame;
}

} // namespace zor
