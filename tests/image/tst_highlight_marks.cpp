#include "image/HighLightProcessor.h"
#include "image/Pitch.h"
#include "image/ZorFormatFromCode.h"
#include "tests/image/TestRecords.h"
#include "tests/platform/GuardedBytes.h"

#include <QtTest>

#include <random>

namespace {

/// Bytes after an image that the image library keeps for marks.
constexpr std::size_t SpareBytes = 16;

/// A mark in the plainest words: every bright sample of the source, at its step, clears the two elements
/// after it in the copy. `copy` goes on after the image.
void mark(const _ZorImage& source, std::vector<std::uint8_t>& copy)
{
    if (source.packing == 0x1200 || source.packing == 0x1300)
        return;
    const std::size_t element = source.depth <= 8 ? 1 : 2;
    const std::size_t step = source.pixelBits / 8;
    for (std::size_t y = 0; y < source.height; ++y) {
        for (std::size_t x = 0; x < source.width; ++x) {
            const std::size_t at = y * source.pitch + x * step;
            unsigned value = source.data[at];
            if (element == 2)
                value += 256u * source.data[at + 1];
            if (value < 128)
                continue;
            std::memcpy(copy.data() + at, source.data + at, element);
            std::memset(copy.data() + at + element, 0, 2 * element);
        }
    }
}

} // namespace

/// The marks on bright pixels, format by format.
class TestHighlightMarks : public QObject
{
    Q_OBJECT

private slots:
    void rowsAreMarkedAsRequired_data();
    void rowsAreMarkedAsRequired();
    void theThresholdIs128AtEveryDepth_data();
    void theThresholdIs128AtEveryDepth();
    void signedBytesAreNeverMarked();
    void packedImagesAreCopies_data();
    void packedImagesAreCopies();
    void marksRunOnAfterARow_data();
    void marksRunOnAfterARow();
    void marksRunOnAfterTheImage_data();
    void marksRunOnAfterTheImage();
    void everyFormatAgreesWithTheReference_data();
    void everyFormatAgreesWithTheReference();
};

void TestHighlightMarks::rowsAreMarkedAsRequired_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVector<qint64>>("row");
    QTest::addColumn<QVector<qint64>>("expected");
    using V = QVector<qint64>;
    const auto add = [](const char* title, const char* name, const V& row, const V& expected) {
        QTest::newRow(title) << QByteArray(name) << row << expected;
    };
    add("one bright pixel clears two", "Mono8", V{10, 200, 10, 10, 10}, V{10, 200, 0, 0, 10});
    add("a run keeps its values", "Mono8", V{200, 200, 10, 10}, V{200, 200, 0, 0});
    add("a gap of one", "Mono8", V{200, 10, 200, 10, 10, 10}, V{200, 0, 200, 0, 0, 10});
    add("nothing bright", "Mono8", V{127, 0, 127}, V{127, 0, 127});
    add("10 bits", "Mono10", V{127, 128, 5, 6, 7}, V{127, 128, 0, 0, 7});
    add("12 bits, nearly black", "Mono12", V{100, 130, 99, 98, 97}, V{100, 130, 0, 0, 97});
    add("14 bits", "Mono14", V{16383, 1, 2, 3}, V{16383, 0, 0, 3});
    add("16 bits", "Mono16", V{0, 65535, 1, 2, 3}, V{0, 65535, 0, 0, 3});
    add("red alone is looked at", "RGB8", V{100, 255, 255, 200, 10, 10}, V{100, 255, 255, 200, 0, 0});
    add("in BGR it is blue", "BGR8", V{100, 255, 255, 200, 10, 10}, V{100, 255, 255, 200, 0, 0});
    add("colours of one pixel stay in it", "RGB8", V{200, 10, 10, 20, 30, 40}, V{200, 0, 0, 20, 30, 40});
    add("alpha stays, RGBa8", "RGBa8", V{200, 10, 10, 77, 1, 2, 3, 88}, V{200, 0, 0, 77, 1, 2, 3, 88});
    add("alpha stays, BGRa8", "BGRa8", V{200, 10, 10, 77, 1, 2, 3, 88}, V{200, 0, 0, 77, 1, 2, 3, 88});
    add("RGB of 12 bits", "RGB12", V{127, 4095, 4095, 128, 9, 9}, V{127, 4095, 4095, 128, 0, 0});
    add("BGR of 16 bits", "BGR16", V{60000, 1, 2, 3, 4, 5}, V{60000, 0, 0, 3, 4, 5});
}

