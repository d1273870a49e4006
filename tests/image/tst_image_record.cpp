#include "image/Pitch.h"
#include "image/ZorImage.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <cstring>

/// The 96 bytes of an image record as other programs see them, and the bytes that rows take.
class TestImageRecord : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldIsAtItsOffset();
    void theFormatBlockIsBytes8To31();
    void aRowTakesItsBitsRoundedUp_data();
    void aRowTakesItsBitsRoundedUp();
    void theLastRowMayBeShort_data();
    void theLastRowMayBeShort();
};

namespace {

template <typename Value> Value valueAt(const _ZorImage& record, std::size_t offset)
{
    Value value;
    std::memcpy(&value, reinterpret_cast<const char*>(&record) + offset, sizeof(value));
    return value;
}

} // namespace

void TestImageRecord::everyFieldIsAtItsOffset()
{
    QCOMPARE(sizeof(_ZorImage), std::size_t(96));
    QCOMPARE(zor::ImageRecordSize, 96U);
    QCOMPARE(zor::ImageRecordVersion, 0x20000U);
    std::uint8_t pixel = 0;
    _ZorImage record = {};
    record.recordSize = 1;
    record.recordVersion = 2;
    record.pixelType = 3;
    record.depth = 4;
    record.isSigned = 5;
    record.packing = 6;
    record.channels = 7;
    record.pixelBits = 8;
    record.reserved32 = 9;
    record.width = 10;
    record.height = 11;
    record.imageSize = 12;
    record.pitch = 13;
    record.reserved56[0] = 14;
    record.reserved56[1] = 15;
    record.reserved56[2] = 16;
    record.data = &pixel;
    record.reserved88 = 17;
    QCOMPARE(valueAt<std::uint32_t>(record, 0), 1U);
    QCOMPARE(valueAt<std::uint32_t>(record, 4), 2U);
    QCOMPARE(valueAt<std::uint32_t>(record, 8), 3U);
    QCOMPARE(valueAt<std::uint32_t>(record, 12), 4U);
    QCOMPARE(int(valueAt<std::uint8_t>(record, 16)), 5);
    QCOMPARE(int(valueAt<std::uint8_t>(record, 17)), 0);
    QCOMPARE(int(valueAt<std::uint16_t>(record, 18)), 0);
    QCOMPARE(valueAt<std::uint32_t>(record, 20), 6U);
    QCOMPARE(valueAt<std::uint32_t>(record, 24), 7U);
    QCOMPARE(valueAt<std::uint32_t>(record, 28), 8U);
    QCOMPARE(valueAt<std::uint32_t>(record, 32), 9U);
    QCOMPARE(valueAt<std::uint32_t>(record, 36), 10U);
    QCOMPARE(valueAt<std::uint32_t>(record, 40), 11U);
    QCOMPARE(valueAt<std::uint32_t>(record, 44), 12U);
    QCOMPARE(valueAt<std::uint32_t>(record, 48), 13U);
    QCOMPARE(valueAt<std::uint64_t>(record, 56), std::uint64_t(14));
    QCOMPARE(valueAt<std::uint64_t>(record, 64), std::uint64_t(15));
    QCOMPARE(valueAt<std::uint64_t>(record, 72), std::uint64_t(16));
    QCOMPARE(valueAt<std::uint8_t*>(record, 80), &pixel);
    QCOMPARE(valueAt<std::uint64_t>(record, 88), std::uint64_t(17));
}

void TestImageRecord::theFormatBlockIsBytes8To31()
{
    _ZorImage record = {};
    const zor::FormatBlock& block = record;
    QCOMPARE(reinterpret_cast<const char*>(&block) - reinterpret_cast<const char*>(&record),
             std::ptrdiff_t(8));
    QCOMPARE(sizeof(zor::FormatBlock), std::size_t(24));
}

void TestImageRecord::aRowTakesItsBitsRoundedUp_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint64>("bytes");
    QTest::newRow("Mono8, one byte a pixel") << codeOf("Mono8") << 1001U << quint64(1001);
    QTest::newRow("Mono12, two bytes a pixel") << codeOf("Mono12") << 1001U << quint64(2002);
    QTest::newRow("Mono10p, four pixels in five bytes") << Mono10p << 4U << quint64(5);
    QTest::newRow("Mono10p, the fifth pixel starts two more bytes") << Mono10p << 5U << quint64(7);
    QTest::newRow("Mono12Packed, a pair in three bytes") << Mono12Packed << 2U << quint64(3);
    QTest::newRow("Mono12Packed, an odd last pixel takes two bytes") << Mono12Packed << 5U << quint64(8);
    QTest::newRow("RGB_12_FLEX_Packed") << codeOf("RGB_12_FLEX_Packed") << 3U << quint64(14);
    QTest::newRow("no overflow at the largest width")
        << codeOf("RGB12") << 0xFFFFFFFFU << quint64(25769803770);
    QTest::newRow("width 0") << codeOf("Mono8") << 0U << quint64(0);
}

void TestImageRecord::aRowTakesItsBitsRoundedUp()
{
    QFETCH(quint32, code);
    QFETCH(quint32, width);
    QFETCH(quint64, bytes);
    QCOMPARE(quint64(zor::tightPitch(code, width)), bytes);
}

void TestImageRecord::theLastRowMayBeShort_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<quint32>("pitch");
    QTest::addColumn<quint64>("bytes");
    constexpr quint32 Mono8 = codeOf("Mono8");
    constexpr quint32 Rgb16 = codeOf("RGB16");
    constexpr quint32 Largest = 0xFFFFFFFF;
    QTest::newRow("one row needs no pitch") << Mono8 << 100U << 1U << 104U << quint64(100);
    QTest::newRow("three rows") << Mono8 << 100U << 3U << 104U << quint64(308);
    QTest::newRow("a last pixel within a byte") << Mono12Packed << 5U << 2U << 16U << quint64(24);
    QTest::newRow("largest pitch and height")
        << Mono8 << 100U << Largest << Largest << quint64(18446744060824649830U);
    QTest::newRow("largest pitch and height with the widest row that fits")
        << Rgb16 << Largest / 6 << Largest << Largest << quint64(18446744065119617022U);
}

void TestImageRecord::theLastRowMayBeShort()
{
    QFETCH(quint32, code);
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(quint32, pitch);
    QFETCH(quint64, bytes);
    QVERIFY(zor::tightPitch(code, width) <= pitch);
    QCOMPARE(quint64(zor::neededBytes(code, width, height, pitch)), bytes);
}

QTEST_APPLESS_MAIN(TestImageRecord)
#include "tst_image_record.moc"
