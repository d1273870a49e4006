#include "host/frames/encode/EncodeFrame.h"
#include "tests/reference/PixelFormats.h"
#include "tests/reference/Rec601.h"

#include <QtTest>

#include <random>

/// Scenes in each of the pixel formats, taken apart bit by bit again.
class TestFramesEncodeFormats : public QObject
{
    Q_OBJECT

private slots:
    void theFrameHoldsTheScene_data();
    void theFrameHoldsTheScene();
    void theExtremesAreFullScaleAndZero_data();
    void theExtremesAreFullScaleAndZero();

private:
    zor::SampleImage randomScene(std::uint32_t width, std::uint32_t height, std::uint32_t channels,
                                 std::uint32_t bits);
    void compare(const reference::PixelFormat& format, const zor::SampleImage& scene, std::uint32_t padding);
    void compareUnusedBits(const reference::PixelFormat& format, const zor::Frame& frame);
    std::mt19937 m_random{20260};
};

namespace {

constexpr std::uint8_t Poison = 0xA6;

void addFormats()
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i)
        QTest::newRow(reference::pixelFormats()[std::size_t(i)].name.c_str()) << i;
}

const reference::PixelFormat& fetchedFormat()
{
    QFETCH(int, format);
    return reference::pixelFormats()[std::size_t(format)];
}

reference::Colour colourAt(const zor::SampleImage& scene, std::uint32_t x, std::uint32_t y)
{
    const std::size_t first = (std::size_t(y) * scene.width + x) * scene.channels;
    const auto channel = [&](std::size_t c) {
        return double(scene.samples[first + (scene.channels == 1 ? 0 : c)]);
    };
    return {channel(0), channel(1), channel(2)};
}

QString place(const zor::Frame& frame, std::uint32_t x, std::uint32_t y)
{
    return QString("%1x%2 pitch %3, column %4 row %5")
        .arg(frame.width)
        .arg(frame.height)
        .arg(frame.pitch)
        .arg(x)
        .arg(y);
}

} // namespace

void TestFramesEncodeFormats::theFrameHoldsTheScene_data()
{
    addFormats();
}

void TestFramesEncodeFormats::theFrameHoldsTheScene()
{
    const reference::PixelFormat& format = fetchedFormat();
    for (const std::uint32_t width : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 33U, 64U}) {
        for (const std::uint32_t height : {1U, 2U, 5U}) {
            for (const std::uint32_t padding : {0U, 1U, 7U}) {
                for (const std::uint32_t channels : {1U, 3U}) {
                    compare(format, randomScene(width, height, channels, format.heldBits), padding);
                    if (QTest::currentTestFailed())
                        return;
                }
            }
        }
    }
}

/// Every fourth sample is 0 or full scale.
zor::SampleImage TestFramesEncodeFormats::randomScene(std::uint32_t width, std::uint32_t height,
                                                      std::uint32_t channels, std::uint32_t bits)
{
    zor::SampleImage scene = {width, height, channels, {}};
    for (std::size_t i = 0; i < std::size_t(width) * height * channels; ++i) {
        const auto extreme = m_random() % 8;
        const std::uint32_t sample = extreme == 0 ? 0 : extreme == 1 ? 0xFFFFFFFF : m_random();
        scene.samples.push_back(std::uint16_t(sample & ((1U << bits) - 1)));
    }
    return scene;
}