void TestHighlightMarks::rowsAreMarkedAsRequired()
{
    QFETCH(QByteArray, name);
    QFETCH(QVector<qint64>, row);
    const zor::FormatBlock format = ZorFormatFromCode(codeOf(name.constData()));
    const int sampleBytes = format.depth <= 8 ? 1 : 2;
    const std::uint32_t samples = format.pixelBits / (8 * static_cast<std::uint32_t>(sampleBytes));
    // After the row the marks of its last pixels have room.
    OneRow source(format, static_cast<std::uint32_t>(row.size()) / samples, row + QVector<qint64>{0, 0},
                  sampleBytes);
    const std::vector<std::uint8_t> before = source.bytes;
    HighLightProcessor processor;
    QCOMPARE(processor.processImage(&source.image), 0);
    QTEST(samplesOf(*processor.outputImage(), row.size(), sampleBytes), "expected");
    QVERIFY(source.bytes == before);
    QVERIFY(processor.outputImage()->data != source.image.data);
}

void TestHighlightMarks::theThresholdIs128AtEveryDepth_data()
{
    QTest::addColumn<uint>("depth");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<int>("sampleBytes");
    QTest::addColumn<qlonglong>("value");
    QTest::addColumn<bool>("isMarked");
    const auto add = [](const char* name, uint depth, bool isSigned, int sampleBytes, qint64 value,
                        bool isMarked) {
        QTest::newRow(name) << depth << isSigned << sampleBytes << qlonglong(value) << isMarked;
    };
    add("8 bits, below", 8, false, 1, 127, false);
    add("8 bits, at it", 8, false, 1, 128, true);
    add("8 bits, full", 8, false, 1, 255, true);
    add("10 bits, below", 10, false, 2, 127, false);
    add("10 bits, at it", 10, false, 2, 128, true);
    add("10 bits, full", 10, false, 2, 1023, true);
    add("12 bits, below", 12, false, 2, 127, false);
    add("12 bits, at it", 12, false, 2, 128, true);
    add("12 bits, full", 12, false, 2, 4095, true);
    add("14 bits, below", 14, false, 2, 127, false);
    add("14 bits, at it", 14, false, 2, 128, true);
    add("14 bits, full", 14, false, 2, 16383, true);
    add("16 bits, below", 16, false, 2, 127, false);
    add("16 bits, at it", 16, false, 2, 128, true);
    add("16 bits, full", 16, false, 2, 65535, true);
    add("signed 16 bits, below", 16, true, 2, 127, false);
    add("signed 16 bits, at it", 16, true, 2, 128, true);
    add("signed 16 bits, highest", 16, true, 2, 32767, true);
    add("signed 16 bits, lowest", 16, true, 2, -32768, false);
    add("signed 16 bits, -1", 16, true, 2, -1, false);
    add("32 bits, below", 32, false, 4, 127, false);
    add("32 bits, at it", 32, false, 4, 128, true);
    add("32 bits, highest without the top bit", 32, false, 4, 0x7FFFFFFF, true);
    add("32 bits, the top bit counts as a sign", 32, false, 4, 0x80000000, false);
    add("32 bits, full", 32, false, 4, 0xFFFFFFFF, false);
    add("signed 32 bits, at it", 32, true, 4, 128, true);
    add("signed 32 bits, lowest", 32, true, 4, -2147483648LL, false);
    add("24 bits", 24, false, 4, 0xFFFFFF, true);
    add("signed 8 bits, highest", 8, true, 1, 127, false);
    add("signed 8 bits, lowest", 8, true, 1, -128, false);
}

