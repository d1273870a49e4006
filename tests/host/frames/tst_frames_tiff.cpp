#include "image/PixelTypeCode.h"
#include "tests/host/frames/FrameFiles.h"
#include "tests/host/frames/MakeTiff.h"

#include <QtTest>

#include <tiff.h>

/// Grey TIFF files.
class TestFramesTiff : public QObject
{
    Q_OBJECT

private slots:
    void samplesAreExact_data();
    void samplesAreExact();
    void maxSampleValueTellsTheDepth_data();
    void maxSampleValueTellsTheDepth();
    void withoutItTheLargestSampleTellsTheDepth_data();
    void withoutItTheLargestSampleTellsTheDepth();
    void aSampleAboveMaxSampleValuesDepthIsNamed();
    void anAskedDepthOverrides();
    void whiteIsZeroDecides_data();
    void whiteIsZeroDecides();
    void whiteIsZeroIsRefusedWhereBlackIs();
    void otherKindsAreRefused_data();
    void otherKindsAreRefused();
    void truncationsNeverCrash_data();
    void truncationsNeverCrash();
    void flippedBytesNeverCrash_data();
    void flippedBytesNeverCrash();

private:
    FrameFiles m_files;
};

Q_DECLARE_METATYPE(TiffContent)

namespace {

TiffContent grey(int bits, QList<int> samples, quint32 width)
{
    TiffContent content;
    content.width = width;
    content.height = quint32(samples.size()) / width;
    content.bits = bits;
    content.samples = samples;
    return content;
}

TiffContent large(int bits)
{
    QList<int> samples;
    for (int i = 0; i < 19 * 21; ++i)
        samples.append(i * 7919 % (bits == 8 ? 256 : 65536));
    return grey(bits, samples, 19);
}

} // namespace

void TestFramesTiff::samplesAreExact_data()
{
    QTest::addColumn<TiffContent>("content");
    for (const int bits : {8, 16}) {
        const auto add = [bits](const char* name, auto change) {
            TiffContent content = large(bits);
            change(content);
            QTest::addRow("%d bits, %s", bits, name) << content;
        };
        add("strips of 2 rows", [](TiffContent&) {});
        add("one strip", [](TiffContent& content) { content.rowsPerStrip = 21; });
        add("big-endian", [](TiffContent& content) { content.mode = "wb"; });
        add("BigTIFF", [](TiffContent& content) { content.mode = "w8"; });
        add("LZW", [](TiffContent& content) { content.compression = COMPRESSION_LZW; });
        add("Deflate", [](TiffContent& content) { content.compression = COMPRESSION_ADOBE_DEFLATE; });
        add("PackBits", [](TiffContent& content) { content.compression = COMPRESSION_PACKBITS; });
        add("tiles that reach over the border", [](TiffContent& content) { content.tileSide = 16; });
        add("big-endian Deflate tiles", [](TiffContent& content) {
            content.tileSide = 16;
            content.mode = "wb";
            content.compression = COMPRESSION_ADOBE_DEFLATE;
        });
    }
}

void TestFramesTiff::samplesAreExact()
{
    QFETCH(TiffContent, content);
    const zor::Frame frame = m_files.read(makeTiff(content));
    QCOMPARE(frame.width, content.width);
    QCOMPARE(frame.height, content.height);
    QCOMPARE(frame.pixelType, content.bits == 8 ? zor::Mono8 : zor::Mono16);
    QCOMPARE(samplesOf(frame), content.samples);
}

void TestFramesTiff::maxSampleValueTellsTheDepth_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<quint32>("pixelType");
    const auto add = [](int value, quint32 pixelType) { QTest::addRow("%d", value) << value << pixelType; };
    add(255, zor::Mono8);
    add(256, zor::Mono10);
    add(1023, zor::Mono10);
    add(1024, zor::Mono12);
    add(4095, zor::Mono12);
    add(4096, zor::Mono16);
    add(65535, zor::Mono16);
}

void TestFramesTiff::maxSampleValueTellsTheDepth()
{
    QFETCH(int, value);
    QFETCH(quint32, pixelType);
    TiffContent content = grey(16, {0, 100, 200}, 3);
    content.maxSampleValue = value;
    const zor::Frame frame = m_files.read(makeTiff(content));
    QCOMPARE(frame.pixelType, pixelType);
    QCOMPARE(samplesOf(frame), content.samples);
    QCOMPARE(QString::fromStdString(frame.depthSource), QString("MaxSampleValue %1").arg(value));
}

