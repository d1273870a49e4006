#include "image/PixelTypeCode.h"
#include "tests/host/frames/FrameFiles.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

/// PGM and PPM files: exact samples, the depth from the maxval, and everything that a file can get wrong.
class TestFramesPnm : public QObject
{
    Q_OBJECT

private slots:
    void samplesAreExact_data();
    void samplesAreExact();
    void theMaxvalTellsTheDepth_data();
    void theMaxvalTellsTheDepth();
    void anAskedDepthOverrides_data();
    void anAskedDepthOverrides();
    void theRecordDescribesTheFrame();
    void brokenFilesAreRefused_data();
    void brokenFilesAreRefused();
    void everyTruncationIsAnError_data();
    void everyTruncationIsAnError();

private:
    FrameFiles m_files;
};

namespace {

/// A binary file of one pixel with the given maxval.
QByteArray onePixel(const QByteArray& kind, int maxval)
{
    return kind + "\n1 1\n" + QByteArray::number(maxval) + "\n" +
           QByteArray((maxval > 255 ? 2 : 1) * (kind == "P6" ? 3 : 1), 0);
}

} // namespace

void TestFramesPnm::samplesAreExact_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("width");
    QTest::addColumn<QList<int>>("samples");
    const QByteArray eight = QByteArray::fromHex("00017FFE80FF");
    QTest::newRow("P5 of 8 bits") << "P5\n3 2\n255\n" + eight << 3 << QList<int>{0, 1, 127, 254, 128, 255};
    QTest::newRow("P5 of 16 bits, high byte first")
        << "P5\n2 1\n65535\n" + QByteArray::fromHex("1234FFFF") << 2 << QList<int>{0x1234, 0xFFFF};
    QTest::newRow("P5 of 12 bits") << "P5 2 1 4095 " + QByteArray::fromHex("0FFF0001") << 2
                                   << QList<int>{4095, 1};
    QTest::newRow("samples are not brought up to full scale")
        << QByteArray("P5\n2 1\n100\n\x64\x32") << 2 << QList<int>{100, 50};
    QTest::newRow("a first sample that looks like white space")
        << QByteArray("P5\n2 1\n255\n\n ") << 2 << QList<int>{10, 32};
    QTest::newRow("a first sample that looks like a comment")
        << QByteArray("P5\n2 1\n255\n#1") << 2 << QList<int>{35, 49};
    QTest::newRow("comments in the header")
        << QByteArray("P5# a\n#b\n 2# c\n#d\n1 #e\r255\nAB") << 2 << QList<int>{65, 66};
    QTest::newRow("a comment right after the maxval")
        << QByteArray("P5 2 1 255# c\nAB") << 2 << QList<int>{65, 66};
    QTest::newRow("white space after the last sample")
        << QByteArray("P5 2 1 255\nAB\r\n") << 2 << QList<int>{65, 66};
    QTest::newRow("P2") << QByteArray("P2\n3 2\n1000\n0 1 2\n998 999 1000\n") << 3
                        << QList<int>{0, 1, 2, 998, 999, 1000};
    QTest::newRow("P2 without a last line end") << QByteArray("P2 2 1 9 0 9") << 2 << QList<int>{0, 9};
    QTest::newRow("P2 with comments and leading zeros")
        << QByteArray("P2 #x\n2 1 0255\n007# seven\n0255 # end") << 2 << QList<int>{7, 255};
    QTest::newRow("P2 with numbers of ten digits")
        << QByteArray("P2 2 1 0000000255 0000000007 0000000009") << 2 << QList<int>{7, 9};
    QTest::newRow("P6 of 8 bits") << "P6\n2 1\n255\n" + eight << 2 << QList<int>{0, 1, 127, 254, 128, 255};
    QTest::newRow("P6 of 16 bits, high byte first")
        << "P6\n1 1\n65535\n" + QByteArray::fromHex("1234FFFF0001") << 1 << QList<int>{0x1234, 0xFFFF, 1};
    QTest::newRow("P6 with comments and white space after the last sample")
        << QByteArray("P6#a\n1 #b\n2 255#c\nABCDEF\n") << 1 << QList<int>{65, 66, 67, 68, 69, 70};
    QTest::newRow("P3") << QByteArray("P3\n1 2\n1000\n0 1 2\n998 999 1000\n") << 1
                        << QList<int>{0, 1, 2, 998, 999, 1000};
    QTest::newRow("P3 with comments and without a last line end")
        << QByteArray("P3 #x\n1 1 9#y\n0 9 # red, green\n5") << 1 << QList<int>{0, 9, 5};
}

void TestFramesPnm::samplesAreExact()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, width);
    QFETCH(QList<int>, samples);
    const zor::Frame frame = m_files.read(bytes);
    QCOMPARE(int(frame.width), width);
    const int channels = bytes[1] == '3' || bytes[1] == '6' ? 3 : 1;
    QCOMPARE(int(frame.height), samples.size() / channels / width);
    QCOMPARE(samplesOf(frame), samples);
}

