#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/NativeCodes.h"
#include "tests/image/TestRecords.h"
#include "tests/platform/GuardedBytes.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <cstring>
#include <functional>
#include <random>

namespace {

/// A record whose pixels follow.
_ZorImage emptyRecord(std::uint32_t code, std::uint32_t width, std::uint32_t height, std::uint32_t pitch)
{
    return recordOf(code, width, height, pitch, nullptr,
                    static_cast<std::size_t>(zor::neededBytes(code, width, height, pitch)));
}

QVector<int> listOf(const zor::NativeCodes& native)
{
    return QVector<int>(native.codes.begin(), native.codes.begin() + native.count);
}

/// A sample's bits from the lowest one up, as places in the row counted from the low bit of its first byte.
QVector<std::uint64_t> fieldAt(std::uint64_t first, std::uint32_t bits)
{
    QVector<std::uint64_t> places;
    for (std::uint32_t i = 0; i < bits; ++i)
        places.append(first + i);
    return places;
}

/// Two pixels in three bytes: high bits in the outer ones, low bits at the foot of the middle one's nibbles.
QVector<std::uint64_t> pairedAt(std::uint64_t x, std::uint32_t depth)
{
    const std::uint64_t group = x / 2 * 24;
    return x % 2 == 0 ? fieldAt(group + 12, depth - 8) + fieldAt(group, 8)
                      : fieldAt(group + 8, depth - 8) + fieldAt(group + 16, 8);
}

/// Where the codes of pixel x of a row of `width` lie, family by family, from the format's name.
QVector<QVector<std::uint64_t>> placesOf(const QString& name, std::uint64_t x, std::uint64_t width)
{
    const auto inSequence = [x](std::uint32_t samples, std::uint32_t field, std::uint32_t pixelBits) {
        QVector<QVector<std::uint64_t>> places;
        for (std::uint32_t i = 0; i < samples; ++i)
            places.append(fieldAt(x * pixelBits + i * field, field));
        return places;
    };
    // Of a pair's four samples the first luma, the first difference, and so on.
    const auto inPairs = [x, width](std::uint32_t field, bool isLumaFirst) {
        const std::uint64_t even = x / 2 * 4;
        const std::uint64_t luma = x * 2 + (isLumaFirst ? 0 : 1);
        const std::uint64_t difference = even + (isLumaFirst ? 1 : 0);
        QVector<QVector<std::uint64_t>> places{fieldAt(luma * field, field),
                                               fieldAt(difference * field, field)};
        if (x / 2 * 2 + 1 < width)
            places.append(fieldAt((difference + 2) * field, field));
        return places;
    };
    if (name.startsWith("YUV422") || name.startsWith("YCbCr422"))
        return inPairs(name == "YUV422_10"          ? 16
                       : name == "YUV422_10_PACKED" ? 10
                                                    : 8,
                       name != "YUV422_8_UYVY");
    if (name == "YUV444_8" || name == "RGBa8" || name == "BGRa8")
        return inSequence(4, 8, 32);
    if (name == "RGB_10_FLEX_Packed")
        return inSequence(3, 10, 32);
    if (name == "RGB_12_FLEX_Packed")
        return inSequence(3, 12, 36);
    if (name == "RGB8" || name == "BGR8" || name == "RGB_8_FLEX_Packed")
        return inSequence(3, 8, 24);
    if (name.startsWith("RGB") || name.startsWith("BGR"))
        return inSequence(3, 16, 48);
    if (name.endsWith("10_FLExPacked") || name.endsWith("12_FLExPacked"))
        return inSequence(1, name.endsWith("10_FLExPacked") ? 10 : 12, 12);
    if (name.endsWith("10Packed") || name.endsWith("12Packed"))
        return {pairedAt(x, name.endsWith("10Packed") ? 10 : 12)};
    if (name.endsWith("p"))
        return name.endsWith("10p") ? inSequence(1, 10, 10) : inSequence(1, 12, 12);
    return name.endsWith("8") || name == "Mono8_FLExPacked" ? inSequence(1, 8, 8) : inSequence(1, 16, 16);
}

QVector<int> readBits(const std::uint8_t* row, const QVector<QVector<std::uint64_t>>& codes)
{
    QVector<int> values;
    for (const auto& places : codes) {
        int value = 0;
        for (int i = 0; i < places.size(); ++i)
            value |= (row[places[i] / 8] >> (places[i] % 8) & 1) << i;
        values.append(value);
    }
    return values;
}

} // namespace

