#include "tests/host/frames/FrameFiles.h"
#include "tests/host/frames/MakePng.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <png.h>

/// PNG files in colour, as samples or by a palette.
class TestFramesPngColour : public QObject
{
    Q_OBJECT

private slots:
    void samplesAreExact_data();
    void samplesAreExact();
    void significantBitsTellTheDepth_data();
    void significantBitsTellTheDepth();
    void theLargestSampleTellsTheDepth_data();
    void theLargestSampleTellsTheDepth();
    void anAskedDepthOverrides();
    void aSampleAboveTheDepthIsNamed();
    void aPaletteGivesItsColours_data();
    void aPaletteGivesItsColours();
    void aColourThatThePaletteDoesNotHaveIsNamed();
    void whatIsDeclaredTransparentIsAPixelLikeAnyOther_data();
    void whatIsDeclaredTransparentIsAPixelLikeAnyOther();
    void aPaletteBesideColoursOnlyAdvises();
    void hostileSizesAreRefused_data();
    void hostileSizesAreRefused();
    void everyTruncationIsAnError_data();
    void everyTruncationIsAnError();

private:
    FrameFiles m_files;
};

Q_DECLARE_METATYPE(PngContent)

namespace {

PngContent colour(int bits, const QList<int>& samples, quint32 width, int significantBits = 0)
{
    PngContent content;
    content.width = width;
    content.height = quint32(samples.size()) / 3 / width;
    content.bits = bits;
    content.colorType = PNG_COLOR_TYPE_RGB;
    content.samples = samples;
    content.significantBits = significantBits;
    return content;
}

/// An image of several passes and filters.
PngContent large(int bits, quint32 width, quint32 height, bool interlaced)
{
    QList<int> samples;
    for (int i = 0; i < int(width * height * 3); ++i)
        samples.append((i * 7919 + 1) % (bits == 8 ? 256 : 65536));
    PngContent content = colour(bits, samples, width);
    content.interlaced = interlaced;
    return content;
}

/// An image by a palette that is full, with every index in it.
PngContent byPalette(int bits, bool interlaced)
{
    PngContent content;
    content.width = 19;
    content.height = 15;
    content.bits = bits;
    content.colorType = PNG_COLOR_TYPE_PALETTE;
    content.interlaced = interlaced;
    const int colours = 1 << bits;
    for (int i = 0; i < colours; ++i)
        content.palette.append(quint32(i * 1234567 + 0xFF0102) & 0xFFFFFF);
    for (int i = 0; i < 19 * 15; ++i)
        content.samples.append(i % colours);
    return content;
}

QList<int> coloursOf(const PngContent& content)
{
    QList<int> samples;
    for (const int index : content.samples) {
        const quint32 entry = content.palette[index];
        samples << int(entry >> 16) << int(entry >> 8 & 0xFF) << int(entry & 0xFF);
    }
    return samples;
}

} // namespace

void TestFramesPngColour::samplesAreExact_data()
{
    QTest::addColumn<PngContent>("content");
    for (const int bits : {8, 16}) {
        for (const bool interlaced : {false, true}) {
            const char* how = interlaced ? ", interlaced" : "";
            QTest::addRow("%d bits%s", bits, how) << large(bits, 19, 13, interlaced);
            QTest::addRow("%d bits, one pixel%s", bits, how) << large(bits, 1, 1, interlaced);
            QTest::addRow("%d bits, one column%s", bits, how) << large(bits, 1, 9, interlaced);
        }
    }
}

void TestFramesPngColour::samplesAreExact()
{
    QFETCH(PngContent, content);
    const zor::Frame frame = m_files.read(makePng(content));
    QCOMPARE(frame.width, content.width);
    QCOMPARE(frame.height, content.height);
    QCOMPARE(frame.pitch, content.width * quint32(content.bits) * 3 / 8);
    QCOMPARE(samplesOf(frame), content.samples);
}

