#include "image/Pitch.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/UnpackRow.h"
#include "tests/platform/GuardedBytes.h"
#include "tests/reference/PixelFormats.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <random>
#include <vector>

/// Rows of all formats taken apart into samples.
class TestUnpackRow : public QObject
{
    Q_OBJECT

private slots:
    void everySampleComesFromItsBits_data();
    void everySampleComesFromItsBits();
    void knownBytesGiveKnownSamples_data();
    void knownBytesGiveKnownSamples();
    void codesOutsideTheTableHaveNoRowFunction_data();
    void codesOutsideTheTableHaveNoRowFunction();

private:
    std::mt19937 m_random{133};
};

void TestUnpackRow::everySampleComesFromItsBits_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < int(ZorPixelTypeCount); ++row)
        QTest::newRow(ZorPixelTypeTable[row].name) << row;
}

/// The row ends at the end of its memory and starts at any address; three fillings, so that every sample is
/// also once 0 and once all ones. After the samples the destination stays as it was.
void TestUnpackRow::everySampleComesFromItsBits()
{
    QFETCH(int, row);
    const std::uint32_t code = ZorPixelTypeTable[row].code;
    const reference::PixelFormat& format = reference::pixelFormats()[std::size_t(row)];
    QCOMPARE(zor::samplesPerPixel(code), format.samplesPerPixel);
    const auto unpack = zor::unpackRowFor(code);
    QVERIFY(unpack);
    std::vector<std::uint32_t> widths(40);
    for (std::uint32_t i = 0; i < 40; ++i)
        widths[i] = i + 1;
    widths.insert(widths.end(), {63, 64, 65, 1023, 1024, 1025});
    for (const std::uint32_t width : widths) {
        for (int filling = 0; filling < 4; ++filling) {
            const std::size_t size = format.rowBytes(width);
            QCOMPARE(zor::tightPitch(code, width), std::uint64_t(size));
            const GuardedBytes bytes(size);
            for (std::size_t i = 0; i < size; ++i)
                bytes.data()[i] = filling == 0 ? 0 : filling == 1 ? 0xFF : std::uint8_t(m_random());
            const std::size_t count = std::size_t{width} * format.samplesPerPixel;
            std::vector<std::uint16_t> samples(count + 4, 0xBEEF);
            unpack(bytes.data(), samples.data(), width);
            for (std::size_t i = 0; i < count; ++i) {
                const std::uint32_t expected = format.value(bytes.data(), i / format.samplesPerPixel,
                                                            std::uint32_t(i % format.samplesPerPixel));
                if (samples[i] != expected)
                    QFAIL(qPrintable(QString("width %1, filling %2, sample %3: expected %4, got %5")
                                         .arg(width)
                                         .arg(filling)
                                         .arg(i)
                                         .arg(expected)
                                         .arg(samples[i])));
            }
            for (std::size_t i = count; i < samples.size(); ++i)
                QCOMPARE(samples[i], std::uint16_t(0xBEEF));
        }
    }
}

