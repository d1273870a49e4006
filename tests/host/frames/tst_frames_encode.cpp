#include "host/frames/PackedOrder.h"
#include "host/frames/encode/EncodeFrame.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

/// Scenes as bytes of a pixel format: known scenes against bytes worked out by hand, and what is refused.
class TestFramesEncode : public QObject
{
    Q_OBJECT

private slots:
    void knownScenesGiveKnownBytes_data();
    void knownScenesGiveKnownBytes();
    void linesStandAPitchApart_data();
    void linesStandAPitchApart();
    void theFrameTellsItsFormat();
    void whatDoesNotFitTogetherIsRefused_data();
    void whatDoesNotFitTogetherIsRefused();
    void theWiresOrderIsTheOtherNibble_data();
    void theWiresOrderIsTheOtherNibble();
};

namespace {

using Samples = std::vector<std::uint16_t>;

QByteArray bytesOf(const zor::Frame& frame)
{
    return QByteArray(reinterpret_cast<const char*>(frame.pixels.data()), int(frame.pixels.size())).toHex();
}

} // namespace

Q_DECLARE_METATYPE(Samples)

void TestFramesEncode::knownScenesGiveKnownBytes_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint32>("channels");
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<QByteArray>("bytes");
    const auto grey = [](const char* name, quint32 code, quint32 height, const Samples& samples,
                         const char* bytes) {
        QTest::newRow(name) << code << height << 1U << samples
                            << QByteArray::fromHex(bytes).toHex(); // without the blanks
    };
    const auto colour = [](const char* name, quint32 code, quint32 height, const Samples& samples,
                           const char* bytes) {
        QTest::newRow(name) << code << height << 3U << samples << QByteArray::fromHex(bytes).toHex();
    };
    grey("Mono8", zor::Mono8, 1, {1, 0xFF}, "01 FF");
    grey("Mono10: low byte first", zor::Mono10, 1, {0x3FF, 0x102}, "FF03 0201");
    grey("Mono10p: four samples in five bytes", codeOf("Mono10p"), 1, {0x3FF, 0, 0x3FF, 0}, "FF03F03F00");
    grey("Mono10p: the last byte's other bits are 0", codeOf("Mono10p"), 1, {0x3FF}, "FF03");
    grey("Mono10Packed: the even pixel's low bits in the high nibble", codeOf("Mono10Packed"), 1,
         {0x3FF, 0x201}, "FF3180");
    grey("Mono10_FLExPacked: fields of 12 bits", codeOf("Mono10_FLExPacked"), 1, {0x3FF, 0x001}, "FF1300");
    grey("Mono12p holds 12 bits", codeOf("Mono12p"), 1, {0x412, 0x563}, "123456");
    grey("Mono12Packed of odd width ends with two bytes", codeOf("Mono12Packed"), 1, {0xAB1, 0x782, 0x569},
         "AB1278 5690");
    grey("Mono12_FLExPacked", codeOf("Mono12_FLExPacked"), 1, {0x412, 0x563}, "123456");
    grey("Mono14", codeOf("Mono14"), 1, {0x3FFF, 1}, "FF3F 0100");
    grey("Mono16", zor::Mono16, 1, {0x1234, 0xFFFF}, "3412 FFFF");
    colour("a mono camera sees the luma", zor::Mono8, 1, {255, 0, 0, 0, 255, 0, 0, 0, 255}, "4C 96 1D");
    grey("a grey stays what it is in Bayer", codeOf("BayerRG8"), 2, {1, 2, 3, 4}, "01 02 03 04");
    const Samples nines = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    colour("BayerGR8: G R over B G", codeOf("BayerGR8"), 2, nines, "02 04 09 0B");
    colour("BayerRG8: R G over G B", codeOf("BayerRG8"), 2, nines, "01 05 08 0C");
    colour("BayerGB8: G B over R G", codeOf("BayerGB8"), 2, nines, "02 06 07 0B");
    colour("BayerBG8: B G over G R", codeOf("BayerBG8"), 2, nines, "03 05 08 0A");
    Samples tiles; // 5 x 5 of one colour, whose luma is 19.29
    for (int i = 0; i < 25; ++i)
        tiles.insert(tiles.end(), {10, 20, 40});
    colour("TrueSense_BGGR_WBBW, phase 0", codeOf("TrueSense_BGGR_WBBW_0_8"), 5, tiles,
           "13 28 13 14 13  28 13 14 13 28  13 14 13 0A 13  14 13 0A 13 14  13 28 13 14 13");
    colour("TrueSense_BGGR_WBBW, phase 1 begins a column later", codeOf("TrueSense_BGGR_WBBW_1_8"), 5, tiles,
           "28 13 14 13 28  13 14 13 28 13  14 13 0A 13 14  13 0A 13 14 13  28 13 14 13 28");
    colour("TrueSense_BGGR_WBBW, phase 2 begins a row later", codeOf("TrueSense_BGGR_WBBW_2_8"), 5, tiles,
           "28 13 14 13 28  13 14 13 0A 13  14 13 0A 13 14  13 28 13 14 13  28 13 14 13 28");
    colour("TrueSense_BGGR_WBBW, phase 3 begins a column and a row later", codeOf("TrueSense_BGGR_WBBW_3_8"),
           5, tiles, "13 14 13 28 13  14 13 0A 13 14  13 0A 13 14 13  28 13 14 13 28  13 14 13 28 13");
    const Samples one = {0x11, 0x22, 0x33};
    colour("RGB8", codeOf("RGB8"), 1, one, "112233");
    colour("BGR8", codeOf("BGR8"), 1, one, "332211");
    colour("RGBa8 is opaque", codeOf("RGBa8"), 1, one, "112233FF");
    colour("BGRa8 is opaque", codeOf("BGRa8"), 1, one, "332211FF");
    grey("RGB8 of a grey", codeOf("RGB8"), 1, {7}, "070707");
    colour("BGR16", codeOf("BGR16"), 1, {0x1234, 0x5678, 0x9ABC}, "BC9A 7856 3412");
    colour("RGB_8_FLEX_Packed", codeOf("RGB_8_FLEX_Packed"), 1, one, "112233");
    colour("RGB_10_FLEX_Packed: three times 10 bits in 32", codeOf("RGB_10_FLEX_Packed"), 1,
           {0x3FF, 0, 0x3FF, 0, 0x3FF, 0}, "FF03F03F 00FC0F00");
    colour("RGB_12_FLEX_Packed: two pixels in nine bytes", codeOf("RGB_12_FLEX_Packed"), 1,
           {0x123, 0x456, 0x789, 0xABC, 0xDEF, 0x012}, "236145 89C7AB EF2D01");
    const Samples pair = {255, 0, 0, 0, 0, 255}; // Y 76, Cb 85, Cr 255; Y 29, Cb 255, Cr 107
    colour("YUV422_8: luma of both, chroma of the even pixel", codeOf("YUV422_8"), 1, pair, "4C 55 1D FF");
    colour("YUV422_8_UYVY", codeOf("YUV422_8_UYVY"), 1, pair, "55 4C FF 1D");
    colour("YCbCr422_8", codeOf("YCbCr422_8"), 1, pair, "4C 55 1D FF");
    colour("YUV444_8: Y U V A", codeOf("YUV444_8"), 1, pair, "4C 55 FF FF 1D FF 6B FF");
    grey("YUV422_8: an odd last pixel has Y and the U that comes with it", codeOf("YUV422_8"), 1, {1, 2, 3},
         "0180 0280 0380");
    grey("YUV422_8_UYVY: an odd last pixel has the U that comes with it and Y", codeOf("YUV422_8_UYVY"), 1,
         {1, 2, 3}, "8001 8002 8003");
    grey("YUV422_10: words of 16 bits", codeOf("YUV422_10"), 1, {0x3FF, 1}, "FF030002 01000002");
    grey("YUV422_10_PACKED: four samples in five bytes", codeOf("YUV422_10_PACKED"), 1, {0x3FF, 1},
         "FF 03 18 00 80");
}

