#include "host/frames/encode/EncodeFrame.h"
#include "tests/platform/EncodedImage.h"
#include "tests/platform/GuardedFrame.h"
#include "tests/reference/Rec601.h"

#include <QtTest>

#include <random>

/// Scenes through colour filters, Bayer and TrueSense: a luma for every pixel, of which the sensor saw one
/// channel.
class TestConvertFilters : public QObject
{
    Q_OBJECT

private slots:
    void aGreyRiseStaysARise_data();
    void aGreyRiseStaysARise();
    void aPatchOfColourHasItsLuma_data();
    void aPatchOfColourHasItsLuma();
    void aUniformColourHasItsLumaAtEverySize_data();
    void aUniformColourHasItsLumaAtEverySize();

private:
    std::vector<std::uint16_t> palette(std::uint32_t fullScale);
    std::mt19937 m_random{99};
};

namespace {

/// Pixels along an edge that may know too little of their surroundings.
constexpr std::uint32_t Border = 3;

void addMosaics()
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i) {
        const reference::PixelFormat& format = reference::pixelFormats()[std::size_t(i)];
        if (format.family == reference::Bayer || format.family == reference::TrueSense)
            QTest::newRow(format.name.c_str()) << i;
    }
}

const reference::PixelFormat& fetchedFormat()
{
    QFETCH(int, format);
    return reference::pixelFormats()[std::size_t(format)];
}

struct Rise
{
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t right; ///< levels per column
    std::uint32_t down;  ///< levels per row
};

/// A straight rise from 0 to almost full scale.
zor::SampleImage sceneOf(const Rise& rise, std::uint32_t fullScale)
{
    zor::SampleImage scene = {rise.width, rise.height, 1, {}};
    const std::uint32_t levels = (rise.width - 1) * rise.right + (rise.height - 1) * rise.down;
    // Codes per level. Where there are more levels than codes some levels share one.
    const double slope = levels <= fullScale ? fullScale / levels : double(fullScale) / levels;
    for (std::uint32_t y = 0; y < rise.height; ++y) {
        for (std::uint32_t x = 0; x < rise.width; ++x)
            scene.samples.push_back(std::uint16_t(slope * (rise.right * x + rise.down * y)));
    }
    return scene;
}

} // namespace

void TestConvertFilters::aGreyRiseStaysARise_data()
{
    addMosaics();
}

/// Within 2 codes, of the source when it has the coarser ones. The largest image is converted in pieces.
void TestConvertFilters::aGreyRiseStaysARise()
{
    const reference::PixelFormat& format = fetchedFormat();
    constexpr Rise Rises[] = {{7, 7, 1, 0},   {7, 7, 0, 1},    {7, 7, 1, 1},   {40, 30, 1, 0},
                              {31, 40, 0, 1}, {33, 29, 1, 1},  {16, 21, 3, 1}, {255, 8, 1, 0},
                              {8, 128, 1, 2}, {1040, 70, 1, 2}};
    for (const Rise& rise : Rises) {
        const zor::SampleImage scene = sceneOf(rise, (1U << format.heldBits) - 1);
        const GuardedFrame source(zor::encodeFrame(scene, format.code), format);
        for (const MonoTarget& target : MonoTargets) {
            const double code = target.bits > format.heldBits ? 1U << (target.bits - format.heldBits) : 1;
            const auto expected = [&](std::uint32_t x, std::uint32_t y) {
                const std::uint32_t grey = scene.samples[std::size_t(y) * rise.width + x];
                return reference::depthChanged(grey, format.heldBits, target.bits);
            };
            const QString wrong = differences(format, source.record(), target, expected, 2 * code, Border);
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        }
    }
}

/// Sixteen colours: the corners of the colour cube, and others.
std::vector<std::uint16_t> TestConvertFilters::palette(std::uint32_t fullScale)
{
    std::vector<std::uint16_t> channels;
    for (std::uint32_t colour = 0; colour < 16; ++colour) {
        for (std::uint32_t channel = 0; channel < 3; ++channel) {
            const std::uint32_t corner = (colour >> channel) % 2 * fullScale;
            channels.push_back(std::uint16_t(colour < 8 ? corner : m_random() & fullScale));
        }
    }
    return channels;
}

