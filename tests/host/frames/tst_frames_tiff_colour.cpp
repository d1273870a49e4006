#include "tests/host/frames/FrameFiles.h"
#include "tests/host/frames/MakeTiff.h"
#include "tests/host/frames/TiffEntries.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <tiff.h>

/// TIFF files in colour: channels side by side or in planes, and the colours that are not read.
class TestFramesTiffColour : public QObject
{
    Q_OBJECT

private slots:
    void samplesAreExact_data();
    void samplesAreExact();
    void theDepthIsStatedOrGuessed_data();
    void theDepthIsStatedOrGuessed();
    void aSampleAboveTheDepthIsNamed();
    void zeroIsBlack();
    void otherColoursAreRefused_data();
    void otherColoursAreRefused();
    void sizesCountAllChannels_data();
    void sizesCountAllChannels();
    void tilesCountAllTheirSamples_data();
    void tilesCountAllTheirSamples();
    void truncationsNeverCrash_data();
    void truncationsNeverCrash();
    void flippedBitsNeverCrash_data();
    void flippedBitsNeverCrash();

private:
    FrameFiles m_files;
};

Q_DECLARE_METATYPE(TiffContent)
Q_DECLARE_METATYPE(TiffEntries)

namespace {

TiffContent colour(int bits, const QList<int>& samples, quint32 width)
{
    TiffContent content;
    content.width = width;
    content.height = quint32(samples.size()) / 3 / width;
    content.bits = bits;
    content.samplesPerPixel = 3;
    content.photometric = PHOTOMETRIC_RGB;
    content.samples = samples;
    return content;
}

TiffContent large(int bits, quint32 width, quint32 height)
{
    QList<int> samples;
    for (int i = 0; i < int(width * height * 3); ++i)
        samples.append((i * 7919 + 1) % (bits == 8 ? 256 : 65536));
    return colour(bits, samples, width);
}

/// The entries of an RGB picture of 8 bits.
TiffEntries colourEntries(quint32 width, quint32 height)
{
    TiffEntries entries = greyEntries(width, height, COMPRESSION_NONE);
    entries[TIFFTAG_PHOTOMETRIC] = {PHOTOMETRIC_RGB};
    entries[TIFFTAG_SAMPLESPERPIXEL] = {3};
    entries[TIFFTAG_BITSPERSAMPLE] = {8, 8, 8};
    return entries;
}

} // namespace

void TestFramesTiffColour::samplesAreExact_data()
{
    QTest::addColumn<TiffContent>("content");
    for (const int bits : {8, 16}) {
        for (const bool planes : {false, true}) {
            const auto add = [=](const char* name, auto change) {
                TiffContent content = large(bits, 19, 21);
                content.planes = planes;
                change(content);
                QTest::addRow("%d bits%s, %s", bits, planes ? " in planes" : "", name) << content;
            };
            add("strips of 2 rows", [](TiffContent&) {});
            add("one strip", [](TiffContent& content) { content.rowsPerStrip = 21; });
            add("big-endian", [](TiffContent& content) { content.mode = "wb"; });
            add("BigTIFF", [](TiffContent& content) { content.mode = "w8"; });
            add("LZW", [](TiffContent& content) { content.compression = COMPRESSION_LZW; });
            add("Deflate", [](TiffContent& content) { content.compression = COMPRESSION_ADOBE_DEFLATE; });
            add("PackBits", [](TiffContent& content) { content.compression = COMPRESSION_PACKBITS; });
            add("Deflate in one strip", [](TiffContent& content) {
                content.rowsPerStrip = 21;
                content.compression = COMPRESSION_ADOBE_DEFLATE;
            });
            add("tiles that reach over the border", [](TiffContent& content) { content.tileSide = 16; });
            add("big-endian LZW tiles", [](TiffContent& content) {
                content.tileSide = 16;
                content.mode = "wb";
                content.compression = COMPRESSION_LZW;
            });
            add("one pixel", [](TiffContent& content) {
                content.width = 1;
                content.height = 1;
                content.samples = content.samples.mid(0, 3);
            });
        }
    }
}

void TestFramesTiffColour::samplesAreExact()
{
    QFETCH(TiffContent, content);
    const zor::Frame frame = m_files.read(makeTiff(content));
    QCOMPARE(frame.width, content.width);
    QCOMPARE(frame.height, content.height);
    QCOMPARE(samplesOf(frame), content.samples);
}

