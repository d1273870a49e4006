#include "image/PixelTypeCode.h"
#include "tests/host/frames/FrameFiles.h"
#include "tests/host/frames/MakePng.h"

#include <QtTest>

#include <png.h>

/// Grey PNG files.
class TestFramesPng : public QObject
{
    Q_OBJECT

private slots:
    void samplesAreExact_data();
    void samplesAreExact();
    void significantBitsTellTheDepth_data();
    void significantBitsTellTheDepth();
    void theLargestSampleTellsTheDepth_data();
    void theLargestSampleTellsTheDepth();
    void anAskedDepthOverrides_data();
    void anAskedDepthOverrides();
    void aSampleAboveTheSignificantBitsIsNamed();
    void otherKindsAreRefused_data();
    void otherKindsAreRefused();
    void aHostileSizeIsRefusedBeforeItIsRead();
    void brokenDataHaveAReason_data();
    void brokenDataHaveAReason();
    void everyTruncationIsAnError_data();
    void everyTruncationIsAnError();
    void everyFlippedByteIsAnErrorOrAFrame();

private:
    FrameFiles m_files;
};

namespace {

PngContent grey(int bits, QList<int> samples, quint32 width, int significantBits = 0)
{
    PngContent content;
    content.width = width;
    content.height = quint32(samples.size()) / width;
    content.bits = bits;
    content.samples = samples;
    content.significantBits = significantBits;
    return content;
}

/// An image of several passes and filters.
PngContent large(int bits, bool interlaced)
{
    QList<int> samples;
    for (int i = 0; i < 19 * 13; ++i)
        samples.append(i * 7919 % (bits == 8 ? 256 : 65536));
    PngContent content = grey(bits, samples, 19);
    content.interlaced = interlaced;
    return content;
}

} // namespace

void TestFramesPng::samplesAreExact_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<bool>("interlaced");
    QTest::newRow("8 bits") << 8 << false;
    QTest::newRow("16 bits") << 16 << false;
    QTest::newRow("8 bits, interlaced") << 8 << true;
    QTest::newRow("16 bits, interlaced") << 16 << true;
}

void TestFramesPng::samplesAreExact()
{
    QFETCH(int, bits);
    QFETCH(bool, interlaced);
    const PngContent content = large(bits, interlaced);
    const zor::Frame frame = m_files.read(makePng(content));
    QCOMPARE(frame.width, 19U);
    QCOMPARE(frame.height, 13U);
    QCOMPARE(frame.pixelType, bits == 8 ? zor::Mono8 : zor::Mono16);
    QCOMPARE(samplesOf(frame), content.samples);
}

void TestFramesPng::significantBitsTellTheDepth_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("significantBits");
    QTest::addColumn<QList<int>>("stored");
    QTest::addColumn<QList<int>>("samples");
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<QString>("source");
    QTest::newRow("12 of 16, as they are")
        << 16 << 12 << QList<int>{0, 1, 4095} << QList<int>{0, 1, 4095} << zor::Mono12 << "sBIT 12";
    QTest::newRow("10 of 16, as they are")
        << 16 << 10 << QList<int>{0, 1, 1023} << QList<int>{0, 1, 1023} << zor::Mono10 << "sBIT 10";
    QTest::newRow("9 of 16 make depth 10")
        << 16 << 9 << QList<int>{0, 511} << QList<int>{0, 511} << zor::Mono10 << "sBIT 9";
    QTest::newRow("14 of 16 make depth 16")
        << 16 << 14 << QList<int>{0, 16383} << QList<int>{0, 16383} << zor::Mono16 << "sBIT 14";
    QTest::newRow("8 of 16 in one byte each")
        << 16 << 8 << QList<int>{0, 255} << QList<int>{0, 255} << zor::Mono8 << "sBIT 8";
    QTest::newRow("16 of 16") << 16 << 16 << QList<int>{0, 7} << QList<int>{0, 7} << zor::Mono16 << "sBIT 16";
    QTest::newRow("7 of 8") << 8 << 7 << QList<int>{0, 127} << QList<int>{0, 127} << zor::Mono8 << "sBIT 7";
    QTest::newRow("12 of 16, brought up by repeating the high bits")
        << 16 << 12 << QList<int>{0, 0x1A61, 0xABCA, 0xFFFF} << QList<int>{0, 0x1A6, 0xABC, 0xFFF}
        << zor::Mono12 << "sBIT 12, in the high bits of 16";
    QTest::newRow("6 of 16, brought up by repeating more than once")
        << 16 << 6 << QList<int>{0, 3120, 65535} << QList<int>{0, 3, 63} << zor::Mono8
        << "sBIT 6, in the high bits of 16";
    QTest::newRow("12 of 16, brought up with zeros below")
        << 16 << 12 << QList<int>{0, 0xABC0, 0xFFF0} << QList<int>{0, 0xABC, 0xFFF} << zor::Mono12
        << "sBIT 12, in the high bits of 16";
    QTest::newRow("12 of 16, brought up by the ratio of the full scales")
        << 16 << 12 << QList<int>{0, 6754, 65519, 65535} << QList<int>{0, 422, 4094, 4095} << zor::Mono12
        << "sBIT 12, in the high bits of 16";
    QTest::newRow("15 of 16, brought up by the ratio of the full scales")
        << 16 << 15 << QList<int>{0, 32769, 65533, 65535} << QList<int>{0, 16384, 32766, 32767} << zor::Mono16
        << "sBIT 15, in the high bits of 16";
    QTest::newRow("3 of 8, brought up by repeating or by the ratio")
        << 8 << 3 << QList<int>{0, 0xB6, 0xFF} << QList<int>{0, 5, 7} << zor::Mono8
        << "sBIT 3, in the high bits of 8";
}

