#include "host/frames/encode/EncodeFrame.h"
#include "tests/platform/EncodedImage.h"
#include "tests/platform/GuardedFrame.h"
#include "tests/reference/Rec601.h"

#include <QtTest>

#include <random>
#include <set>

/// What the encoder makes of a scene, converted: colours to the rounding of their luma.
class TestConvertEncoded : public QObject
{
    Q_OBJECT

private slots:
    void colouredPixelsHaveTheirLuma_data();
    void colouredPixelsHaveTheirLuma();
    void anyBytesAreReadByTheirBits_data();
    void anyBytesAreReadByTheirBits();

private:
    zor::Frame encoded(const reference::PixelFormat& format, const zor::SampleImage& scene,
                       std::uint32_t padding);
    std::uint16_t randomSample(const reference::PixelFormat& format);
    std::mt19937 m_random{815};
};

namespace {

using Sizes = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

/// One and two rows of up to 9 pixels, and larger ones, some of which are converted in several pieces.
Sizes sizes()
{
    Sizes all = {{33, 9}, {2049, 2}, {4100, 1}};
    for (std::uint32_t width = 1; width <= 9; ++width) {
        all.emplace_back(width, 1);
        all.emplace_back(width, 2);
    }
    return all;
}

void addFormats(const std::set<std::uint32_t>& families)
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i) {
        const reference::PixelFormat& format = reference::pixelFormats()[std::size_t(i)];
        if (families.count(format.family) > 0)
            QTest::newRow(format.name.c_str()) << i;
    }
}

const reference::PixelFormat& fetchedFormat()
{
    QFETCH(int, format);
    return reference::pixelFormats()[std::size_t(format)];
}

/// The luma of the samples that the row really holds: of red, green and blue, or the luma sample.
double lumaIn(const reference::PixelFormat& format, const std::uint8_t* row, std::uint32_t x)
{
    reference::Colour colour = {};
    for (std::uint32_t i = 0; i < format.samplesPerPixel; ++i) {
        const double value = format.value(row, x, i);
        switch (format.component(x, 0, i)) {
        case 'Y':
            return value;
        case 'R':
            colour.red = value;
            break;
        case 'G':
            colour.green = value;
            break;
        case 'B':
            colour.blue = value;
            break;
        default:
            break;
        }
    }
    return reference::luma(colour);
}

/// The first pixel, in any target, that is too far from the luma of the frame's samples.
QString lumaDifferences(const reference::PixelFormat& format, const zor::Frame& frame)
{
    const GuardedFrame source(frame, format);
    const double sourceFull = (1U << format.heldBits) - 1;
    for (const MonoTarget& target : MonoTargets) {
        const double full = (1U << target.bits) - 1;
        const auto expected = [&](std::uint32_t x, std::uint32_t y) {
            return lumaIn(format, source.row(y), x) * full / sourceFull;
        };
        const QString wrong = differences(format, source.record(), target, expected,
                                          reference::lumaTolerance(format.heldBits, target.bits));
        if (!wrong.isEmpty())
            return wrong;
    }
    return {};
}

} // namespace

zor::Frame TestConvertEncoded::encoded(const reference::PixelFormat& format, const zor::SampleImage& scene,
                                       std::uint32_t padding)
{
    const auto poison = std::uint8_t(m_random());
    return zor::encodeFrame(scene, format.code, {format.rowBytes(scene.width) + padding, poison});
}

/// Every fourth one is 0 or full scale.
std::uint16_t TestConvertEncoded::randomSample(const reference::PixelFormat& format)
{
    const auto extreme = m_random() % 8;
    const std::uint32_t value = extreme == 0 ? 0 : extreme == 1 ? 0xFFFFFFFF : std::uint32_t(m_random());
    return std::uint16_t(value & ((1U << format.heldBits) - 1));
}

void TestConvertEncoded::colouredPixelsHaveTheirLuma_data()
{
    addFormats({reference::Mono, reference::Rgb, reference::Yuv});
}

/// The luma in the frame is first compared with that of the scene.
void TestConvertEncoded::colouredPixelsHaveTheirLuma()
{
    const reference::PixelFormat& format = fetchedFormat();
    for (const auto& [width, height] : sizes()) {
        for (const std::uint32_t padding : {0U, 1U, 6U}) {
            zor::SampleImage scene = {width, height, 3, {}};
            for (std::uint32_t i = 0; i < 3 * width * height; ++i)
                scene.samples.push_back(randomSample(format));
            const zor::Frame frame = encoded(format, scene, padding);
            for (std::uint32_t i = 0; i < width * height; ++i) {
                const auto* pixel = &scene.samples[3 * i];
                const double expected =
                    reference::luma({double(pixel[0]), double(pixel[1]), double(pixel[2])});
                const std::uint8_t* row = frame.pixels.data() + std::size_t(i / width) * frame.pitch;
                const double actual = lumaIn(format, row, i % width);
                if (std::abs(actual - expected) > 0.5 + 1e-6)
                    QFAIL(qPrintable(QString("width %1, pixel %2: expected a luma of %3, encoded is %4")
                                         .arg(width)
                                         .arg(i)
                                         .arg(expected)
                                         .arg(actual)));
            }
            const QString wrong = lumaDifferences(format, frame);
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        }
    }
}

void TestConvertEncoded::anyBytesAreReadByTheirBits_data()
{
    addFormats({reference::Rgb, reference::Yuv});
}

/// Random bytes, also with bits above the depth of samples in wider fields.
void TestConvertEncoded::anyBytesAreReadByTheirBits()
{
    const reference::PixelFormat& format = fetchedFormat();
    for (const auto& [width, height] : sizes()) {
        zor::Frame frame;
        frame.width = width;
        frame.height = height;
        frame.pitch = format.rowBytes(width) + 3;
        frame.pixelType = format.code;
        for (std::size_t i = 0; i < std::size_t(frame.pitch) * height; ++i)
            frame.pixels.push_back(std::uint8_t(m_random() & (i % 4 < 2 ? 0xFF : 0x03)));
        const QString wrong = lumaDifferences(format, frame);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
}

QTEST_APPLESS_MAIN(TestConvertEncoded)
#include "tst_convert_encoded.moc"