void TestFramesTiffColour::theDepthIsStatedOrGuessed_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("maxSampleValue");
    QTest::addColumn<int>("largest");
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<QString>("source");
    const auto add = [](int bits, int maxSampleValue, int largest, const char* format, const char* source) {
        QTest::addRow("%d in %d bits, MaxSampleValue %d", largest, bits, maxSampleValue)
            << bits << maxSampleValue << largest << codeOf(format) << source;
    };
    add(8, -1, 255, "RGB8", "largest sample 255");
    add(16, -1, 255, "RGB8", "largest sample 255");
    add(16, -1, 1023, "RGB10", "largest sample 1023");
    add(16, -1, 1024, "RGB12", "largest sample 1024");
    add(16, -1, 4096, "RGB16", "largest sample 4096");
    add(16, 255, 7, "RGB8", "MaxSampleValue 255");
    add(16, 1023, 7, "RGB10", "MaxSampleValue 1023");
    add(16, 4095, 7, "RGB12", "MaxSampleValue 4095");
    add(16, 16383, 7, "RGB16", "MaxSampleValue 16383");
}

void TestFramesTiffColour::theDepthIsStatedOrGuessed()
{
    QFETCH(int, bits);
    QFETCH(int, maxSampleValue);
    QFETCH(int, largest);
    TiffContent content = colour(bits, {0, 1, 2, 3, 4, largest}, 2);
    content.maxSampleValue = maxSampleValue;
    const zor::Frame frame = m_files.read(makeTiff(content));
    QTEST(frame.pixelType, "pixelType");
    QTEST(QString::fromStdString(frame.depthSource), "source");
    QCOMPARE(samplesOf(frame), content.samples);
}

void TestFramesTiffColour::aSampleAboveTheDepthIsNamed()
{
    TiffContent content = colour(16, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 4096}, 2);
    content.maxSampleValue = 4095;
    content.planes = true;
    const QString text = m_files.error(makeTiff(content));
    QVERIFY2(text.contains("the sample 4096 at column 1, row 1 (from 0) is above 4095, the limit of depth 12 "
                           "(MaxSampleValue 4095)"),
             qPrintable(text));
}

void TestFramesTiffColour::zeroIsBlack()
{
    zor::FrameOptions options;
    options.whiteIsZero = zor::WhiteIsZero::Inverted;
    const QString text = m_files.error(makeTiff(colour(8, {0, 1, 2}, 1)), options);
    QVERIFY2(text.endsWith(": is a TIFF whose 0 is black; leave --white-is-zero out"), qPrintable(text));
}

void TestFramesTiffColour::otherColoursAreRefused_data()
{
    QTest::addColumn<TiffContent>("content");
    QTest::addColumn<QString>("says");
    const auto add = [](const char* name, int photometric, int samplesPerPixel, const char* says) {
        TiffContent content = colour(8, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, 1);
        content.height = 1;
        content.photometric = photometric;
        content.samplesPerPixel = samplesPerPixel;
        QTest::newRow(name) << content << QString(says);
    };
    const char* save = "; save it as grey or RGB of 8 or 16 bits";
    const auto colours = [&](const char* name, int photometric, int samplesPerPixel, const char* what) {
        add(name, photometric, samplesPerPixel, qPrintable(QString("is a TIFF with %1%2").arg(what, save)));
    };
    colours("CMYK", PHOTOMETRIC_SEPARATED, 4, "CMYK colours");
    colours("YCbCr", PHOTOMETRIC_YCBCR, 3, "YCbCr colours");
    colours("CIE Lab", PHOTOMETRIC_CIELAB, 3, "Lab colours");
    colours("ICC Lab", PHOTOMETRIC_ICCLAB, 3, "Lab colours");
    colours("ITU Lab", PHOTOMETRIC_ITULAB, 3, "Lab colours");
    colours("a mask", PHOTOMETRIC_MASK, 1, "the photometric interpretation 4");
    add("RGB and alpha", PHOTOMETRIC_RGB, 4,
        "is a TIFF with 4 samples a pixel, where RGB has 3; save it without alpha and other channels");
    add("RGB of one sample", PHOTOMETRIC_RGB, 1, "is a TIFF with 1 samples a pixel, where RGB has 3; ");
    add("grey of three samples", PHOTOMETRIC_MINISBLACK, 3,
        "is a TIFF with 3 samples a pixel, where grey has 1; ");
    TiffContent small = colour(4, {0, 1, 2, 3, 4, 5}, 1);
    QTest::newRow("4 bits") << small << "has 4 bits a sample; save it as grey or RGB of 8 or 16 bits";
    small.bits = 32;
    QTest::newRow("32 bits") << small << "has 32 bits a sample; save it as grey or RGB of 8 or 16 bits";
    small.bits = 16;
    small.sampleFormat = SAMPLEFORMAT_IEEEFP;
    QTest::newRow("floating point")
        << small << "has signed or floating point samples; save it with unsigned ones of 8 or 16 bits";
}

void TestFramesTiffColour::otherColoursAreRefused()
{
    QFETCH(TiffContent, content);
    QFETCH(QString, says);
    const QString text = m_files.error(makeTiff(content));
    QVERIFY2(text.contains(": " + says), qPrintable("got '" + text + "'"));
    QVERIFY(!text.contains('\n'));
}

