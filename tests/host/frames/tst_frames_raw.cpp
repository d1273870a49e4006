#include "tests/host/frames/FrameFiles.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

/// Raw dumps: sizes to the byte, format names, and the order of the low bits in `Packed` formats.
class TestFramesRaw : public QObject
{
    Q_OBJECT

private slots:
    void theFileHoldsExactlyItsLines_data();
    void theFileHoldsExactlyItsLines();
    void packedLowBitsComeIntoTheRecordsOrder_data();
    void packedLowBitsComeIntoTheRecordsOrder();
    void samplesAboveTheFormatAreNamed_data();
    void samplesAboveTheFormatAreNamed();
    void wrongLayoutsAreRefused_data();
    void wrongLayoutsAreRefused();
    void everyTruncationIsAnError();
    void aDepthIsNotAsked();

private:
    FrameFiles m_files;
};

namespace {

zor::FrameOptions rawOptions(const QString& format, quint32 width, quint32 height, int pitch = -1,
                             bool recordOrder = false)
{
    zor::FrameOptions options;
    options.raw.emplace();
    options.raw->format = format.toStdString();
    options.raw->width = width;
    options.raw->height = height;
    if (pitch >= 0)
        options.raw->pitch = std::uint32_t(pitch);
    options.raw->packedOrderRecord = recordOrder;
    return options;
}

} // namespace

void TestFramesRaw::theFileHoldsExactlyItsLines_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<int>("pitch"); // -1: not given
    QTest::addColumn<int>("bytesPerLine");
    QTest::addColumn<quint32>("pixelType");
    const auto add = [](const char* format, quint32 width, int pitch, int bytes, quint32 code) {
        QTest::addRow("%s, width %u, pitch %d", format, width, pitch)
            << format << width << pitch << bytes << code;
    };
    add("Mono8", 5, -1, 5, zor::Mono8);
    add("Mono8", 5, 5, 5, zor::Mono8);
    add("Mono8", 5, 8, 8, zor::Mono8);
    add("Mono8_FLExPacked", 5, -1, 5, codeOf("Mono8_FLExPacked"));
    add("Mono10", 5, -1, 10, zor::Mono10);
    add("Mono10p", 4, -1, 5, codeOf("Mono10p"));
    add("Mono10p", 5, -1, 7, codeOf("Mono10p"));
    add("Mono10Packed", 4, -1, 6, codeOf("Mono10Packed"));
    add("Mono10Packed", 5, 8, 8, codeOf("Mono10Packed"));
    add("Mono10_FLExPacked", 5, -1, 8, codeOf("Mono10_FLExPacked"));
    add("Mono12p", 3, -1, 5, codeOf("Mono12p"));
    add("Mono12Packed", 3, -1, 5, codeOf("Mono12Packed"));
    add("Mono12_FLExPacked", 3, 7, 7, codeOf("Mono12_FLExPacked"));
    add("Mono14", 3, -1, 6, codeOf("Mono14"));
    add("Mono16", 3, -1, 6, zor::Mono16);
    add("BayerRG12p", 3, -1, 5, codeOf("BayerRG12p"));
    add("RGB_12_FLEX_Packed", 3, -1, 14, codeOf("RGB_12_FLEX_Packed"));
    add("YCbCr422_8", 2, -1, 4, codeOf("YCbCr422_8"));
}

void TestFramesRaw::theFileHoldsExactlyItsLines()
{
    QFETCH(QString, format);
    QFETCH(quint32, width);
    QFETCH(int, pitch);
    QFETCH(int, bytesPerLine);
    QFETCH(quint32, pixelType);
    QByteArray bytes;
    // Formats with unused bits above their samples have zeros there.
    const bool unusedBits = format == "Mono10" || format == "Mono14";
    for (int i = 0; i < 3 * bytesPerLine; ++i)
        bytes.append(char((i * 37 + 11) & (unusedBits ? 0x03 : 0xFF)));
    const zor::FrameOptions options = rawOptions(format, width, 3, pitch, true);

    const zor::Frame frame = m_files.read(bytes, options);
    QCOMPARE(frame.width, width);
    QCOMPARE(frame.height, 3U);
    QCOMPARE(int(frame.pitch), bytesPerLine);
    QCOMPARE(frame.pixelType, pixelType);
    QCOMPARE(QString::fromStdString(frame.depthSource), "format " + format);
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(frame.pixels.data()), int(frame.pixels.size())), bytes);

    const QString expected = QString("takes %1 bytes, the file has %2").arg(bytes.size());
    QVERIFY(m_files.error(bytes + 'x', options).contains(expected.arg(bytes.size() + 1)));
    QVERIFY(m_files.error(bytes.left(bytes.size() - 1), options).contains(expected.arg(bytes.size() - 1)));
}

