#include "host/camera/CameraError.h"
#include "host/camera/ReceivedImage.h"
#include "image/unpack/NativeCodes.h"
#include "tests/host/camera/LibraryFormats.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <random>

using namespace zor;

/// A camera's image becomes a frame.
class TestReceivedImage : public QObject
{
    Q_OBJECT

private slots:
    void pixelsAreCopied_data();
    void pixelsAreCopied();
    void packedSamplesKeepTheirValues_data();
    void packedSamplesKeepTheirValues();
    void paddingOfTheLastRowMayLack();
    void moreBytesThanTheRowsTakeAreLeft();
    void wrongImageIsRefused_data();
    void wrongImageIsRefused();
};

namespace {

std::vector<std::uint8_t> randomBytes(std::size_t count)
{
    std::mt19937 random(7);
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

std::uint32_t pfncOf(const QByteArray& name)
{
    for (const LibraryFormat& format : libraryFormats()) {
        if (name == format.name)
            return format.pfncCode;
    }
    return 0;
}

ReceivedImage imageOf(const std::vector<std::uint8_t>& bytes, std::uint32_t width, std::uint32_t height,
                      std::uint32_t pfncCode, std::uint32_t padding = 0)
{
    return {bytes.data(), bytes.size(), width, height, padding, pfncCode};
}

} // namespace

void TestReceivedImage::pixelsAreCopied_data()
{
    QTest::addColumn<quint32>("pfncCode");
    QTest::addColumn<quint32>("padding");
    for (const LibraryFormat& format : libraryFormats()) {
        if (pixelTypePackingClass(codeOf(format.name)) == PackingClass::Packed)
            continue; // has its own test
        QTest::newRow(format.name) << format.pfncCode << 0u;
        QTest::addRow("%s, padded", format.name) << format.pfncCode << 5u;
    }
}

void TestReceivedImage::pixelsAreCopied()
{
    QFETCH(quint32, pfncCode);
    QFETCH(quint32, padding);
    constexpr std::uint32_t width = 8;
    constexpr std::uint32_t height = 3;
    const std::uint32_t pitch = width * (pfncCode >> 16 & 0xFF) / 8 + padding;
    const std::vector<std::uint8_t> bytes = randomBytes(pitch * height);
    const Frame frame = frameOf(imageOf(bytes, width, height, pfncCode, padding));
    QCOMPARE(frame.width, width);
    QCOMPARE(frame.height, height);
    QCOMPARE(frame.pitch, pitch);
    QCOMPARE(frame.pixelType, codeOf(QByteArray(QTest::currentDataTag()).split(',').first().toStdString()));
    QCOMPARE(frame.pixels, bytes);
    QVERIFY(!frame.depthGuessed);
}

void TestReceivedImage::packedSamplesKeepTheirValues_data()
{
    QTest::addColumn<quint32>("pfncCode");
    QTest::addColumn<quint32>("bits");
    QTest::addColumn<quint32>("width");
    int rows = 0;
    for (const LibraryFormat& format : libraryFormats()) {
        const std::uint32_t code = codeOf(format.name);
        if (pixelTypePackingClass(code) != PackingClass::Packed)
            continue;
        for (const quint32 width : {2u, 6u, 7u})
            QTest::addRow("%s, %u columns", format.name, width)
                << format.pfncCode << pixelTypeSampleBits(code) << width;
        ++rows;
    }
    QCOMPARE(rows, 10);
}

/// GigE Vision: the first byte holds the high bits of the first sample, the third those of the second; of the
/// middle one the low half belongs to the first, the high half to the second, in both the low bits of it.
void TestReceivedImage::packedSamplesKeepTheirValues()
{
    QFETCH(quint32, pfncCode);
    QFETCH(quint32, bits);
    QFETCH(quint32, width);
    constexpr std::uint32_t height = 5;
    const std::uint32_t low = bits - 8;
    const std::uint32_t pitch = (width * 12 + 7) / 8;
    std::mt19937 random(bits + width);
    std::vector<std::uint32_t> samples;
    std::vector<std::uint8_t> bytes(std::size_t{pitch} * height);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            const std::uint32_t sample = random() & ((1u << bits) - 1);
            samples.push_back(sample);
            std::uint8_t* pair = bytes.data() + std::size_t{y} * pitch + x / 2 * 3;
            const std::uint32_t lowBits = sample & ((1u << low) - 1);
            pair[x % 2 == 0 ? 0 : 2] = static_cast<std::uint8_t>(sample >> low);
            pair[1] = static_cast<std::uint8_t>(pair[1] | lowBits << (x % 2 == 0 ? 0 : 4));
        }
    }
    const Frame frame = frameOf(imageOf(bytes, width, height, pfncCode));
    const _ZorImage record = frame.record();
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x)
            QCOMPARE(std::uint32_t{nativeCodes(record, x, y).codes[0]}, samples[y * width + x]);
    }
}