void TestFramesTiffColour::sizesCountAllChannels_data()
{
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint32>("planes");
    QTest::addColumn<QString>("says");
    const QString limit =
        "its size 65535x21846 with 196605 bytes a line is above the limit of 4294967295 bytes";
    const QString claim =
        "its header asks for %1 bytes of samples, which takes a file of at least %1 bytes; ";
    for (const quint32 planes : {1U, 3U}) {
        QTest::addRow("above the limit, planes %u", planes) << 65535U << 21846U << planes << limit;
        QTest::addRow("below it, planes %u", planes) << 65535U << 21845U << planes << claim.arg(4294836225U);
        QTest::addRow("small, planes %u", planes) << 50U << 40U << planes << claim.arg(6000);
    }
}

void TestFramesTiffColour::sizesCountAllChannels()
{
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(quint32, planes);
    QFETCH(QString, says);
    TiffEntries entries = colourEntries(width, height);
    entries[TIFFTAG_PLANARCONFIG] = {planes == 1 ? quint32{PLANARCONFIG_CONTIG} : PLANARCONFIG_SEPARATE};
    entries[TIFFTAG_ROWSPERSTRIP] = {height};
    for (quint32 i = 0; i < planes; ++i) {
        entries[TIFFTAG_STRIPOFFSETS].append(TiffDataPlace);
        entries[TIFFTAG_STRIPBYTECOUNTS].append(width * height * (3 / planes));
    }
    const QString text = m_files.error(tiffOfEntries(entries, "    ", 5999));
    QVERIFY2(text.contains(says), qPrintable(text));
    if (width == 50)
        QVERIFY(m_files.read(tiffOfEntries(entries, {}, 6000 + int{TiffDataPlace})).pixels.size() == 6000);
}

void TestFramesTiffColour::tilesCountAllTheirSamples_data()
{
    QTest::addColumn<quint32>("planes");
    QTest::addColumn<quint32>("most"); // the height of the largest tile of 4096 columns
    QTest::newRow("side by side") << 1U << 1365U;
    QTest::newRow("in planes") << 3U << 4096U;
}

void TestFramesTiffColour::tilesCountAllTheirSamples()
{
    QFETCH(quint32, planes);
    QFETCH(quint32, most);
    const auto error = [&](quint32 tileHeight) {
        TiffEntries entries = colourEntries(1, 1);
        entries[TIFFTAG_PLANARCONFIG] = {planes == 1 ? quint32{PLANARCONFIG_CONTIG} : PLANARCONFIG_SEPARATE};
        entries[TIFFTAG_TILEWIDTH] = {4096};
        entries[TIFFTAG_TILELENGTH] = {tileHeight};
        for (quint32 i = 0; i < planes; ++i) {
            entries[TIFFTAG_TILEOFFSETS].append(TiffDataPlace);
            entries[TIFFTAG_TILEBYTECOUNTS].append(4096 * tileHeight);
        }
        return m_files.error(tiffOfEntries(entries));
    };
    const QString claim = QString(": its header asks for %1 bytes of samples").arg(4096 * most * 3);
    QVERIFY2(error(most).contains(claim), qPrintable(error(most)));
    QVERIFY2(error(most + 1).endsWith(" are not usable; save it in strips"), qPrintable(error(most + 1)));
}

void TestFramesTiffColour::truncationsNeverCrash_data()
{
    QTest::addColumn<TiffContent>("content");
    for (const bool planes : {false, true}) {
        TiffContent content = large(16, 5, 7);
        content.planes = planes;
        QTest::addRow("strips, planes %d", int(planes)) << content;
        content.tileSide = 16;
        QTest::addRow("tiles, planes %d", int(planes)) << content;
        content.compression = COMPRESSION_ADOBE_DEFLATE;
        QTest::addRow("Deflate tiles, planes %d", int(planes)) << content;
    }
}

/// A truncation that takes only bytes that nothing needs leaves the whole frame.
void TestFramesTiffColour::truncationsNeverCrash()
{
    QFETCH(TiffContent, content);
    checkTruncations(m_files, makeTiff(content), content.samples);
}

void TestFramesTiffColour::flippedBitsNeverCrash_data()
{
    QTest::addColumn<TiffContent>("content");
    for (const bool planes : {false, true}) {
        TiffContent content = large(16, 3, 4);
        content.planes = planes;
        content.compression = COMPRESSION_ADOBE_DEFLATE;
        QTest::addRow("strips, planes %d", int(planes)) << content;
        content.tileSide = 16;
        QTest::addRow("tiles, planes %d", int(planes)) << content;
    }
}

/// What a flipped bit leaves is either refused in one line or a frame within the limits.
void TestFramesTiffColour::flippedBitsNeverCrash()
{
    QFETCH(TiffContent, content);
    checkFlippedBits(m_files, makeTiff(content));
}

QTEST_GUILESS_MAIN(TestFramesTiffColour)
#include "tst_frames_tiff_colour.moc"
