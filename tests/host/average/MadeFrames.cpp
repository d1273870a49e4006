#include "tests/host/average/MadeFrames.h"

#include "tests/support/FormatCodes.h"

#include <QtTest>

zor::Frame randomFrame(const reference::PixelFormat& format, std::uint32_t width, std::uint32_t height,
                       std::uint32_t padding, std::mt19937& random)
{
    zor::Frame frame;
    frame.width = width;
    frame.height = height;
    frame.pitch = format.rowBytes(width) + padding;
    frame.pixelType = format.code;
    for (std::size_t i = 0; i < std::size_t{height} * frame.pitch - padding; ++i)
        frame.pixels.push_back(static_cast<std::uint8_t>(random()));
    return frame;
}

zor::Frame frameOf(const char* format, std::uint32_t width, std::uint32_t height,
                   const std::vector<std::uint32_t>& samples)
{
    zor::Frame frame;
    frame.width = width;
    frame.height = height;
    frame.pixelType = codeOf(format);
    const std::size_t bytes = zor::pixelTypeSampleBits(frame.pixelType) == 8 ? 1 : 2;
    for (const std::uint32_t sample : samples)
        for (std::size_t i = 0; i < bytes; ++i)
            frame.pixels.push_back(static_cast<std::uint8_t>(sample >> (8 * i)));
    frame.pitch = static_cast<std::uint32_t>(frame.pixels.size() / height);
    return frame;
}

std::uint32_t sampleOf(const reference::PixelFormat& format, const zor::Frame& frame, std::uint32_t x,
                       std::uint32_t y, std::uint32_t sample)
{
    return format.value(frame.pixels.data() + std::size_t{y} * frame.pitch, x, sample);
}

QString difference(const reference::PixelFormat& format, const zor::Frame& frame, const SampleAt& expected)
{
    const std::uint32_t pitch = format.rowBytes(frame.width);
    if (frame.pixelType != format.code || frame.pitch != pitch ||
        frame.pixels.size() != std::size_t{pitch} * frame.height)
        return QString("format %1, pitch %2, %3 bytes")
            .arg(frame.pixelType)
            .arg(frame.pitch)
            .arg(frame.pixels.size());
    std::vector<std::uint8_t> bytes(frame.pixels.size());
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        for (std::uint32_t x = 0; x < frame.width; ++x) {
            for (std::uint32_t i = 0; i < format.samplesPerPixel; ++i) {
                const std::uint32_t value = expected(x, y, i);
                for (std::uint32_t bit = 0; bit < format.heldBits; ++bit) {
                    const std::uint64_t place = std::uint64_t{y} * pitch * 8 + format.bitPlace(x, i, bit);
                    bytes[place / 8] |= static_cast<std::uint8_t>((value >> bit & 1) << (place % 8));
                }
                const std::uint32_t actual = sampleOf(format, frame, x, y, i);
                if (actual != value)
                    return QString("%1 x %2, column %3, row %4, sample %5: %6 and not %7")
                        .arg(frame.width)
                        .arg(frame.height)
                        .arg(x)
                        .arg(y)
                        .arg(i)
                        .arg(actual)
                        .arg(value);
            }
        }
    }
    return bytes == frame.pixels ? QString() : QString("bits that belong to no sample are set");
}

void addFormats()
{
    QTest::addColumn<int>("format");
    for (std::size_t i = 0; i < reference::pixelFormats().size(); ++i)
        QTest::newRow(reference::pixelFormats()[i].name.c_str()) << int(i);
}

const reference::PixelFormat& fetchedFormat()
{
    QFETCH(int, format);
    return reference::pixelFormats()[std::size_t(format)];
}
