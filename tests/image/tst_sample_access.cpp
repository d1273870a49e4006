#include "image/ZorFormatFromCode.h"
#include "tests/image/AccessorProbe.h"
#include "tests/image/BitsOfBytes.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <algorithm>
#include <array>
#include <limits>
#include <random>

/// What a read of a single sample gives and what a write leaves, for every kind of accessor.
class TestSampleAccess : public QObject
{
    Q_OBJECT

private slots:
    void aReadGivesTheRequiredNumber_data();
    void aReadGivesTheRequiredNumber();
    void aWriteLeavesTheRequiredBytes_data();
    void aWriteLeavesTheRequiredBytes();
    void readsAgreeWithTheBits_data();
    void readsAgreeWithTheBits();
    void writesAgreeWithTheBits_data();
    void writesAgreeWithTheBits();
    void packedReadAndWriteHaveDifferentScales();
};

namespace {

/// What a read gives, by the bits that it takes. Bits are counted from the pixel on.
int expectedRead(std::uint32_t kind, const std::uint8_t* pixel, int channel, bool isOdd)
{
    const auto at = static_cast<std::size_t>(channel);
    switch (kind) {
    case 0:
        return asSigned(bitsAt(pixel, 8 * at, 8), 8);
    case 1:
        return static_cast<int>(bitsAt(pixel, 8 * at, 8));
    case 2:
        return asSigned(bitsAt(pixel, 16 * at, 16), 16);
    case 3:
        return static_cast<int>(bitsAt(pixel, 16 * at, 16));
    case 4:
    case 5:
        return asSigned(bitsAt(pixel, 32 * at, 32), 32);
    case 6:
        return static_cast<int>(isOdd ? bitsAt(pixel, 4, 12) : bitsAt(pixel, 0, 10));
    case 7:
        return static_cast<int>(isOdd ? bitsAt(pixel, 4, 12) : bitsAt(pixel, 0, 12));
    case 8:
        return static_cast<int>(bitsAt(pixel, 6, 10));
    case 9:
        return static_cast<int>(bitsAt(pixel, 4, 12));
    default:
        return asSigned(bitsAt(pixel, isOdd ? 8 : 0, 8), 8);
    }
}

void expectedPackedWrite(std::uint8_t* pixel, bool isOdd, std::uint32_t value, std::size_t lowBits)
{
    const std::uint32_t low = value % (1u << lowBits);
    setBitsAt(pixel, isOdd ? 8 : 0, 8, value >> lowBits);
    setBitsAt(pixel, isOdd ? 0 : 12, 4, low);
}

/// The same for what a write leaves.
void expectedWrite(std::uint32_t kind, std::uint8_t* pixel, int channel, bool isOdd, std::uint32_t value)
{
    const auto at = static_cast<std::size_t>(channel);
    switch (kind) {
    case 0:
    case 1:
        return setBitsAt(pixel, 8 * at, 8, value);
    case 2:
    case 3:
        return setBitsAt(pixel, 16 * at, 16, value);
    case 4:
    case 5:
        return setBitsAt(pixel, 32 * at, 32, value);
    case 6:
        if (!isOdd)
            return setBitsAt(pixel, 0, 10, value);
        // Two bits of the byte that both pixels share are joined, not replaced.
        value |= bitsAt(pixel, 4, 2);
        return setBitsAt(pixel, 4, 12, value);
    case 7:
        return setBitsAt(pixel, isOdd ? 4 : 0, 12, value);
    case 8:
        setBitsAt(pixel, 0, 6, 0);
        return setBitsAt(pixel, 6, 10, value);
    case 9:
        setBitsAt(pixel, 0, 4, 0);
        return setBitsAt(pixel, 4, 12, value);
    default:
        return expectedPackedWrite(pixel, isOdd, value, kind == 10 ? 2 : 4);
    }
}

void kindRows()
{
    QTest::addColumn<uint>("kind");
    for (uint kind = 0; kind <= 11; ++kind)
        QTest::addRow("kind %u", kind) << kind;
}

/// A value over the whole range or near an end of it.
int someValue(std::mt19937& random)
{
    constexpr std::array<int, 10> Ends = {0,
                                          1,
                                          -1,
                                          0x3FF,
                                          0xFFF,
                                          0xFFFF,
                                          -0x8000,
                                          0x10000,
                                          std::numeric_limits<int>::max(),
                                          std::numeric_limits<int>::min()};
    const std::uint32_t chance = random();
    return chance % 4 == 0 ? Ends[chance / 4 % Ends.size()] : static_cast<int>(random());
}

} // namespace