void TestFramesEncode::knownScenesGiveKnownBytes()
{
    QFETCH(quint32, code);
    QFETCH(quint32, height);
    QFETCH(quint32, channels);
    QFETCH(Samples, samples);
    QFETCH(QByteArray, bytes);
    const auto width = std::uint32_t(samples.size()) / channels / height;
    const zor::Frame frame = zor::encodeFrame({width, height, channels, samples}, code);
    QCOMPARE(bytesOf(frame), bytes);
}

void TestFramesEncode::linesStandAPitchApart_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<quint32>("pitch");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("Mono8, tight") << zor::Mono8 << 3U << QByteArray("010203040506");
    QTest::newRow("Mono8, padded") << zor::Mono8 << 5U << QByteArray("010203aaaa040506aaaa");
    QTest::newRow("Mono12p: each row starts at a byte") << codeOf("Mono12p") << 5U
                                                        << QByteArray("0120000300"
                                                                      "0450000600");
    QTest::newRow("Mono12Packed, padded") << codeOf("Mono12Packed") << 7U
                                          << QByteArray("0012000030aaaa"
                                                        "0045000060aaaa");
}

void TestFramesEncode::linesStandAPitchApart()
{
    QFETCH(quint32, code);
    QFETCH(quint32, pitch);
    const zor::Frame frame = zor::encodeFrame({3, 2, 1, {1, 2, 3, 4, 5, 6}}, code, {pitch, 0xAA});
    QCOMPARE(frame.pitch, pitch);
    QTEST(bytesOf(frame), "bytes");
}