void TestFramesTiff::withoutItTheLargestSampleTellsTheDepth_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("largest");
    QTest::addColumn<quint32>("pixelType");
    const auto add = [](int bits, int largest, quint32 pixelType) {
        QTest::addRow("%d in %d bits", largest, bits) << bits << largest << pixelType;
    };
    add(8, 255, zor::Mono8);
    add(16, 255, zor::Mono8);
    add(16, 1023, zor::Mono10);
    add(16, 3981, zor::Mono12);
    add(16, 4096, zor::Mono16);
}

void TestFramesTiff::withoutItTheLargestSampleTellsTheDepth()
{
    QFETCH(int, bits);
    QFETCH(int, largest);
    QFETCH(quint32, pixelType);
    const zor::Frame frame = m_files.read(makeTiff(grey(bits, {0, largest, 1}, 3)));
    QCOMPARE(frame.pixelType, pixelType);
    QCOMPARE(samplesOf(frame), (QList<int>{0, largest, 1}));
    QCOMPARE(QString::fromStdString(frame.depthSource), QString("largest sample %1").arg(largest));
}

void TestFramesTiff::aSampleAboveMaxSampleValuesDepthIsNamed()
{
    TiffContent content = grey(16, {0, 1, 4096, 3}, 2);
    content.maxSampleValue = 4000;
    const QString text = m_files.error(makeTiff(content));
    QVERIFY2(text.contains("the sample 4096 at column 0, row 1 (from 0) is above 4095, the limit of depth 12 "
                           "(MaxSampleValue 4000)"),
             qPrintable(text));
}

void TestFramesTiff::anAskedDepthOverrides()
{
    zor::FrameOptions options;
    options.depth = 12;
    TiffContent content = grey(16, {0, 200}, 2);
    content.maxSampleValue = 65535;
    const zor::Frame frame = m_files.read(makeTiff(content), options);
    QCOMPARE(frame.pixelType, zor::Mono12);
    QCOMPARE(QString::fromStdString(frame.depthSource), QString("--depth 12"));
}

void TestFramesTiff::whiteIsZeroDecides_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("maxSampleValue");
    QTest::addColumn<QList<int>>("stored");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<QList<int>>("samples");
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<QString>("source");
    QTest::newRow("8 bits as they are") << 8 << -1 << QList<int>{0, 1, 254} << false << QList<int>{0, 1, 254}
                                        << zor::Mono8 << "largest sample 254";
    QTest::newRow("8 bits inverted") << 8 << -1 << QList<int>{0, 1, 255} << true << QList<int>{255, 254, 0}
                                     << zor::Mono8 << "largest sample 255";
    QTest::newRow("16 bits as they are") << 16 << -1 << QList<int>{0, 1, 4095} << false
                                         << QList<int>{0, 1, 4095} << zor::Mono12 << "largest sample 4095";
    QTest::newRow("16 bits inverted") << 16 << -1 << QList<int>{1, 255, 65535} << true
                                      << QList<int>{65534, 65280, 0} << zor::Mono16 << "largest sample 65534";
    QTest::newRow("the largest inverted sample gives the depth")
        << 16 << -1 << QList<int>{61440, 65535} << true << QList<int>{4095, 0} << zor::Mono12
        << "largest sample 4095";
    QTest::newRow("MaxSampleValue gives the depth of samples as they are")
        << 16 << 4095 << QList<int>{0, 7} << false << QList<int>{0, 7} << zor::Mono12
        << "MaxSampleValue 4095";
    QTest::newRow("a small MaxSampleValue is a large inverted sample")
        << 16 << 4095 << QList<int>{0, 4095} << true << QList<int>{65535, 61440} << zor::Mono16
        << "MaxSampleValue 4095, inverted in 16 bits";
    QTest::newRow("MaxSampleValue keeps the depth of inverted dark samples")
        << 16 << 65535 << QList<int>{65535, 65000} << true << QList<int>{0, 535} << zor::Mono16
        << "MaxSampleValue 65535, inverted in 16 bits";
    QTest::newRow("MaxSampleValue in 8 bits inverted")
        << 8 << 127 << QList<int>{0, 127} << true << QList<int>{255, 128} << zor::Mono8
        << "MaxSampleValue 127, inverted in 8 bits";
}