void TestFramesRaw::packedLowBitsComeIntoTheRecordsOrder_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<int>("pitch");
    QTest::addColumn<bool>("recordOrder");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("pixels");
    const auto hex = [](const char* text) { return QByteArray::fromHex(text); };
    QTest::newRow("Mono12Packed from the wire")
        << "Mono12Packed" << 4U << -1 << false << hex("AB1278 CD34EF") << hex("AB2178 CD43EF");
    QTest::newRow("Mono12Packed in the record's order stays")
        << "Mono12Packed" << 4U << -1 << true << hex("AB1278 CD34EF") << hex("AB1278 CD34EF");
    QTest::newRow("an odd last pixel has its half of a middle byte")
        << "Mono12Packed" << 3U << -1 << false << hex("AB1278 CD04") << hex("AB2178 CD40");
    QTest::newRow("Mono10Packed from the wire")
        << "Mono10Packed" << 2U << -1 << false << hex("FF2380") << hex("FF3280");
    QTest::newRow("BayerRG12Packed from the wire")
        << "BayerRG12Packed" << 2U << -1 << false << hex("AB1278") << hex("AB2178");
    QTest::newRow("padding stays as it is")
        << "Mono12Packed" << 2U << 5 << false << hex("AB12781212 CD34EF3434") << hex("AB21781212 CD43EF3434");
    QTest::newRow("Mono12p is no pair format")
        << "Mono12p" << 2U << -1 << false << hex("AB1278") << hex("AB1278");
}

void TestFramesRaw::packedLowBitsComeIntoTheRecordsOrder()
{
    QFETCH(QString, format);
    QFETCH(quint32, width);
    QFETCH(int, pitch);
    QFETCH(bool, recordOrder);
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, pixels);
    const quint32 height = pitch < 0 ? 1 : 2;
    const zor::Frame frame = m_files.read(file, rawOptions(format, width, height, pitch, recordOrder));
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(frame.pixels.data()), int(frame.pixels.size())),
             pixels);
}

void TestFramesRaw::samplesAboveTheFormatAreNamed_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<int>("pitch");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("says"); // empty: a frame
    const auto add = [](const char* name, const char* format, quint32 width, int pitch, const char* hex,
                        const char* says) {
        QTest::newRow(name) << format << width << pitch << QByteArray::fromHex(hex) << says;
    };
    add("Mono10 at its limit", "Mono10", 2, -1, "FF03 0000", "");
    add("Mono10 above it", "Mono10", 2, -1, "FF03 0004",
        "the sample 1024 at column 1, row 0 (from 0) is above 1023, the limit of Mono10; check --format");
    add("Mono12 at its limit", "Mono12", 1, -1, "FF0F", "");
    add("Mono12 with the high byte first", "Mono12", 1, -1, "0FFF", "the sample 65295 at column 0, row 0");
    add("Mono14 at its limit", "Mono14", 1, -1, "FF3F", "");
    add("Mono14 above it, in the second row", "Mono14", 1, 2, "FF3F 0040",
        "the sample 16384 at column 0, row 1 (from 0) is above 16383, the limit of Mono14");
    add("padding is not looked at", "Mono10", 1, 4, "FF03FFFF", "");
    add("Mono16 has no unused bits", "Mono16", 1, -1, "FFFF", "");
    add("BayerRG10 at its limit", "BayerRG10", 2, -1, "FF03 FF03", "");
    add("BayerRG10 above it", "BayerRG10", 2, -1, "FF03 0004",
        "the sample 1024 at column 1, row 0 (from 0) is above 1023, the limit of BayerRG10");
    add("BayerGB12 above it", "BayerGB12", 1, -1, "0010", "the sample 4096 at column 0, row 0");
    add("BayerBG14 above it", "BayerBG14", 1, -1, "0040", "the sample 16384 at column 0, row 0");
    add("BayerGR16 has no unused bits", "BayerGR16", 1, -1, "FFFF", "");
    add("TrueSense of 12 bits at its limit", "TrueSense_GBRG_WGGW_1_12", 2, -1, "FF0F FF0F", "");
    add("TrueSense of 12 bits above it", "TrueSense_GBRG_WGGW_1_12", 2, -1, "FF0F 0080",
        "the sample 32768 at column 1, row 0 (from 0) is above 4095, the limit of TrueSense_GBRG_WGGW_1_12");
    add("RGB10 at its limit", "RGB10", 1, -1, "FF03 FF03 FF03", "");
    add("RGB10 above it, blue of the second pixel in the second row", "RGB10", 2, 14,
        "FF03FF03FF03 FF03FF03FF03 FFFF FF03FF03FF03 FF03FF030004 FFFF",
        "the sample 1024 at column 1, row 1 (from 0) is above 1023, the limit of RGB10");
    add("BGR12 above it, the first channel", "BGR12", 1, -1, "0010 0000 0000", "the sample 4096 at column 0");
    add("RGB14 above it, green", "RGB14", 1, -1, "0000 FF7F 0000", "the sample 32767 at column 0");
    add("RGB16 has no unused bits", "RGB16", 1, -1, "FFFFFFFFFFFF", "");
    add("YUV422_10 at its limit", "YUV422_10", 2, -1, "FF03 FF03 FF03 FF03", "");
    add("YUV422_10 above it, chroma of the odd pixel", "YUV422_10", 2, -1, "FF03 FF03 FF03 0004",
        "the sample 1024 at column 1, row 0 (from 0) is above 1023, the limit of YUV422_10");
    add("formats of 8 bits have no unused bits", "YUV422_8", 2, -1, "FFFFFFFF", "");
    add("RGB_10_FLEX_Packed's two spare bits may hold anything", "RGB_10_FLEX_Packed", 1, -1, "FFFFFFFF", "");
    add("YUV422_10_PACKED has no unused bits", "YUV422_10_PACKED", 2, -1, "FFFFFFFFFF", "");
    add("Mono10_FLExPacked's spare bits may hold anything", "Mono10_FLExPacked", 3, -1, "004CE0 000C", "");
    add("Mono10Packed's spare bits may hold anything", "Mono10Packed", 2, -1, "FFFFFF", "");
    add("Mono12_FLExPacked has no unused bits", "Mono12_FLExPacked", 2, -1, "FFFFFF", "");
    add("Mono10p has no unused bits", "Mono10p", 4, -1, "FFFFFFFFFF", "");
}