void TestFramesPng::significantBitsTellTheDepth()
{
    QFETCH(int, bits);
    QFETCH(int, significantBits);
    QFETCH(QList<int>, stored);
    QFETCH(QList<int>, samples);
    const zor::Frame frame =
        m_files.read(makePng(grey(bits, stored, quint32(stored.size()), significantBits)));
    QCOMPARE(samplesOf(frame), samples);
    QTEST(frame.pixelType, "pixelType");
    QTEST(QString::fromStdString(frame.depthSource), "source");
}

void TestFramesPng::theLargestSampleTellsTheDepth_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("largest");
    QTest::addColumn<quint32>("pixelType");
    const auto add = [](int bits, int largest, quint32 pixelType) {
        QTest::addRow("%d in %d bits", largest, bits) << bits << largest << pixelType;
    };
    add(8, 0, zor::Mono8);
    add(8, 255, zor::Mono8);
    add(16, 0, zor::Mono8);
    add(16, 255, zor::Mono8);
    add(16, 256, zor::Mono10);
    add(16, 1023, zor::Mono10);
    add(16, 1024, zor::Mono12);
    add(16, 3981, zor::Mono12);
    add(16, 4095, zor::Mono12);
    add(16, 4096, zor::Mono16);
    add(16, 65535, zor::Mono16);
}

void TestFramesPng::theLargestSampleTellsTheDepth()
{
    QFETCH(int, bits);
    QFETCH(int, largest);
    QFETCH(quint32, pixelType);
    const zor::Frame frame = m_files.read(makePng(grey(bits, {0, largest, 0}, 3)));
    QCOMPARE(frame.pixelType, pixelType);
    QCOMPARE(samplesOf(frame), (QList<int>{0, largest, 0}));
    QCOMPARE(QString::fromStdString(frame.depthSource), QString("largest sample %1").arg(largest));
}

void TestFramesPng::anAskedDepthOverrides_data()
{
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<QList<int>>("stored");
    QTest::addColumn<QList<int>>("samples");
    QTest::addColumn<quint32>("pixelType");
    QTest::newRow("small samples at depth 16")
        << 16U << QList<int>{0, 4095} << QList<int>{0, 4095} << zor::Mono16;
    QTest::newRow("brought up samples stay as they are at depth 16")
        << 16U << QList<int>{0, 0xABCA, 0xFFFF} << QList<int>{0, 0xABCA, 0xFFFF} << zor::Mono16;
    QTest::newRow("brought up samples come down when the depth does not hold them")
        << 12U << QList<int>{0, 0xABCA, 0xFFFF} << QList<int>{0, 0xABC, 0xFFF} << zor::Mono12;
}

void TestFramesPng::anAskedDepthOverrides()
{
    QFETCH(quint32, depth);
    QFETCH(QList<int>, stored);
    zor::FrameOptions options;
    options.depth = depth;
    const zor::Frame frame = m_files.read(makePng(grey(16, stored, quint32(stored.size()), 12)), options);
    QTEST(frame.pixelType, "pixelType");
    QTEST(samplesOf(frame), "samples");
    QCOMPARE(QString::fromStdString(frame.depthSource), QString("--depth %1").arg(depth));
}

