#include "tests/platform/EncodedImage.h"

#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"
#include "tests/support/RecordOf.h"

#include <cmath>
#include <cstring>

_ZorImage recordFor(std::uint32_t code, std::uint32_t width, std::uint32_t height, std::uint32_t pitch,
                    std::uint32_t imageSize, std::uint8_t* data)
{
    _ZorImage record = recordOf(code, width, height, pitch, data, imageSize);
    record.depth = 8;
    record.channels = 1;
    return record;
}

EncodedImage::EncodedImage(const reference::PixelFormat& format, std::uint32_t width, std::uint32_t height,
                           const Scene& scene, std::uint32_t padding)
    : m_format(format)
    , m_pitch(format.rowBytes(width) + padding)
    , m_bytes(std::size_t{height - 1} * m_pitch + format.rowBytes(width))
    , m_record(recordFor(format.code, width, height, m_pitch, std::uint32_t(m_bytes.size()), m_bytes.data()))
{
    m_record.depth = format.heldBits;
    std::memset(m_bytes.data(), 0xFF, m_bytes.size());
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            for (std::uint32_t i = 0; i < format.samplesPerPixel; ++i)
                put(x, y, i, scene(format.component(x, y, i), x, y));
        }
    }
}

void EncodedImage::put(std::uint32_t x, std::uint32_t y, std::uint32_t index, std::uint32_t value)
{
    std::uint8_t* row = m_bytes.data() + std::size_t{y} * m_pitch;
    for (std::uint32_t bit = 0; bit < m_format.storedBits; ++bit) {
        const std::uint64_t place = m_format.bitPlace(x, index, bit);
        const auto mask = std::uint8_t(1 << place % 8);
        row[place / 8] = std::uint8_t((row[place / 8] & ~mask) | (value >> bit & 1 ? mask : 0));
    }
}

Converted::Converted(const _ZorImage& source, unsigned long target)
{
    // What the slot held before must not matter.
    _ZorImage other = {};
    m_record = &other;
    m_status = ZimConvert(&source, target, &m_record);
}

Converted::~Converted()
{
    ZorReleaseImage(&m_record);
}

std::uint32_t Converted::sample(std::uint32_t x, std::uint32_t y) const
{
    const std::uint8_t* row = m_record->data + std::size_t{y} * m_record->pitch;
    return m_record->pixelBits == 8 ? row[x] : row[2 * x] + 256U * row[2 * x + 1];
}

QString differences(const reference::PixelFormat& format, const _ZorImage& source, const MonoTarget& target,
                    const std::function<double(std::uint32_t x, std::uint32_t y)>& expected, double tolerance,
                    std::uint32_t border)
{
    const Converted result(source, target.code);
    const QString what = QString("%1 to %2, %3 x %4, pitch %5")
                             .arg(QString::fromStdString(format.name), target.name)
                             .arg(source.width)
                             .arg(source.height)
                             .arg(source.pitch);
    if (!result.isDone())
        return what + ": not converted";
    for (std::uint32_t y = border; y + border < source.height; ++y) {
        for (std::uint32_t x = border; x + border < source.width; ++x) {
            const double wanted = expected(x, y);
            const std::uint32_t actual = result.sample(x, y);
            if (!(std::abs(actual - wanted) <= tolerance))
                return what + QString(", column %1 row %2: source sample %3, expected %4 within %5, got %6")
                                  .arg(x)
                                  .arg(y)
                                  .arg(format.value(source.data + std::size_t{y} * source.pitch, x))
                                  .arg(wanted)
                                  .arg(tolerance)
                                  .arg(actual);
        }
    }
    return {};
}