void TestHighlightMarks::theThresholdIs128AtEveryDepth()
{
    QFETCH(uint, depth);
    QFETCH(bool, isSigned);
    QFETCH(int, sampleBytes);
    QFETCH(qlonglong, value);
    QFETCH(bool, isMarked);
    OneRow source(plainFormat(depth, isSigned, static_cast<std::uint32_t>(8 * sampleBytes)), 5,
                  {1, value, 2, 3, 4}, sampleBytes);
    HighLightProcessor processor;
    processor.processImage(&source.image);
    const QVector<qint64> expected =
        isMarked ? QVector<qint64>{1, value, 0, 0, 4} : QVector<qint64>{1, value, 2, 3, 4};
    QCOMPARE(samplesOf(*processor.outputImage(), 5, sampleBytes), expected);
}

void TestHighlightMarks::signedBytesAreNeverMarked()
{
    QVector<qint64> all;
    for (int value = -128; value < 128; ++value)
        all.append(value);
    OneRow source(plainFormat(8, true, 8), 256, all, 1);
    HighLightProcessor processor;
    processor.processImage(&source.image);
    QCOMPARE(samplesOf(*processor.outputImage(), 256, 1), all);
}

void TestHighlightMarks::packedImagesAreCopies_data()
{
    QTest::addColumn<uint>("code");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        if ((row.code & 0xFE00) == 0x1200)
            QTest::newRow(row.name) << row.code;
    }
}

void TestHighlightMarks::packedImagesAreCopies()
{
    QFETCH(uint, code);
    for (const std::uint32_t width : {1u, 2u, 7u, 8u}) {
        const std::uint32_t pitch = (width * 12 + 7) / 8 + 2;
        std::vector<std::uint8_t> bytes(pitch * 256);
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<std::uint8_t>(255 - i / pitch);
        const _ZorImage source = recordOf(code, width, 256, pitch, bytes.data(), bytes.size());
        HighLightProcessor processor;
        processor.processImage(&source);
        QCOMPARE(std::memcmp(processor.outputImage()->data, bytes.data(), bytes.size()), 0);
    }
}

void TestHighlightMarks::marksRunOnAfterARow_data()
{
    QTest::addColumn<uint>("pitch");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("expected");
    const auto add = [](const char* name, uint pitch, const char* bytes, const char* expected) {
        QTest::newRow(name) << pitch << QByteArray::fromHex(bytes) << QByteArray::fromHex(expected);
    };
    // Two rows of three bytes.
    add("into the next row", 3, "01 02 C8 03 04 05", "01 02 C8 00 00 05");
    add("one of them into the next row", 3, "01 C8 03 04 05 06", "01 C8 00 00 05 06");
    add("a bright start of the next row stays", 3, "01 02 C8 D2 04 05", "01 02 C8 D2 00 00");
    add("into padding", 5, "01 02 C8 55 66 04 05 06 77 88", "01 02 C8 00 00 04 05 06 77 88");
    add("through padding into the next row", 4, "01 02 C8 55 04 05 06 77", "01 02 C8 00 00 05 06 77");
    add("bright padding is no pixel", 5, "01 02 03 FF FF 04 05 06 FF FF", "01 02 03 FF FF 04 05 06 FF FF");
}

void TestHighlightMarks::marksRunOnAfterARow()
{
    QFETCH(uint, pitch);
    QFETCH(QByteArray, bytes);
    const _ZorImage source =
        recordOf(codeOf("Mono8"), 3, 2, pitch, reinterpret_cast<std::uint8_t*>(bytes.data()),
                 static_cast<std::size_t>(bytes.size()));
    HighLightProcessor processor;
    processor.processImage(&source);
    const _ZorImage* output = processor.outputImage();
    QTEST(QByteArray(reinterpret_cast<const char*>(output->data), int(output->imageSize)), "expected");
}