void TestSampleAccess::aReadGivesTheRequiredNumber_data()
{
    QTest::addColumn<uint>("kind");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("channel");
    QTest::addColumn<uint>("column");
    QTest::addColumn<int>("value");
    const auto add = [](const char* name, uint kind, const char* bytes, int channel, uint column, int value) {
        QTest::newRow(name) << kind << QByteArray::fromHex(bytes) << channel << column << value;
    };
    add("a signed byte", 0, "80 7F", 0, 0, -128);
    add("a signed byte of channel 1", 0, "80 7F", 1, 0, 127);
    add("an unsigned byte", 1, "C8 0A", 0, 3, 200);
    add("channel 1 of a byte is the byte after it", 1, "C8 0A", 1, 3, 10);
    add("channel 2 of a byte", 1, "C8 0A 63", 2, 3, 99);
    add("a signed word", 2, "00 80", 0, 0, -32768);
    add("an unsigned word", 3, "00 80", 0, 0, 32768);
    add("an unsigned word of channel 2", 3, "00 00 00 00 FF 0F", 2, 0, 4095);
    add("32 bits, signed", 4, "FE FF FF FF", 0, 0, -2);
    add("32 bits, unsigned, as they are", 5, "FE FF FF FF", 0, 0, -2);
    add("32 bits of channel 1", 5, "00 00 00 00 40 E2 01 00", 1, 0, 123456);
    add("kind 6, even", 6, "FF FF", 0, 0, 0x3FF);
    add("kind 6, odd, gives up to 12 bits", 6, "FF FF", 0, 1, 0xFFF);
    add("kind 6 ignores the channel", 6, "34 12 FF FF FF FF", 2, 0, 0x234);
    add("kind 7, even", 7, "34 F2", 0, 2, 0x234);
    add("kind 7, odd", 7, "34 F2", 0, 7, 0xF23);
    add("kind 8", 8, "C0 FF", 0, 0, 0x3FF);
    add("kind 9", 9, "F0 FF", 0, 1, 0xFFF);
    add("10-bit Packed, even", 10, "7F 80", 0, 0, 127);
    add("10-bit Packed, odd", 10, "7F 80", 0, 1, -128);
    add("12-bit Packed, the high byte is 0xFF", 11, "FF 00", 0, 0, -1);
    add("12-bit Packed, odd, the high byte is 0xFF", 11, "00 FF", 0, 5, -1);
    add("of the column the lowest bit counts", 11, "01 02", 0, 0xFFFFFFFE, 1);
    add("of an odd column too", 11, "01 02", 0, 0xFFFFFFFF, 2);
}

void TestSampleAccess::aReadGivesTheRequiredNumber()
{
    QFETCH(uint, kind);
    QFETCH(QByteArray, bytes);
    QFETCH(int, channel);
    QFETCH(uint, column);
    const AccessorProbe accessor(kind);
    const auto* pixel = reinterpret_cast<const std::uint8_t*>(bytes.constData());
    QTEST(accessor.read(pixel, channel, column), "value");
}

void TestSampleAccess::aWriteLeavesTheRequiredBytes_data()
{
    QTest::addColumn<uint>("kind");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("value");
    QTest::addColumn<uint>("column");
    QTest::addColumn<QByteArray>("after");
    const auto add = [](const char* name, uint kind, const char* before, int channel, int value, uint column,
                        const char* after) {
        QTest::newRow(name) << kind << QByteArray::fromHex(before) << channel << value << column
                            << QByteArray::fromHex(after);
    };
    add("a signed byte", 0, "11 22", 0, -2, 0, "FE 22");
    add("an unsigned byte takes the low 8 bits", 1, "11 22", 1, 0x1FF, 0, "11 FF");
    add("a signed word", 2, "11 22", 0, -2, 0, "FE FF");
    add("an unsigned word takes the low 16 bits", 3, "11 22 33 44", 1, 0x7ABCD, 0, "11 22 CD AB");
    add("32 bits", 5, "11 22 33 44", 0, -2, 0, "FE FF FF FF");
    add("kind 6, even", 6, "00 FF", 0, 0x123, 0, "23 FD");
    add("kind 6, odd, keeps bits 4 and 5", 6, "FF 00", 0, 0, 1, "3F 00");
    add("kind 7, odd, clears them", 7, "FF 00", 0, 0, 1, "0F 00");
    add("kind 6, odd, joins them with the value's", 6, "10 00", 0, 2, 1, "30 00");
    add("kind 7, even", 7, "00 FF", 0, 0x123, 0, "23 F1");
    add("kind 7, odd", 7, "FF FF", 0, 0x123, 1, "3F 12");
    add("kind 8", 8, "FF FF", 0, 0x3FF, 0, "C0 FF");
    add("kind 9", 9, "FF FF", 0, 0x123, 1, "30 12");
    add("10-bit Packed, even, 0x3FF", 10, "00 05", 0, 0x3FF, 0, "FF 35");
    add("10-bit Packed, odd, 0x3FF", 10, "A5 00", 0, 0x3FF, 1, "A3 FF");
    add("10-bit Packed, even, clears the whole nibble", 10, "00 FF", 0, 0, 0, "00 0F");
    add("12-bit Packed, even", 11, "00 05", 0, 0xABC, 0, "AB C5");
    add("12-bit Packed, odd", 11, "A5 00", 0, 0xABC, 1, "AC AB");
    add("12-bit Packed ignores the channel", 11, "A5 00 77", 2, 0xABC, 1, "AC AB 77");
    add("a negative value is taken as 16 bits", 11, "00 00", 0, -1, 0, "FF F0");
}