/// The codes of single pixels, in every format.
class TestNativeCodes : public QObject
{
    Q_OBJECT

private slots:
    void knownBytesGiveKnownCodes_data();
    void knownBytesGiveKnownCodes();
    void everyCodeComesFromItsBits_data();
    void everyCodeComesFromItsBits();
    void whatCannotBeReadHasNoCodes_data();
    void whatCannotBeReadHasNoCodes();
};

void TestNativeCodes::knownBytesGiveKnownCodes_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QVector<QVector<int>>>("pixels");
    using Pixels = QVector<QVector<int>>;
    const auto bytes = [](const char* hex) { return QByteArray::fromHex(hex); };
    QTest::newRow("Mono8: a byte is a code") << zor::Mono8 << bytes("00 80 FF") << Pixels{{0}, {128}, {255}};
    QTest::newRow("Mono10: bits above the depth are part of the code")
        << zor::Mono10 << bytes("FF03 0004 34F2") << Pixels{{1023}, {1024}, {0xF234}};
    QTest::newRow("Mono16 is little-endian")
        << zor::Mono16 << bytes("3412 CDAB") << Pixels{{0x1234}, {0xABCD}};
    QTest::newRow("Mono10p: five pixels, the fifth begins a byte again")
        << Mono10p << bytes("01 08 30 00 01 FF 03") << Pixels{{1}, {2}, {3}, {4}, {1023}};
    QTest::newRow("Mono12p: one stream from the low bit, an odd pixel ends it")
        << Mono12p << bytes("23C1AB 650D") << Pixels{{0x123}, {0xABC}, {0xD65}};
    QTest::newRow("Mono10Packed: two low bits at the foot of each nibble, the even pixel's in the high one")
        << Mono10Packed << bytes("AB1278 56F0") << Pixels{{0x2AD}, {0x1E2}, {0x15B}};
    QTest::newRow("Mono12Packed: the even pixel's low bits in the high nibble")
        << Mono12Packed << bytes("AB1278 5690") << Pixels{{0xAB1}, {0x782}, {0x569}};
    QTest::newRow("Mono10_FLExPacked: fields of 12 bits")
        << codeOf("Mono10_FLExPacked") << bytes("FF1320 2100") << Pixels{{0x3FF}, {0x201}, {0x021}};
    QTest::newRow("Mono10_FLExPacked: the upper two bits of a field mean nothing")
        << codeOf("Mono10_FLExPacked") << bytes("004CE0 2104") << Pixels{{0x000}, {0x204}, {0x021}};
    QTest::newRow("Mono12_FLExPacked: fields of 12 bits, all of them used")
        << codeOf("Mono12_FLExPacked") << bytes("FF1F20 2103") << Pixels{{0xFFF}, {0x201}, {0x321}};
    QTest::newRow("Mono8_FLExPacked: bytes")
        << codeOf("Mono8_FLExPacked") << bytes("07F0") << Pixels{{7}, {0xF0}};
    QTest::newRow("BayerRG10Packed: a site has one code")
        << codeOf("BayerRG10Packed") << bytes("FF3180") << Pixels{{0x3FF}, {0x201}};
    QTest::newRow("BayerGB12p: a site has one code")
        << codeOf("BayerGB12p") << bytes("BC1A12") << Pixels{{0xABC}, {0x121}};
    QTest::newRow("TrueSense of 14 bits: a site has one code")
        << codeOf("TrueSense_RGGB_WRRW_3_14") << bytes("FF3F 3412") << Pixels{{0x3FFF}, {0x1234}};
    QTest::newRow("RGB8: red, green, blue")
        << codeOf("RGB8") << bytes("010203 FF0080") << Pixels{{1, 2, 3}, {255, 0, 128}};
    QTest::newRow("BGR8: blue, green, red, as the layout has them")
        << codeOf("BGR8") << bytes("010203") << Pixels{{1, 2, 3}};
    QTest::newRow("BGRa8: blue, green, red, alpha")
        << codeOf("BGRa8") << bytes("01020304 05060708") << Pixels{{1, 2, 3, 4}, {5, 6, 7, 8}};
    QTest::newRow("RGB14: words, bits above the depth are part of the code")
        << codeOf("RGB14") << bytes("3412 7856 BC9A") << Pixels{{0x1234, 0x5678, 0x9ABC}};
    QTest::newRow("RGB_8_FLEX_Packed: bytes")
        << codeOf("RGB_8_FLEX_Packed") << bytes("0A0B0C") << Pixels{{10, 11, 12}};
    QTest::newRow("RGB_10_FLEX_Packed: 3 x 10 in 32, the upper two bits mean nothing")
        << codeOf("RGB_10_FLEX_Packed") << bytes("010830C0 FFFFFF3F")
        << Pixels{{1, 2, 3}, {1023, 1023, 1023}};
    QTest::newRow("RGB_12_FLEX_Packed: an odd pixel begins within a byte")
        << codeOf("RGB_12_FLEX_Packed") << bytes("BC4A12 785634 AB9CDE 234561 07F0")
        << Pixels{{0xABC, 0x124, 0x678}, {0x345, 0xCAB, 0xDE9}, {0x523, 0x614, 0x007}};
    QTest::newRow("YUV422_8_UYVY: two pixels share U and V, an odd last one has no V")
        << codeOf("YUV422_8_UYVY") << bytes("10203040 5060")
        << Pixels{{0x20, 0x10, 0x30}, {0x40, 0x10, 0x30}, {0x60, 0x50}};
    QTest::newRow("YUV422_8: luma first") << codeOf("YUV422_8") << bytes("10203040 5060")
                                          << Pixels{{0x10, 0x20, 0x40}, {0x30, 0x20, 0x40}, {0x50, 0x60}};
    QTest::newRow("YCbCr422_8: luma first")
        << codeOf("YCbCr422_8") << bytes("10203040") << Pixels{{0x10, 0x20, 0x40}, {0x30, 0x20, 0x40}};
    QTest::newRow("YUV422_10: words")
        << codeOf("YUV422_10") << bytes("0100 0200 0300 FF03") << Pixels{{1, 2, 1023}, {3, 2, 1023}};
    QTest::newRow("YUV422_10_PACKED: four samples of 10 bits in five bytes, an odd pixel ends in its third")
        << codeOf("YUV422_10_PACKED") << bytes("0108300001 FF0700")
        << Pixels{{1, 2, 4}, {3, 2, 4}, {0x3FF, 1}};
    QTest::newRow("YUV444_8: each pixel has its own differences, and a fourth channel")
        << codeOf("YUV444_8") << bytes("10203040 50607080") << Pixels{{16, 32, 48, 64}, {80, 96, 112, 128}};
}