void TestFramesPng::aSampleAboveTheSignificantBitsIsNamed()
{
    const QString text = m_files.error(makePng(grey(16, {0, 1, 5001, 3}, 2, 12)));
    QVERIFY2(
        text.contains(
            "the sample 5001 at column 0, row 1 (from 0) is above 4095, the limit of depth 12 (sBIT 12)"),
        qPrintable(text));
}

void TestFramesPng::otherKindsAreRefused_data()
{
    QTest::addColumn<int>("colorType");
    QTest::addColumn<int>("bits");
    QTest::addColumn<QString>("says");
    const char* alpha = "is a PNG with alpha; save it without, as grey or RGB of 8 or 16 bits";
    QTest::newRow("RGB and alpha") << PNG_COLOR_TYPE_RGB_ALPHA << 16 << alpha;
    QTest::newRow("grey and alpha") << PNG_COLOR_TYPE_GRAY_ALPHA << 8 << alpha;
    QTest::newRow("1 bit") << PNG_COLOR_TYPE_GRAY << 1 << "has 1 bits a sample";
    QTest::newRow("2 bits") << PNG_COLOR_TYPE_GRAY << 2 << "has 2 bits a sample";
    QTest::newRow("4 bits") << PNG_COLOR_TYPE_GRAY << 4 << "has 4 bits a sample";
}

void TestFramesPng::otherKindsAreRefused()
{
    QFETCH(int, colorType);
    QFETCH(int, bits);
    QFETCH(QString, says);
    PngContent content = grey(bits, {0, 1, 0, 1, 0, 1, 0, 1}, 2);
    content.height = 1;
    content.colorType = colorType;
    const QString text = m_files.error(makePng(content));
    QVERIFY2(text.contains(says), qPrintable("got '" + text + "'"));
}

void TestFramesPng::aHostileSizeIsRefusedBeforeItIsRead()
{
    const QByteArray bytes = pngWithSides(makePng(grey(8, {0, 1}, 2)), 65535, 65535);
    const QString text = m_files.error(bytes);
    QVERIFY2(text.contains("its header asks for 4294836225 bytes of samples") &&
                 text.contains(QString("it has %1").arg(bytes.size())),
             qPrintable(text));
}

void TestFramesPng::brokenDataHaveAReason_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("says");
    // The signature takes 8 bytes, the header's chunk 25.
    const QByteArray whole = makePng(grey(8, {1, 2, 3, 4}, 2));
    const int size = whole.size();
    QTest::newRow("a header that is cut")
        << whole.left(20) << "(the file ends too early); the file has 20 bytes, reading stopped at byte 16; ";
    QByteArray header = whole;
    header[30] = char(~header[30]);
    QTest::newRow("a header with a wrong checksum")
        << header
        << QString("(IHDR: CRC error); the file has %1 bytes, reading stopped at byte 33; ").arg(size);
    QTest::newRow("data that are cut")
        << whole.left(45) << "(the file ends too early); the file has 45 bytes, reading stopped at byte 41; ";
    QTest::newRow("an end that is cut")
        << whole.chopped(1)
        << QString("(the file ends too early); the file has %1 bytes, reading "
                   "stopped at byte %2; ")
               .arg(size - 1)
               .arg(size - 4);
}

void TestFramesPng::brokenDataHaveAReason()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, says);
    const QString text = m_files.error(bytes);
    QVERIFY2(text.contains(": the PNG data are broken " + says + "write or copy the file again"),
             qPrintable(text));
}

void TestFramesPng::everyTruncationIsAnError_data()
{
    samplesAreExact_data();
}

void TestFramesPng::everyTruncationIsAnError()
{
    QFETCH(int, bits);
    QFETCH(bool, interlaced);
    QCOMPARE(firstTruncationThatIsNoError(m_files, makePng(large(bits, interlaced))), QString());
}

void TestFramesPng::everyFlippedByteIsAnErrorOrAFrame()
{
    const QByteArray bytes = makePng(large(16, false));
    int errors = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        QByteArray flipped = bytes;
        flipped[i] = char(~flipped[i]);
        errors += m_files.error(flipped).isEmpty() ? 0 : 1;
    }
    // The checksums of the format leave nothing undetected.
    QCOMPARE(errors, bytes.size());
}

QTEST_GUILESS_MAIN(TestFramesPng)
#include "tst_frames_png.moc"