void TestFramesPngColour::significantBitsTellTheDepth_data()
{
    QTest::addColumn<PngContent>("content");
    QTest::addColumn<QList<int>>("samples");
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<QString>("source");
    const auto add = [](const char* name, const PngContent& content, const QList<int>& samples,
                        const char* format, const char* source) {
        QTest::newRow(name) << content << samples << codeOf(format) << source;
    };
    add("10 of 16, as they are", colour(16, {0, 7, 1023}, 1, 10), {0, 7, 1023}, "RGB10", "sBIT 10");
    add("12 of 16, as they are", colour(16, {0, 7, 1}, 1, 12), {0, 7, 1}, "RGB12", "sBIT 12");
    add("14 of 16 make depth 16", colour(16, {0, 7, 16383}, 1, 14), {0, 7, 16383}, "RGB16", "sBIT 14");
    add("16 of 16", colour(16, {0, 7, 1}, 1, 16), {0, 7, 1}, "RGB16", "sBIT 16");
    add("12 of 16, brought up in every channel", colour(16, {0, 0xABCA, 0xFFFF}, 1, 12), {0, 0xABC, 0xFFF},
        "RGB12", "sBIT 12, in the high bits of 16");
    add("3 of 8, brought up", colour(8, {0, 0xB6, 0xFF}, 1, 3), {0, 5, 7}, "RGB8",
        "sBIT 3, in the high bits of 8");
    PngContent unequal = colour(16, {0, 700, 31}, 1, 10);
    unequal.significantBlue = 5;
    add("bits that differ do not count", unequal, {0, 700, 31}, "RGB10", "largest sample 700");
    PngContent five = colour(8, {0xFF, 0xFF, 0xFF}, 1, 6);
    five.significantBlue = 5;
    add("bits that differ bring nothing down", five, {255, 255, 255}, "RGB8", "largest sample 255");
}

void TestFramesPngColour::significantBitsTellTheDepth()
{
    QFETCH(PngContent, content);
    const zor::Frame frame = m_files.read(makePng(content));
    QTEST(samplesOf(frame), "samples");
    QTEST(frame.pixelType, "pixelType");
    QTEST(QString::fromStdString(frame.depthSource), "source");
}

void TestFramesPngColour::theLargestSampleTellsTheDepth_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("largest");
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<bool>("guessed");
    const auto add = [](int bits, int largest, const char* format, bool guessed) {
        QTest::addRow("%d in %d bits", largest, bits) << bits << largest << codeOf(format) << guessed;
    };
    add(8, 0, "RGB8", false);
    add(8, 255, "RGB8", false);
    add(16, 255, "RGB8", true);
    add(16, 256, "RGB10", true);
    add(16, 1024, "RGB12", true);
    add(16, 4096, "RGB16", false);
    add(16, 65535, "RGB16", false);
}

void TestFramesPngColour::theLargestSampleTellsTheDepth()
{
    QFETCH(int, bits);
    QFETCH(int, largest);
    // In every channel by turns.
    for (int channel = 0; channel < 3; ++channel) {
        QList<int> samples{0, 0, 0, 0, 0, 0};
        samples[3 + channel] = largest;
        const zor::Frame frame = m_files.read(makePng(colour(bits, samples, 1)));
        QTEST(frame.pixelType, "pixelType");
        QTEST(frame.depthGuessed, "guessed");
        QCOMPARE(samplesOf(frame), samples);
        QCOMPARE(QString::fromStdString(frame.depthSource), QString("largest sample %1").arg(largest));
    }
}

void TestFramesPngColour::anAskedDepthOverrides()
{
    zor::FrameOptions options;
    options.depth = 12;
    const zor::Frame frame = m_files.read(makePng(colour(8, {1, 2, 255}, 1)), options);
    QCOMPARE(frame.pixelType, codeOf("RGB12"));
    QCOMPARE(samplesOf(frame), (QList<int>{1, 2, 255}));
    QCOMPARE(QString::fromStdString(frame.depthSource), QString("--depth 12"));
}

void TestFramesPngColour::aSampleAboveTheDepthIsNamed()
{
    zor::FrameOptions options;
    options.depth = 10;
    const PngContent content = colour(16, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 1024, 11}, 2);
    const QString text = m_files.error(makePng(content), options);
    QVERIFY2(
        text.contains("the sample 1024 at column 1, row 1 (from 0) is above 1023, the limit of depth 10"),
        qPrintable(text));
}

void TestFramesPngColour::aPaletteGivesItsColours_data()
{
    QTest::addColumn<PngContent>("content");
    for (const int bits : {1, 2, 4, 8}) {
        QTest::addRow("%d bits", bits) << byPalette(bits, false);
        QTest::addRow("%d bits, interlaced", bits) << byPalette(bits, true);
    }
    PngContent greys = byPalette(2, false);
    greys.palette = {0x000000, 0x555555, 0xAAAAAA, 0xFFFFFF};
    QTest::newRow("nothing but greys") << greys;
    PngContent bits = byPalette(8, false);
    bits.significantBits = 5;
    QTest::newRow("significant bits of the palette's colours do not count") << bits;
}