/// On the second of two rows with a gap between, so that pitch and row are told apart.
void TestNativeCodes::knownBytesGiveKnownCodes()
{
    QFETCH(quint32, code);
    QFETCH(QByteArray, bytes);
    QFETCH(QVector<QVector<int>>, pixels);
    const auto width = static_cast<std::uint32_t>(pixels.size());
    QCOMPARE(std::uint64_t(bytes.size()), zor::tightPitch(code, width));
    const auto pitch = static_cast<std::uint32_t>(bytes.size()) + 3;
    _ZorImage record = emptyRecord(code, width, 2, pitch);
    const GuardedBytes memory(record.imageSize);
    std::memset(memory.data(), 0x5A, memory.size());
    std::memcpy(memory.data() + pitch, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    record.data = memory.data();
    QVector<QVector<int>> found;
    for (std::uint32_t x = 0; x < width; ++x)
        found.append(listOf(zor::nativeCodes(record, x, 1)));
    QCOMPARE(found, pixels);
}

void TestNativeCodes::everyCodeComesFromItsBits_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < static_cast<int>(ZorPixelTypeCount); ++row)
        QTest::newRow(ZorPixelTypeTable[row].name) << row;
}

/// Every pixel of three rows of every width up to 20, tight or padded, at the end of its memory.
void TestNativeCodes::everyCodeComesFromItsBits()
{
    QFETCH(int, row);
    const std::uint32_t code = ZorPixelTypeTable[row].code;
    const QString name = ZorPixelTypeTable[row].name;
    std::mt19937 random(static_cast<unsigned>(row));
    for (std::uint32_t width = 1; width <= 20; ++width)
        for (const std::uint32_t padding : {0u, 1u, 6u}) {
            const auto pitch = static_cast<std::uint32_t>(zor::tightPitch(code, width)) + padding;
            _ZorImage record = emptyRecord(code, width, 3, pitch);
            const GuardedBytes memory(record.imageSize);
            for (std::size_t i = 0; i < memory.size(); ++i)
                memory.data()[i] = static_cast<std::uint8_t>(random());
            record.data = memory.data();
            for (std::uint32_t y = 0; y < 3; ++y)
                for (std::uint32_t x = 0; x < width; ++x) {
                    const QVector<int> expected =
                        readBits(memory.data() + y * pitch, placesOf(name, x, width));
                    const QVector<int> found = listOf(zor::nativeCodes(record, x, y));
                    if (found != expected)
                        QFAIL(qPrintable(QString("width %1, pitch %2, pixel %3, %4: %5 codes, the first %6; "
                                                 "expected %7, the first %8")
                                             .arg(width)
                                             .arg(pitch)
                                             .arg(x)
                                             .arg(y)
                                             .arg(found.size())
                                             .arg(found.value(0, -1))
                                             .arg(expected.size())
                                             .arg(expected.value(0, -1))));
                }
        }
}