void TestHighlightMarks::marksRunOnAfterTheImage_data()
{
    QTest::addColumn<QVector<qint64>>("row");
    QTest::addColumn<int>("sampleBytes");
    QTest::addColumn<int>("cleared");
    using V = QVector<qint64>;
    QTest::newRow("no bright pixel at the end") << V{200, 1, 2} << 1 << 0;
    QTest::newRow("the last but one of 8 bits") << V{1, 200, 2} << 1 << 1;
    QTest::newRow("the last of 8 bits") << V{1, 2, 200} << 1 << 2;
    QTest::newRow("the last but one of 16 bits") << V{1, 200, 2} << 2 << 2;
    QTest::newRow("the last of 16 bits") << V{1, 2, 200} << 2 << 4;
    QTest::newRow("the last of 32 bits") << V{1, 2, 200} << 4 << 8;
}

// Up to two elements, in the bytes that the image library keeps after each image.
void TestHighlightMarks::marksRunOnAfterTheImage()
{
    QFETCH(QVector<qint64>, row);
    QFETCH(int, sampleBytes);
    QFETCH(int, cleared);
    OneRow source(plainFormat(static_cast<std::uint32_t>(8 * sampleBytes), false,
                              static_cast<std::uint32_t>(8 * sampleBytes)),
                  3, row, sampleBytes);
    HighLightProcessor processor;
    processor.processImage(&source.image);
    // The next image of the same size is copied into the same block.
    std::uint8_t* const behind = processor.outputImage()->data + source.image.imageSize;
    std::memset(behind, 0x55, SpareBytes);
    processor.processImage(&source.image);
    QCOMPARE(processor.outputImage()->data + source.image.imageSize, behind);
    QByteArray expected(int(SpareBytes), '\x55');
    expected.replace(0, cleared, QByteArray(cleared, '\0'));
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(behind), int(SpareBytes)), expected);
}

void TestHighlightMarks::everyFormatAgreesWithTheReference_data()
{
    QTest::addColumn<uint>("code");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        QTest::newRow(row.name) << row.code;
}

// The source ends where its memory ends.
void TestHighlightMarks::everyFormatAgreesWithTheReference()
{
    QFETCH(uint, code);
    std::mt19937 random(code);
    HighLightProcessor processor;
    for (int round = 0; round < 60; ++round) {
        const std::uint32_t width = 1 + random() % 9;
        const std::uint32_t height = 1 + random() % 5;
        const auto pitch = static_cast<std::uint32_t>(zor::tightPitch(code, width)) + random() % 4;
        const std::size_t size = zor::neededBytes(code, width, height, pitch);
        const GuardedBytes bytes(size);
        for (std::size_t i = 0; i < size; ++i)
            bytes.data()[i] = static_cast<std::uint8_t>(random() % 3 == 0 ? random() : random() % 140);
        const _ZorImage source = recordOf(code, width, height, pitch, bytes.data(), size);
        std::vector<std::uint8_t> expected(bytes.data(), bytes.data() + size);
        expected.resize(size + SpareBytes);
        mark(source, expected);
        processor.processImage(&source);
        const _ZorImage* output = processor.outputImage();
        for (std::size_t i = 0; i < size; ++i) {
            QVERIFY2(output->data[i] == expected[i],
                     qPrintable(QString("%1 x %2, pitch %3, byte %4: %5, expected %6, was %7")
                                    .arg(width)
                                    .arg(height)
                                    .arg(pitch)
                                    .arg(i)
                                    .arg(output->data[i])
                                    .arg(expected[i])
                                    .arg(bytes.data()[i])));
        }
    }
}

QTEST_APPLESS_MAIN(TestHighlightMarks)
#include "tst_highlight_marks.moc"