void TestFramesEncodeFormats::compare(const reference::PixelFormat& format, const zor::SampleImage& scene,
                                      std::uint32_t padding)
{
    const std::uint32_t pitch = format.rowBytes(scene.width) + padding;
    const zor::Frame frame = zor::encodeFrame(scene, format.code, {pitch, Poison});
    QCOMPARE(frame.width, scene.width);
    QCOMPARE(frame.height, scene.height);
    QCOMPARE(frame.pitch, pitch);
    QCOMPARE(frame.pixels.size(), std::size_t(pitch) * scene.height);
    const bool sharedChroma = format.cell[0].size() > format.samplesPerPixel && format.family == 5;
    for (std::uint32_t y = 0; y < scene.height; ++y) {
        const std::uint8_t* row = frame.pixels.data() + y * pitch;
        for (std::uint32_t x = 0; x < scene.width; ++x) {
            for (std::uint32_t i = 0; i < format.samplesPerPixel; ++i) {
                const char letter = format.component(x, y, i);
                const bool chroma = letter == 'U' || letter == 'V';
                const std::uint32_t from = chroma && sharedChroma ? x / 2 * 2 : x;
                const double expected =
                    reference::component(letter, colourAt(scene, from, y), format.heldBits);
                const std::uint32_t actual = format.value(row, x, i);
                if (std::abs(actual - expected) > 0.5 + 1e-6)
                    QFAIL(qPrintable(QString("%1, %2: expected %3, got %4")
                                         .arg(place(frame, x, y))
                                         .arg(letter)
                                         .arg(expected)
                                         .arg(actual)));
            }
        }
    }
    compareUnusedBits(format, frame);
}

/// Bits that belong to no sample are 0, bytes after a row are left to the caller, and no two bits of samples
/// share a place.
void TestFramesEncodeFormats::compareUnusedBits(const reference::PixelFormat& format, const zor::Frame& frame)
{
    const std::uint32_t rowBytes = format.rowBytes(frame.width);
    std::vector<bool> used(std::size_t(rowBytes) * 8);
    for (std::uint32_t x = 0; x < frame.width; ++x) {
        for (std::uint32_t i = 0; i < format.samplesPerPixel; ++i) {
            for (std::uint32_t bit = 0; bit < format.heldBits; ++bit) {
                const auto bitPlace = std::size_t(format.bitPlace(x, i, bit));
                if (used.at(bitPlace))
                    QFAIL(qPrintable(place(frame, x, 0) + ", two samples share a bit"));
                used[bitPlace] = true;
            }
        }
    }
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        const std::uint8_t* row = frame.pixels.data() + y * frame.pitch;
        for (std::size_t bit = 0; bit < used.size(); ++bit) {
            if (!used[bit] && (row[bit / 8] >> (bit % 8)) % 2 != 0)
                QFAIL(qPrintable(place(frame, 0, y) + QString(", bit %1 is set").arg(bit)));
        }
        for (std::uint32_t i = rowBytes; i < frame.pitch; ++i)
            QCOMPARE(row[i], Poison);
    }
}

void TestFramesEncodeFormats::theExtremesAreFullScaleAndZero_data()
{
    addFormats();
}

/// White and black in a format's samples; the chroma of both is the middle of the scale.
void TestFramesEncodeFormats::theExtremesAreFullScaleAndZero()
{
    const reference::PixelFormat& format = fetchedFormat();
    const std::uint32_t fullScale = (1U << format.heldBits) - 1;
    for (const std::uint32_t grey : {0U, fullScale}) {
        const std::vector<std::uint16_t> samples(15, std::uint16_t(grey));
        const zor::Frame frame = zor::encodeFrame({5, 3, 1, samples}, format.code);
        for (std::uint32_t y = 0; y < 3; ++y) {
            for (std::uint32_t x = 0; x < 5; ++x) {
                for (std::uint32_t i = 0; i < format.samplesPerPixel; ++i) {
                    const char letter = format.component(x, y, i);
                    const std::uint32_t expected = letter == 'U' || letter == 'V' ? (fullScale + 1) / 2
                                                   : letter == 'A'                ? fullScale
                                                                                  : grey;
                    QCOMPARE(format.value(frame.pixels.data() + y * frame.pitch, x, i), expected);
                }
            }
        }
    }
}

QTEST_APPLESS_MAIN(TestFramesEncodeFormats)
#include "tst_frames_encode_formats.moc"