void TestReceivedImage::paddingOfTheLastRowMayLack()
{
    const std::vector<std::uint8_t> bytes = {1, 2, 3, 0, 4, 5, 6};
    const Frame frame = frameOf(imageOf(bytes, 3, 2, pfncOf("Mono8"), 1));
    QCOMPARE(frame.pixels, (std::vector<std::uint8_t>{1, 2, 3, 0, 4, 5, 6, 0}));
}

void TestReceivedImage::moreBytesThanTheRowsTakeAreLeft()
{
    const std::vector<std::uint8_t> bytes = {1, 2, 3, 4, 5, 6, 7};
    const Frame frame = frameOf(imageOf(bytes, 3, 2, pfncOf("Mono8")));
    QCOMPARE(frame.pixels, (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6}));
}

void TestReceivedImage::wrongImageIsRefused_data()
{
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint32>("padding");
    QTest::addColumn<quint32>("pfncCode");
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("words");
    const quint32 mono8 = pfncOf("Mono8");
    QTest::newRow("unknown format") << 4u << 4u << 0u << 0x02180021u << 48
                                    << "the camera sends the pixel format 0x02180021, which cannot be shown; "
                                       "choose another one";
    QTest::newRow("a byte too few") << 4u << 4u << 0u << mono8 << 15
                                    << "an image of 4x4 pixels came with 15 bytes and takes 16";
    QTest::newRow("a byte too few, padded")
        << 4u << 4u << 2u << mono8 << 21 << "an image of 4x4 pixels came with 21 bytes and takes 22";
    QTest::newRow("rows of 12 bits without gaps") << 5u << 4u << 0u << pfncOf("Mono12Packed") << 30
                                                  << "rows of 5 pixels of 12 bits do not end with a whole "
                                                     "byte; choose a width that is a multiple of 2, "
                                                     "or another pixel format";
    QTest::newRow("rows of 10 bits without gaps") << 6u << 4u << 0u << pfncOf("BayerRG10p") << 30
                                                  << "rows of 6 pixels of 10 bits do not end with a whole "
                                                     "byte; choose a width that is a multiple of 4, "
                                                     "or another pixel format";
    QTest::newRow("rows of 12 bits without gaps, and too few")
        << 5u << 4u << 0u << pfncOf("Mono12Packed") << 29
        << "an image of 5x4 pixels came with 29 bytes and takes 32";
    QTest::newRow("no columns") << 0u << 4u << 0u << mono8 << 16
                                << "an image of 0x4 pixels is beyond what a frame may have";
    QTest::newRow("no rows") << 4u << 0u << 0u << mono8 << 16
                             << "an image of 4x0 pixels is beyond what a frame may have";
    QTest::newRow("too wide") << 65536u << 1u << 0u << mono8 << 65536
                              << "an image of 65536x1 pixels is beyond what a frame may have";
    QTest::newRow("too high") << 1u << 65536u << 0u << mono8 << 65536
                              << "an image of 1x65536 pixels is beyond what a frame may have";
    QTest::newRow("too many bytes") << 4u << 65535u << 65536u << mono8 << 16
                                    << "an image of 4x65535 pixels is beyond what a frame may have";
}

void TestReceivedImage::wrongImageIsRefused()
{
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(quint32, padding);
    QFETCH(quint32, pfncCode);
    QFETCH(int, size);
    QFETCH(QString, words);
    const std::vector<std::uint8_t> bytes = randomBytes(static_cast<std::size_t>(size));
    try {
        frameOf(imageOf(bytes, width, height, pfncCode, padding));
        QFAIL("accepted");
    } catch (const CameraError& error) {
        QCOMPARE(QString(error.what()), words);
    }
}

QTEST_APPLESS_MAIN(TestReceivedImage)

#include "tst_received_image.moc"