void TestNativeCodes::whatCannotBeReadHasNoCodes_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<quint32>("x");
    QTest::addColumn<quint32>("y");
    QTest::newRow("a column after the row") << 0 << 5u << 0u;
    QTest::newRow("a row below the image") << 0 << 0u << 4u;
    QTest::newRow("the largest place") << 0 << 0xFFFFFFFFu << 0xFFFFFFFFu;
    QTest::newRow("no pixels") << 1 << 0u << 0u;
    QTest::newRow("a format that is not in the table") << 2 << 0u << 0u;
    QTest::newRow("a row under other upper bytes") << 3 << 0u << 0u;
    QTest::newRow("signed samples") << 4 << 0u << 0u;
    QTest::newRow("a pitch below the row") << 5 << 0u << 0u;
    QTest::newRow("a buffer that ends within the row") << 6 << 0u << 3u;
    QTest::newRow("a width of 0") << 7 << 0u << 0u;
    QTest::newRow("a row below the image where the buffer goes on") << 8 << 0u << 3u;
}

void TestNativeCodes::whatCannotBeReadHasNoCodes()
{
    QFETCH(int, fault);
    QFETCH(quint32, x);
    QFETCH(quint32, y);
    _ZorImage record = emptyRecord(zor::Mono10, 5, 4, 10);
    const GuardedBytes memory(record.imageSize);
    std::memset(memory.data(), 1, memory.size());
    record.data = memory.data();
    QCOMPARE(listOf(zor::nativeCodes(record, 0, 3)), QVector<int>{0x0101});
    const std::function<void()> faults[] = {
        [] {},
        [&] { record.data = nullptr; },
        [&] { record.pixelType = 0x01100286; },
        [&] { record.pixelType = 0x01100102; },
        [&] { record.isSigned = 1; },
        [&] { record.pitch = 9; },
        [&] { record.imageSize -= 1; },
        [&] { record.width = 0; },
        [&] { record.height = 3; },
    };
    faults[fault]();
    QCOMPARE(zor::nativeCodes(record, x, y).count, 0u);
    QCOMPARE(zor::nativeCodes(record, x, y).codes, (std::array<std::uint16_t, 4>{}));
}

QTEST_APPLESS_MAIN(TestNativeCodes)
#include "tst_native_codes.moc"