void TestFramesPnm::theMaxvalTellsTheDepth_data()
{
    QTest::addColumn<int>("maxval");
    QTest::addColumn<QByteArray>("depth");
    const auto add = [](int maxval, const char* depth) {
        QTest::addRow("maxval %d", maxval) << maxval << QByteArray(depth);
    };
    add(1, "8");
    add(254, "8");
    add(255, "8");
    add(256, "10");
    add(1000, "10");
    add(1023, "10");
    add(1024, "12");
    add(4095, "12");
    add(4096, "16");
    add(16383, "16");
    add(65535, "16");
}

void TestFramesPnm::theMaxvalTellsTheDepth()
{
    QFETCH(int, maxval);
    QFETCH(QByteArray, depth);
    for (const char* kind : {"P5", "P6"}) {
        const zor::Frame frame = m_files.read(onePixel(kind, maxval));
        const QByteArray format = (kind == QByteArray("P6") ? "RGB" : "Mono") + depth;
        QCOMPARE(frame.pixelType, codeOf(format.constData()));
        QCOMPARE(QString::fromStdString(frame.depthSource), QString("maxval %1").arg(maxval));
        QVERIFY(!frame.depthGuessed);
    }
}

void TestFramesPnm::anAskedDepthOverrides_data()
{
    QTest::addColumn<int>("maxval");
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<quint32>("pixelType");
    QTest::newRow("an 8-bit file as 16 bits") << 255 << 16U << zor::Mono16;
    QTest::newRow("an 8-bit file as 10 bits") << 255 << 10U << zor::Mono10;
    QTest::newRow("a 16-bit file of small samples as 8 bits") << 65535 << 8U << zor::Mono8;
    QTest::newRow("a 16-bit file of small samples as 12 bits") << 65535 << 12U << zor::Mono12;
}

void TestFramesPnm::anAskedDepthOverrides()
{
    QFETCH(int, maxval);
    QFETCH(quint32, depth);
    QFETCH(quint32, pixelType);
    zor::FrameOptions options;
    options.depth = depth;
    const QByteArray bytes = "P2 3 1 " + QByteArray::number(maxval) + " 0 17 255";
    const zor::Frame frame = m_files.read(bytes, options);
    QCOMPARE(frame.pixelType, pixelType);
    QCOMPARE(samplesOf(frame), (QList<int>{0, 17, 255}));
    QCOMPARE(QString::fromStdString(frame.depthSource), QString("--depth %1").arg(depth));
}

void TestFramesPnm::theRecordDescribesTheFrame()
{
    const zor::Frame frame = m_files.read("P2 3 2 4095 1 2 3 4 5 6");
    const _ZorImage record = frame.record();
    QCOMPARE(record.recordSize, 96U);
    QCOMPARE(record.recordVersion, 0x20000U);
    QCOMPARE(record.pixelType, zor::Mono12);
    QCOMPARE(record.depth, 12U);
    QCOMPARE(record.packing, 0x0300U);
    QCOMPARE(record.channels, 1U);
    QCOMPARE(record.pixelBits, 16U);
    QCOMPARE(record.width, 3U);
    QCOMPARE(record.height, 2U);
    QCOMPARE(record.pitch, 6U);
    QCOMPARE(record.imageSize, 12U);
    QCOMPARE(static_cast<const std::uint8_t*>(record.data), frame.pixels.data());
}