void TestConvertFilters::aPatchOfColourHasItsLuma_data()
{
    addMosaics();
}

/// Patches of 13 x 13 pixels, each of another colour, on every place of the colour cell. Away from their
/// edges the luma is that of the colour.
void TestConvertFilters::aPatchOfColourHasItsLuma()
{
    constexpr std::uint32_t Side = 13;
    const reference::PixelFormat& format = fetchedFormat();
    const std::uint32_t fullScale = (1U << format.heldBits) - 1;
    const std::vector<std::uint16_t> colours = palette(fullScale);
    zor::SampleImage scene = {4 * Side, 4 * Side, 3, {}};
    for (std::uint32_t y = 0; y < scene.height; ++y) {
        for (std::uint32_t x = 0; x < scene.width; ++x) {
            const auto first = colours.begin() + (y / Side * 4 + x / Side) * 3;
            scene.samples.insert(scene.samples.end(), first, first + 3);
        }
    }
    const auto nearEdge = [](std::uint32_t place) {
        return place % Side < Border || place % Side >= Side - Border;
    };
    for (const std::uint32_t padding : {0U, 3U}) {
        const zor::EncodeLayout layout = {format.rowBytes(scene.width) + padding, 0xFF};
        const GuardedFrame source(zor::encodeFrame(scene, format.code, layout), format);
        for (const MonoTarget& target : MonoTargets) {
            const Converted result(source.record(), target.code);
            QVERIFY(result.isDone());
            const double full = (1U << target.bits) - 1;
            for (std::uint32_t y = 0; y < scene.height; ++y) {
                for (std::uint32_t x = 0; x < scene.width; ++x) {
                    if (nearEdge(x) || nearEdge(y))
                        continue;
                    const auto* pixel = &scene.samples[(std::size_t(y) * scene.width + x) * 3];
                    const reference::Colour colour = {double(pixel[0]), double(pixel[1]), double(pixel[2])};
                    const double expected = reference::luma(colour) * full / fullScale;
                    const double actual = result.sample(x, y);
                    if (std::abs(actual - expected) > reference::lumaTolerance(format.heldBits, target.bits))
                        QFAIL(qPrintable(QString("to %1, column %2 row %3: red %4 green %5 blue %6, expected "
                                                 "%7, got %8")
                                             .arg(target.name)
                                             .arg(x)
                                             .arg(y)
                                             .arg(pixel[0])
                                             .arg(pixel[1])
                                             .arg(pixel[2])
                                             .arg(expected)
                                             .arg(actual)));
                }
            }
        }
    }
}

void TestConvertFilters::aUniformColourHasItsLumaAtEverySize_data()
{
    addMosaics();
}

/// From 2 x 2 on, up to the border: whatever is repeated there, it is the same colour.
void TestConvertFilters::aUniformColourHasItsLumaAtEverySize()
{
    const reference::PixelFormat& format = fetchedFormat();
    const std::uint32_t fullScale = (1U << format.heldBits) - 1;
    const std::vector<std::uint16_t> colours = palette(fullScale);
    std::size_t run = 0;
    for (std::uint32_t width = 2; width <= 9; ++width) {
        for (std::uint32_t height = 2; height <= 9; ++height) {
            const auto* pixel = &colours[run++ % 16 * 3];
            zor::SampleImage scene = {width, height, 3, {}};
            for (std::uint32_t i = 0; i < width * height; ++i)
                scene.samples.insert(scene.samples.end(), pixel, pixel + 3);
            const zor::EncodeLayout layout = {format.rowBytes(width) + height % 3, 0xFF};
            const GuardedFrame source(zor::encodeFrame(scene, format.code, layout), format);
            const double luma = reference::luma({double(pixel[0]), double(pixel[1]), double(pixel[2])});
            for (const MonoTarget& target : MonoTargets) {
                const double full = (1U << target.bits) - 1;
                const auto expected = [&](std::uint32_t, std::uint32_t) { return luma * full / fullScale; };
                const QString wrong = differences(format, source.record(), target, expected,
                                                  reference::lumaTolerance(format.heldBits, target.bits));
                QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
            }
        }
    }
}

QTEST_APPLESS_MAIN(TestConvertFilters)
#include "tst_convert_filters.moc"