void TestFramesRaw::samplesAboveTheFormatAreNamed()
{
    QFETCH(QString, format);
    QFETCH(quint32, width);
    QFETCH(int, pitch);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, says);
    const quint32 height = pitch < 0 ? 1 : quint32(bytes.size() / pitch);
    const QString text = m_files.error(bytes, rawOptions(format, width, height, pitch));
    QVERIFY2(text.contains(says) && text.isEmpty() == says.isEmpty(), qPrintable("got '" + text + "'"));
}

void TestFramesRaw::wrongLayoutsAreRefused_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<int>("pitch");
    QTest::addColumn<QString>("says");
    const auto add = [](const char* name, const char* format, quint32 width, quint32 height, int pitch,
                        const char* says) {
        QTest::newRow(name) << format << width << height << pitch << says;
    };
    add("an unknown name", "Mono13", 2, 2, -1, "there is no pixel format 'Mono13'; see zorffc formats");
    add("a name in other letters is pointed out", "mono12packed", 2, 2, -1, "did you mean 'Mono12Packed'?");
    add("an empty name", "", 2, 2, -1, "there is no pixel format ''");
    add("width 0", "Mono8", 0, 2, -1, "0x2 is not usable");
    add("height 0", "Mono8", 2, 0, -1, "2x0 is not usable");
    add("width 65536", "Mono8", 65536, 1, -1, "65536x1 is not usable");
    add("the largest width of 32 bits", "RGB16", 0xFFFFFFFF, 1, -1, "is not usable");
    add("a frame above 32 bits", "Mono16", 65535, 65535, -1, "is above the limit");
    add("as many bytes as 32 bits count", "Mono8", 2, 65535, 65537, "takes 4294967295 bytes, the file has 4");
    add("a pitch above 32 bits in all", "Mono8", 2, 65535, 65538, "is above the limit");
    add("a pitch one byte short", "Mono12Packed", 3, 2, 4, "a pitch of 4 bytes is too small");
    add("pitch 0", "Mono8", 2, 2, 0, "a pitch of 0 bytes is too small");
}

void TestFramesRaw::wrongLayoutsAreRefused()
{
    QFETCH(QString, format);
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(int, pitch);
    QFETCH(QString, says);
    const QString text = m_files.error("ABCD", rawOptions(format, width, height, pitch));
    QVERIFY2(text.contains(says), qPrintable("got '" + text + "'"));
    QVERIFY(text.startsWith(QString::fromStdString(m_files.path("frame")) + ": "));
    QVERIFY(!text.contains('\n'));
}

void TestFramesRaw::everyTruncationIsAnError()
{
    const QByteArray bytes(15, 1);
    const zor::FrameOptions options = rawOptions("Mono12Packed", 3, 3);
    QVERIFY(m_files.error(bytes, options).isEmpty());
    QCOMPARE(firstTruncationThatIsNoError(m_files, bytes, options), QString());
}

void TestFramesRaw::aDepthIsNotAsked()
{
    zor::FrameOptions options = rawOptions("Mono8", 2, 2);
    options.depth = 8;
    QVERIFY(m_files.error("ABCD", options).contains("leave --depth out"));
}

QTEST_GUILESS_MAIN(TestFramesRaw)
#include "tst_frames_raw.moc"