void TestFramesPnm::brokenFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("says");
    const auto add = [](const char* name, const QByteArray& bytes, const char* says) {
        QTest::newRow(name) << bytes << QString(says);
    };
    add("no sample at all", "P5\n2 2\n255\n", "asks for 4 bytes of samples, the file has 0");
    add("one byte short", "P5\n2 2\n255\nABC", "asks for 4 bytes of samples, the file has 3");
    add("one byte short at 16 bits", "P5\n1 2\n256\n" + QByteArray(3, 0),
        "asks for 4 bytes of samples, the file has 3");
    add("more bytes than the header asks for", "P5\n2 2\n255\nABCDE",
        "asks for 4 bytes of samples, the file has 5");
    add("width 0", "P5\n0 2\n255\n", "0x2 is not usable");
    add("height 0", "P5\n2 0\n255\n", "2x0 is not usable");
    add("width 65536", "P5\n65536 1\n255\n", "65536x1 is not usable");
    add("a hostile size", "P5\n65535 65535\n65535\nA", "is above the limit");
    add("a hostile size of two bytes a sample", "P5\n65535 65535\n256\nA", "is above the limit");
    add("a hostile size within the limit", "P5\n65535 65535\n255\nA",
        "asks for 4294836225 bytes of samples, the file has 1");
    add("a hostile size in decimal", "P2\n65535 65535\n255\n1", "asks for 4294836225 samples");
    add("a width of 11 digits", "P5\n10000000000 1\n255\nA", "before width, height and maxval are complete");
    add("a negative width", "P5\n-2 2\n255\nABCD", "before width, height and maxval are complete");
    add("letters for a width", "P5\nab 2\n255\nABCD", "before width, height and maxval are complete");
    add("maxval 0", "P5\n1 1\n0\nA", "maxval 0 is not 1 to 65535");
    add("maxval 65536", "P5\n1 1\n65536\nAB", "maxval 65536 is not 1 to 65535");
    add("no white space after the maxval", "P5\n1 1\n255A", "does not end with white space");
    add("nothing after the first white space", "P5\n", "before width, height and maxval are complete");
    add("no white space after the first letters", "P51 1 255 A", "first two letters");
    add("a sample above the maxval", "P5\n2 2\n100\n\x01\x02\x03\x65",
        "the sample 101 at column 1, row 1 (from 0) is above the file's maxval 100; correct the maxval");
    add("a decimal sample above the maxval", "P2\n2 1\n1000\n5 1001",
        "the sample 1001 at column 1, row 0 (from 0) is above the file's maxval 1000");
    add("a decimal sample above 16 bits", "P2\n2 1\n65535\n5 65536",
        "the sample 65536 at column 1, row 0 (from 0) is above the file's maxval 65535");
    add("too few decimal samples", "P2\n2 2\n255\n100 200 300000000000",
        "asks for 4 samples, after 2 of them");
    add("too many decimal samples", "P2\n2 1\n255\n1 2 3", "asks for 2 samples, the file holds more");
    add("a negative decimal sample", "P2\n2 1\n255\n1 -2", "asks for 2 samples, after 1 of them");
    add("a colour file one byte short", "P6\n1 2\n255\nABCDE", "asks for 6 bytes of samples, the file has 5");
    add("a colour file with more bytes", "P6\n1 1\n256\nABCDEFG",
        "asks for 6 bytes of samples, the file has 7");
    add("a hostile size in colour", "P6\n65535 21846\n255\nA",
        "its size 65535x21846 with 196605 bytes a line is above the limit of 4294967295 bytes");
    add("a hostile size in colour of two bytes a sample", "P6\n65535 10923\n256\nA",
        "its size 65535x10923 with 393210 bytes a line is above the limit of 4294967295 bytes");
    add("a hostile size in colour within the limit", "P6\n65535 21845\n255\nA",
        "asks for 4294836225 bytes of samples, the file has 1");
    add("a hostile size in decimal colour", "P3\n65535 21845\n255\n1", "asks for 4294836225 samples");
    add("a colour sample above the maxval", "P6\n2 2\n100\n" + QByteArray(11, 1) + "\x65",
        "the sample 101 at column 1, row 1 (from 0) is above the file's maxval 100; correct the maxval");
    add("a decimal colour sample above the maxval", "P3\n2 1\n1000\n5 6 7 8 1001 9",
        "the sample 1001 at column 1, row 0 (from 0) is above the file's maxval 1000");
    add("too few decimal colour samples", "P3\n1 1\n9\n0000000001 2", "asks for 3 samples, after 2 of them");
    add("too many decimal colour samples", "P3\n1 1\n255\n1 2 3 4",
        "asks for 3 samples, the file holds more");
    const char* family =
        "is a bitmap or PAM file of the PNM family; save it as PGM or PPM (P2, P3, P5 or P6)";
    add("a decimal bitmap", "P1\n1 1\n1", family);
    add("a bitmap", "P4\n1 1\nA", family);
    add("a PAM file", "P7\nWIDTH 1\n", family);
}

void TestFramesPnm::brokenFilesAreRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, says);
    const QString text = m_files.error(bytes);
    QVERIFY2(text.contains(says), qPrintable("got '" + text + "'"));
    QVERIFY(text.startsWith(QString::fromStdString(m_files.path("frame")) + ": "));
    QVERIFY(!text.contains('\n'));
}

void TestFramesPnm::everyTruncationIsAnError_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("P5 of 8 bits") << QByteArray("P5\n# c\n3 2\n255\nABCDEF");
    QTest::newRow("P5 of 16 bits") << QByteArray("P5\n3 2\n4095\n") + QByteArray(12, 1);
    QTest::newRow("P2") << QByteArray("P2\n3 2\n255\n1 2 3\n4 5 6");
    QTest::newRow("P6 of 8 bits") << QByteArray("P6\n# c\n1 2\n255\nABCDEF");
    QTest::newRow("P6 of 16 bits") << QByteArray("P6\n2 1\n4095\n") + QByteArray(12, 1);
    QTest::newRow("P3") << QByteArray("P3\n1 2\n255\n1 2 3\n4 5 6");
}

void TestFramesPnm::everyTruncationIsAnError()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(m_files.error(bytes).isEmpty());
    QCOMPARE(firstTruncationThatIsNoError(m_files, bytes), QString());
}

QTEST_GUILESS_MAIN(TestFramesPnm)
#include "tst_frames_pnm.moc"
