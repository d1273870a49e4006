#include "host/frames/encode/EncodeFrame.h"
#include "tests/platform/EncodedImage.h"
#include "tests/platform/GuardedFrame.h"
#include "tests/reference/Rec601.h"

#include <QtTest>

#include <random>

/// What the encoder makes of a scene, converted: greys exactly, colours in RGB and YUV formats to the
/// rounding of their luma.
class TestConvertEncoded : public QObject
{
    Q_OBJECT

private slots:
    void aUniformGreyIsExactAtEverySize_data();
    void aUniformGreyIsExactAtEverySize();
    void greyPixelsAreExact_data();
    void greyPixelsAreExact();
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

constexpr std::uint32_t Bayer = 3;
constexpr std::uint32_t TrueSense = 4;

using Sizes = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

/// From `smallest` to 9 pixels a side, and the larger ones.
Sizes sizesFrom(std::uint32_t smallest, std::uint32_t highest, Sizes sizes)
{
    for (std::uint32_t width = smallest; width <= 9; ++width) {
        for (std::uint32_t height = smallest; height <= highest; ++height)
            sizes.emplace_back(width, height);
    }
    return sizes;
}

bool isMosaic(const reference::PixelFormat& format)
{
    return format.family == Bayer || format.family == TrueSense;
}

void addFormats(bool mosaics)
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i) {
        const reference::PixelFormat& format = reference::pixelFormats()[std::size_t(i)];
        if (mosaics || !isMosaic(format))
            QTest::newRow(format.name.c_str()) << i;
    }
}

const reference::PixelFormat& fetchedFormat()
{
    QFETCH(int, format);
    return reference::pixelFormats()[std::size_t(format)];
}

/// The first pixel, in any target, that is not exactly the scene's grey.
QString greyDifferences(const reference::PixelFormat& format, const zor::Frame& frame,
                        const zor::SampleImage& scene)
{
    const GuardedFrame source(frame, format);
    for (const MonoTarget& target : MonoTargets) {
        const auto expected = [&](std::uint32_t x, std::uint32_t y) {
            const std::uint32_t grey = scene.samples[std::size_t(y) * scene.width + x];
            return reference::depthChanged(grey, format.heldBits, target.bits);
        };
        const QString wrong = differences(format, source.record(), target, expected, 0);
        if (!wrong.isEmpty())
            return wrong;
    }
    return {};
}

/// The luma of the samples that the row really holds: of red, green and blue, or the luma sample.
double lumaIn(const reference::PixelFormat& format, const std::uint8_t* line, std::uint32_t x)
{
    reference::Colour colour = {};
    for (std::uint32_t i = 0; i < format.samplesPerPixel; ++i) {
        const double value = format.value(line, x, i);
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
            return lumaIn(format, source.line(y), x) * full / sourceFull;
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
    return zor::encodeFrame(scene, format.code, {format.lineBytes(scene.width) + padding, poison});
}

/// Every fourth one is 0 or full scale.
std::uint16_t TestConvertEncoded::randomSample(const reference::PixelFormat& format)
{
    const auto extreme = m_random() % 8;
    const std::uint32_t value = extreme == 0 ? 0 : extreme == 1 ? 0xFFFFFFFF : std::uint32_t(m_random());
    return std::uint16_t(value & ((1U << format.heldBits) - 1));
}

void TestConvertEncoded::aUniformGreyIsExactAtEverySize_data()
{
    addFormats(true);
}

/// From 1 x 1 on, or 2 x 2 where each pixel has a colour filter of its own; the larger sizes are such that a
/// row or the image is converted in several pieces.
void TestConvertEncoded::aUniformGreyIsExactAtEverySize()
{
    const reference::PixelFormat& format = fetchedFormat();
    const std::uint32_t fullScale = (1U << format.heldBits) - 1;
    std::uint32_t run = 0;
    for (const auto& [width, height] :
         sizesFrom(isMosaic(format) ? 2 : 1, 9, {{31, 17}, {64, 48}, {1025, 3}, {1030, 67}, {2049, 2}})) {
        for (const std::uint32_t padding : {0U, 5U}) {
            const std::uint32_t greys[] = {0, fullScale, 1, randomSample(format), fullScale - 1};
            const auto grey = std::uint16_t(greys[run++ % 5]);
            const zor::SampleImage scene = {width, height, 1,
                                            std::vector<std::uint16_t>(std::size_t(width) * height, grey)};
            const QString wrong = greyDifferences(format, encoded(format, scene, padding), scene);
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        }
    }
}

void TestConvertEncoded::greyPixelsAreExact_data()
{
    addFormats(false);
}

/// Mono in every packing, grey in RGB and YUV: each pixel for itself.
void TestConvertEncoded::greyPixelsAreExact()
{
    const reference::PixelFormat& format = fetchedFormat();
    for (const auto& [width, height] : sizesFrom(1, 3, {{31, 17}, {2047, 1}, {2049, 2}, {4097, 1}})) {
        for (const std::uint32_t padding : {0U, 1U, 5U}) {
            zor::SampleImage scene = {width, height, 1, {}};
            for (std::uint32_t i = 0; i < width * height; ++i)
                scene.samples.push_back(randomSample(format));
            const QString wrong = greyDifferences(format, encoded(format, scene, padding), scene);
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        }
    }
}

void TestConvertEncoded::colouredPixelsHaveTheirLuma_data()
{
    addFormats(false);
}

/// The luma in the frame is first compared with that of the scene.
void TestConvertEncoded::colouredPixelsHaveTheirLuma()
{
    const reference::PixelFormat& format = fetchedFormat();
    for (const auto& [width, height] : sizesFrom(1, 2, {{33, 9}, {2049, 2}, {4100, 1}})) {
        for (const std::uint32_t padding : {0U, 1U, 6U}) {
            zor::SampleImage scene = {width, height, 3, {}};
            for (std::uint32_t i = 0; i < 3 * width * height; ++i)
                scene.samples.push_back(randomSample(format));
            const zor::Frame frame = encoded(format, scene, padding);
            for (std::uint32_t i = 0; i < width * height; ++i) {
                const auto* pixel = &scene.samples[3 * i];
                const double expected =
                    reference::luma({double(pixel[0]), double(pixel[1]), double(pixel[2])});
                const std::uint8_t* line = frame.pixels.data() + std::size_t(i / width) * frame.pitch;
                const double actual = lumaIn(format, line, i % width);
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
    addFormats(false);
}

/// Random bytes, also with bits above the depth of samples in wider fields.
void TestConvertEncoded::anyBytesAreReadByTheirBits()
{
    const reference::PixelFormat& format = fetchedFormat();
    for (const auto& [width, height] : sizesFrom(1, 2, {{33, 9}, {2049, 2}, {4100, 1}})) {
        zor::Frame frame;
        frame.width = width;
        frame.height = height;
        frame.pitch = format.lineBytes(width) + 3;
        frame.pixelType = format.code;
        for (std::size_t i = 0; i < std::size_t(frame.pitch) * height; ++i)
            frame.pixels.push_back(std::uint8_t(m_random() & (i % 4 < 2 ? 0xFF : 0x03)));
        const QString wrong = lumaDifferences(format, frame);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
}

QTEST_APPLESS_MAIN(TestConvertEncoded)
#include "tst_convert_encoded.moc"