void TestFramesEncode::theFrameTellsItsFormat()
{
    const zor::Frame frame = zor::encodeFrame({3, 2, 1, Samples(6, 9)}, codeOf("BayerRG12p"));
    QCOMPARE(frame.width, 3U);
    QCOMPARE(frame.height, 2U);
    QCOMPARE(frame.pitch, 5U);
    QCOMPARE(frame.pixelType, codeOf("BayerRG12p"));
    QCOMPARE(frame.depthSource, std::string("format BayerRG12p"));
}

void TestFramesEncode::whatDoesNotFitTogetherIsRefused_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint32>("channels");
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<int>("pitch"); // -1: not given
    QTest::addColumn<QString>("message");
    const Samples two = {1, 2};
    QTest::newRow("row 0") << 0U << 2U << 1U << 1U << two << -1 << "the code 0 is not a pixel format";
    QTest::newRow("row 134") << 0x01080186U << 2U << 1U << 1U << two << -1 << "is not a pixel format";
    QTest::newRow("other upper bytes")
        << 0x01100101U << 2U << 1U << 1U << two << -1 << "is not a pixel format";
    QTest::newRow("width 0") << zor::Mono8 << 0U << 1U << 1U << Samples() << -1 << "without pixels";
    QTest::newRow("height 0") << zor::Mono8 << 1U << 0U << 1U << Samples() << -1 << "without pixels";
    QTest::newRow("two channels") << zor::Mono8 << 1U << 1U << 2U << two << -1 << "1 or 3 channels, not 2";
    QTest::newRow("a sample too few") << zor::Mono8 << 3U << 1U << 1U << two << -1 << "of 3x1 with 2 samples";
    QTest::newRow("a sample too many")
        << zor::Mono8 << 1U << 1U << 1U << two << -1 << "of 1x1 with 2 samples";
    QTest::newRow("sizes whose product has 33 bits")
        << zor::Mono8 << 0x10001U << 0x10000U << 1U << Samples(0x10000) << -1 << "with 65536 samples";
    QTest::newRow("a sample above 10 bits") << codeOf("Mono10p") << 2U << 1U << 1U << Samples{0x3FF, 0x400}
                                            << -1 << "the sample 1024 is above 1023, the limit of Mono10p";
    QTest::newRow("a sample above the 12 bits of Mono12p")
        << codeOf("Mono12p") << 1U << 1U << 1U << Samples{0x1000} << -1 << "above 4095, the limit of Mono12p";
    QTest::newRow("a pitch one byte short")
        << codeOf("Mono12p") << 3U << 1U << 1U << Samples(3) << 4 << "a row of 3 pixels in Mono12p takes 5";
    QTest::newRow("a frame of 4 GiB")
        << zor::Mono8 << 1U << 4U << 1U << Samples(4) << 0x40000000 << "takes 4 GiB or more";
}

void TestFramesEncode::whatDoesNotFitTogetherIsRefused()
{
    QFETCH(quint32, code);
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(quint32, channels);
    QFETCH(Samples, samples);
    QFETCH(int, pitch);
    QFETCH(QString, message);
    zor::EncodeLayout layout;
    if (pitch >= 0)
        layout.pitch = std::uint32_t(pitch);
    try {
        zor::encodeFrame({width, height, channels, samples}, code, layout);
        QFAIL("nothing was refused");
    } catch (const std::invalid_argument& error) {
        QVERIFY2(QString(error.what()).contains(message), error.what());
    }
}

void TestFramesEncode::theWiresOrderIsTheOtherNibble_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QByteArray>("wire");
    QTest::newRow("Mono12Packed") << codeOf("Mono12Packed") << QByteArray("ab2178cd4012aaab2178cd4012aa");
    QTest::newRow("BayerRG12Packed") << codeOf("BayerRG12Packed")
                                     << QByteArray("ab2178cd4012aaab2178cd4012aa");
    QTest::newRow("Mono12p is the same on both sides")
        << codeOf("Mono12p") << QByteArray("b12a78cd4412aab12a78cd4412aa");
}

void TestFramesEncode::theWiresOrderIsTheOtherNibble()
{
    QFETCH(quint32, code);
    QFETCH(QByteArray, wire);
    const Samples line =
        code == codeOf("Mono12p") ? Samples{0xAB1, 0x782, 0x4CD, 0x124} : Samples{0xAB1, 0x782, 0xCD0, 0x124};
    Samples both = line;
    both.insert(both.end(), line.begin(), line.end());
    zor::Frame frame = zor::encodeFrame({4, 2, 1, both}, code, {7, 0xAA});
    const QByteArray record = bytesOf(frame);
    zor::swapPackedOrder(frame);
    QCOMPARE(bytesOf(frame), wire);
    zor::swapPackedOrder(frame);
    QCOMPARE(bytesOf(frame), record);
}

QTEST_APPLESS_MAIN(TestFramesEncode)
#include "tst_frames_encode.moc"