void TestSampleAccess::aWriteLeavesTheRequiredBytes()
{
    QFETCH(uint, kind);
    QFETCH(QByteArray, before);
    QFETCH(int, channel);
    QFETCH(int, value);
    QFETCH(uint, column);
    const AccessorProbe accessor(kind);
    accessor.write(reinterpret_cast<std::uint8_t*>(before.data()), channel, value, column);
    QTEST(before, "after");
}

void TestSampleAccess::readsAgreeWithTheBits_data()
{
    kindRows();
}

void TestSampleAccess::readsAgreeWithTheBits()
{
    QFETCH(uint, kind);
    const AccessorProbe accessor(kind);
    std::mt19937 random(kind + 1);
    for (int round = 0; round < 20000; ++round) {
        std::array<std::uint8_t, 24> bytes;
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(random()); });
        // Also where the address fits no number of 16 or 32 bits.
        const std::uint8_t* pixel = bytes.data() + random() % 5;
        const int channel = static_cast<int>(random() % 4);
        const unsigned column = random();
        const int actual = accessor.read(pixel, channel, column);
        const int expected = expectedRead(kind, pixel, channel, column % 2 == 1);
        QVERIFY2(actual == expected, qPrintable(QString("round %1, channel %2, column %3: %4, expected %5")
                                                    .arg(round)
                                                    .arg(channel)
                                                    .arg(column)
                                                    .arg(actual)
                                                    .arg(expected)));
    }
}

void TestSampleAccess::writesAgreeWithTheBits_data()
{
    kindRows();
}

void TestSampleAccess::writesAgreeWithTheBits()
{
    QFETCH(uint, kind);
    const AccessorProbe accessor(kind);
    std::mt19937 random(kind + 100);
    for (int round = 0; round < 20000; ++round) {
        std::array<std::uint8_t, 24> actual;
        std::generate(actual.begin(), actual.end(), [&] { return static_cast<std::uint8_t>(random()); });
        std::array<std::uint8_t, 24> expected = actual;
        const std::size_t start = random() % 5;
        const int channel = static_cast<int>(random() % 4);
        const unsigned column = random();
        const int value = someValue(random);
        accessor.write(actual.data() + start, channel, value, column);
        expectedWrite(kind, expected.data() + start, channel, column % 2 == 1,
                      static_cast<std::uint32_t>(value));
        const auto wrong = std::mismatch(actual.begin(), actual.end(), expected.begin());
        QVERIFY2(wrong.first == actual.end(),
                 qPrintable(QString("round %1, value %2, channel %3, column %4: byte %5 is %6, expected %7")
                                .arg(round)
                                .arg(value)
                                .arg(channel)
                                .arg(column)
                                .arg(wrong.first - actual.begin() - std::ptrdiff_t(start))
                                .arg(wrong.first == actual.end() ? 0 : *wrong.first)
                                .arg(wrong.second == expected.end() ? 0 : *wrong.second)));
    }
}

// What is read and written back is another pixel value.
void TestSampleAccess::packedReadAndWriteHaveDifferentScales()
{
    for (const std::uint32_t code : {Mono10Packed, Mono12Packed}) {
        const AccessorProbe accessor(ZorFormatFromCode(code));
        const int lowBits = code == Mono10Packed ? 2 : 4;
        for (const unsigned column : {0u, 1u}) {
            for (int value = 0; value < 256 << lowBits; ++value) {
                std::array<std::uint8_t, 2> bytes{};
                accessor.write(bytes.data(), 0, value, column);
                const int high = value >> lowBits;
                QCOMPARE(accessor.read(bytes.data(), 0, column), high < 128 ? high : high - 256);
            }
        }
    }
}

QTEST_APPLESS_MAIN(TestSampleAccess)
#include "tst_sample_access.moc"