void TestFramesTiff::whiteIsZeroDecides()
{
    QFETCH(int, bits);
    QFETCH(int, maxSampleValue);
    QFETCH(QList<int>, stored);
    QFETCH(bool, inverted);
    TiffContent content = grey(bits, stored, quint32(stored.size()));
    content.photometric = PHOTOMETRIC_MINISWHITE;
    content.maxSampleValue = maxSampleValue;
    zor::FrameOptions options;
    options.whiteIsZero = inverted ? zor::WhiteIsZero::Inverted : zor::WhiteIsZero::Stored;
    const zor::Frame frame = m_files.read(makeTiff(content), options);
    QTEST(samplesOf(frame), "samples");
    QTEST(frame.pixelType, "pixelType");
    QTEST(QString::fromStdString(frame.depthSource), "source");
}

void TestFramesTiff::whiteIsZeroIsRefusedWhereBlackIs()
{
    for (const zor::WhiteIsZero way : {zor::WhiteIsZero::Stored, zor::WhiteIsZero::Inverted}) {
        zor::FrameOptions options;
        options.whiteIsZero = way;
        const QString text = m_files.error(makeTiff(grey(8, {0, 1}, 2)), options);
        QVERIFY2(text.endsWith(": is a TIFF whose 0 is black; leave --white-is-zero out"), qPrintable(text));
    }
}

void TestFramesTiff::otherKindsAreRefused_data()
{
    QTest::addColumn<TiffContent>("content");
    QTest::addColumn<QString>("says");
    const auto add = [](const char* name, const char* says, auto change) {
        TiffContent content = grey(8, {0, 1, 2, 3, 4, 5}, 3);
        change(content);
        QTest::newRow(name) << content << QString(says);
    };
    add("grey and alpha",
        "is a TIFF with 2 samples a pixel, where grey has 1; save it without alpha and other channels",
        [](TiffContent& content) {
            content.width = 1;
            content.samplesPerPixel = 2;
        });
    add("a palette", "is a TIFF with a palette; save it as grey or RGB of 8 or 16 bits",
        [](TiffContent& content) { content.photometric = PHOTOMETRIC_PALETTE; });
    add("0 as white",
        "whose 0 is white; give --white-is-zero stored to take the samples as they are, or "
        "--white-is-zero inverted to take full scale less the sample",
        [](TiffContent& content) { content.photometric = PHOTOMETRIC_MINISWHITE; });
    add("1 bit", "has 1 bits a sample", [](TiffContent& content) { content.bits = 1; });
    add("4 bits", "has 4 bits a sample", [](TiffContent& content) { content.bits = 4; });
    add("12 bits", "has 12 bits a sample", [](TiffContent& content) { content.bits = 12; });
    add("32 bits", "has 32 bits a sample", [](TiffContent& content) { content.bits = 32; });
    add("signed samples", "signed or floating point",
        [](TiffContent& content) { content.sampleFormat = SAMPLEFORMAT_INT; });
    add("floating point of 16 bits", "signed or floating point", [](TiffContent& content) {
        content.bits = 16;
        content.sampleFormat = SAMPLEFORMAT_IEEEFP;
    });
}

void TestFramesTiff::otherKindsAreRefused()
{
    QFETCH(TiffContent, content);
    QFETCH(QString, says);
    const QString text = m_files.error(makeTiff(content));
    QVERIFY2(text.contains(says), qPrintable("got '" + text + "'"));
    QVERIFY(!text.contains('\n'));
}

void TestFramesTiff::truncationsNeverCrash_data()
{
    samplesAreExact_data();
}

/// A TIFF file's directory may be at its end or its start, so that a truncation is always an error unless it
/// only takes bytes that nothing needs; then the frame is the whole one.
void TestFramesTiff::truncationsNeverCrash()
{
    QFETCH(TiffContent, content);
    checkTruncations(m_files, makeTiff(content), content.samples);
}

void TestFramesTiff::flippedBytesNeverCrash_data()
{
    QTest::addColumn<TiffContent>("content");
    TiffContent content = grey(16, {0, 1, 2, 3, 4, 5}, 3);
    QTest::newRow("strips") << content;
    content.compression = COMPRESSION_ADOBE_DEFLATE;
    QTest::newRow("Deflate") << content;
    content.tileSide = 16;
    QTest::newRow("tiles") << content;
}

/// What a flipped bit leaves is either refused in one line or a frame within the limits.
void TestFramesTiff::flippedBytesNeverCrash()
{
    QFETCH(TiffContent, content);
    checkFlippedBits(m_files, makeTiff(content));
}

QTEST_GUILESS_MAIN(TestFramesTiff)
#include "tst_frames_tiff.moc"