void TestUnpackRow::knownBytesGiveKnownSamples_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<int>("width");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QVector<int>>("samples");
    const auto bytes = [](const char* hex) { return QByteArray::fromHex(hex); };
    QTest::newRow("BayerRG12Packed: the even pixel's low bits in the high nibble")
        << codeOf("BayerRG12Packed") << 3 << bytes("AB1278 5690") << QVector<int>{0xAB1, 0x782, 0x569};
    QTest::newRow("BayerGR10Packed: two low bits at the foot of each nibble")
        << codeOf("BayerGR10Packed") << 3 << bytes("FF3180 01F0") << QVector<int>{0x3FF, 0x201, 0x007};
    QTest::newRow("BayerBG10p: five pixels end in the seventh byte")
        << codeOf("BayerBG10p") << 5 << bytes("01 08 30 00 01 FF03")
        << QVector<int>{0x001, 0x002, 0x003, 0x004, 0x3FF};
    QTest::newRow("TrueSense of 14 bits: bits above the depth give full scale")
        << codeOf("TrueSense_RGGB_WRRW_3_14") << 2 << bytes("0040 3412") << QVector<int>{0x3FFF, 0x1234};
    QTest::newRow("RGB8 lies as red, green, blue")
        << codeOf("RGB8") << 2 << bytes("010203 FF0080") << QVector<int>{1, 2, 3, 255, 0, 128};
    QTest::newRow("BGRa8 keeps the order of memory and the alpha sample")
        << codeOf("BGRa8") << 1 << bytes("01020304") << QVector<int>{1, 2, 3, 4};
    QTest::newRow("RGB16 is little-endian")
        << codeOf("RGB16") << 1 << bytes("3412 7856 BC9A") << QVector<int>{0x1234, 0x5678, 0x9ABC};
    QTest::newRow("RGB_10_FLEX_Packed: 3 x 10 in 32, the upper two bits mean nothing")
        << codeOf("RGB_10_FLEX_Packed") << 2
        << bytes("010800C0"
                 "FFFFFFFF")
        << QVector<int>{1, 2, 0, 0x3FF, 0x3FF, 0x3FF};
    QTest::newRow("Mono10_FLExPacked: the upper two bits of a field mean nothing")
        << codeOf("Mono10_FLExPacked") << 9 << bytes("004CE0 FF0F80 23C1AB 000440 0108")
        << QVector<int>{0x000, 0x204, 0x3FF, 0x000, 0x123, 0x2BC, 0x000, 0x000, 0x001};
    QTest::newRow("RGB_12_FLEX_Packed: two pixels in nine bytes, one in five")
        << codeOf("RGB_12_FLEX_Packed") << 3 << bytes("BC4A12 785634 AB9CDE 234561 07F0")
        << QVector<int>{0xABC, 0x124, 0x678, 0x345, 0xCAB, 0xDE9, 0x523, 0x614, 0x007};
    QTest::newRow("YUV422_8_UYVY begins with a colour difference")
        << codeOf("YUV422_8_UYVY") << 3 << bytes("1020 3040 5060")
        << QVector<int>{0x10, 0x20, 0x30, 0x40, 0x50, 0x60};
    QTest::newRow("YUV422_10_PACKED: samples of 10 bits in sequence, an odd pixel ends in its third byte")
        << codeOf("YUV422_10_PACKED") << 1 << bytes("FF0700") << QVector<int>{0x3FF, 0x001};
    QTest::newRow("YUV444_8 has four samples a pixel")
        << codeOf("YUV444_8") << 1 << bytes("10203040") << QVector<int>{0x10, 0x20, 0x30, 0x40};
}

void TestUnpackRow::knownBytesGiveKnownSamples()
{
    QFETCH(quint32, code);
    QFETCH(int, width);
    QFETCH(QByteArray, bytes);
    QFETCH(QVector<int>, samples);
    QCOMPARE(std::uint64_t(bytes.size()), zor::tightPitch(code, std::uint32_t(width)));
    std::vector<std::uint16_t> unpacked(std::size_t(samples.size()));
    zor::unpackRowFor(code)(reinterpret_cast<const std::uint8_t*>(bytes.constData()), unpacked.data(),
                            std::size_t(width));
    QCOMPARE(QVector<int>(unpacked.begin(), unpacked.end()), samples);
}

void TestUnpackRow::codesOutsideTheTableHaveNoRowFunction_data()
{
    QTest::addColumn<quint32>("code");
    QTest::newRow("code 0") << 0U;
    QTest::newRow("row 0") << 0x01080100U;
    QTest::newRow("the row after the last") << (0x01080100U | (ZorPixelTypeCount + 1));
    QTest::newRow("row 255") << 0x010801FFU;
    QTest::newRow("a row under another packing byte") << 0x01080201U;
    QTest::newRow("a row under other pixel bits") << 0x01100101U;
    QTest::newRow("a row under another family") << 0x03080101U;
}

void TestUnpackRow::codesOutsideTheTableHaveNoRowFunction()
{
    QFETCH(quint32, code);
    QVERIFY(!zor::unpackRowFor(code));
    QCOMPARE(zor::samplesPerPixel(code), 0U);
}

QTEST_APPLESS_MAIN(TestUnpackRow)
#include "tst_unpack_row.moc"