void TestFramesPngColour::aPaletteGivesItsColours()
{
    QFETCH(PngContent, content);
    const zor::Frame frame = m_files.read(makePng(content));
    QCOMPARE(frame.pixelType, codeOf("RGB8"));
    QCOMPARE(frame.width, 19U);
    QCOMPARE(frame.height, 15U);
    QCOMPARE(samplesOf(frame), coloursOf(content));
    QVERIFY(!frame.depthGuessed);
}

void TestFramesPngColour::aColourThatThePaletteDoesNotHaveIsNamed()
{
    for (const int bits : {2, 8}) {
        PngContent content = byPalette(bits, false);
        content.palette = {1, 2, 3};
        for (int& index : content.samples)
            index %= 3;
        QCOMPARE(m_files.error(makePng(content)), QString());
        content.samples[19 + 4] = 3;
        const QString text = m_files.error(makePng(content));
        QVERIFY2(text.endsWith(": the pixel at column 4, row 1 (from 0) has colour 3 of a palette of 3 (from "
                               "0); write or copy the file again"),
                 qPrintable(text));
    }
}

void TestFramesPngColour::whatIsDeclaredTransparentIsAPixelLikeAnyOther_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<int>>("samples");
    const QByteArray entry = pngChunk("tRNS", QByteArray::fromHex("000100020003"));
    QTest::newRow("a colour") << pngWithChunks(makePng(colour(8, {1, 2, 3, 4, 5, 6}, 2)), entry)
                              << QList<int>{1, 2, 3, 4, 5, 6};
    PngContent content = byPalette(1, false);
    QByteArray bytes = makePng(content);
    // The entry belongs after the palette, whose chunk takes 12 bytes and 3 for a colour.
    const int place = bytes.indexOf("PLTE") - 4 + 12 + 6;
    bytes.insert(place, pngChunk("tRNS", QByteArray(2, '\0')));
    QTest::newRow("the colours of a palette") << bytes << coloursOf(content);
}

void TestFramesPngColour::whatIsDeclaredTransparentIsAPixelLikeAnyOther()
{
    QFETCH(QByteArray, bytes);
    QTEST(samplesOf(m_files.read(bytes)), "samples");
}

void TestFramesPngColour::aPaletteBesideColoursOnlyAdvises()
{
    PngContent content = large(8, 7, 5, false);
    content.palette = {1, 2, 3};
    QCOMPARE(samplesOf(m_files.read(makePng(content))), content.samples);
}

void TestFramesPngColour::hostileSizesAreRefused_data()
{
    QTest::addColumn<PngContent>("content");
    QTest::addColumn<quint32>("height"); // at a width of 65535
    QTest::addColumn<QString>("says");
    const QString limit = "with %1 bytes a line is above the limit of 4294967295 bytes";
    const QString claim = "its header asks for %1 bytes of samples, which takes a file of at least";
    const PngContent eight = colour(8, {0, 1, 2}, 1);
    const PngContent sixteen = colour(16, {0, 1, 2}, 1);
    PngContent palette = byPalette(1, false);
    QTest::newRow("8 bits above the limit") << eight << 21846U << limit.arg(3 * 65535);
    QTest::newRow("8 bits below it") << eight << 21845U << claim.arg(4294836225U);
    QTest::newRow("16 bits above the limit") << sixteen << 10923U << limit.arg(6 * 65535);
    QTest::newRow("16 bits below it") << sixteen << 10922U << claim.arg(4294639620U);
    QTest::newRow("a palette above the limit") << palette << 21846U << limit.arg(3 * 65535);
    QTest::newRow("a palette below it") << palette << 21845U << claim.arg(8192U * 21845U);
}

void TestFramesPngColour::hostileSizesAreRefused()
{
    QFETCH(PngContent, content);
    QFETCH(quint32, height);
    QFETCH(QString, says);
    const QString text = m_files.error(pngWithSides(makePng(content), 65535, height));
    QVERIFY2(text.contains(says), qPrintable(text));
}

void TestFramesPngColour::everyTruncationIsAnError_data()
{
    QTest::addColumn<PngContent>("content");
    QTest::newRow("8 bits") << large(8, 9, 5, false);
    QTest::newRow("16 bits, interlaced") << large(16, 9, 5, true);
    QTest::newRow("a palette") << byPalette(4, false);
    QTest::newRow("a palette, interlaced") << byPalette(8, true);
}

void TestFramesPngColour::everyTruncationIsAnError()
{
    QFETCH(PngContent, content);
    QCOMPARE(firstTruncationThatIsNoError(m_files, makePng(content)), QString());
}

QTEST_GUILESS_MAIN(TestFramesPngColour)
#include "tst_frames_png_colour.moc"
