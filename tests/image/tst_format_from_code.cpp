#include "image/MonoTarget.h"
#include "image/PixelTypeCode.h"
#include "image/ZorFormatFromCode.h"
#include "image/ZorPixelTypeTable.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <cstring>

/// The format block of a code, what a code's bytes say, and the mono format that a frame is brought to.
class TestFormatFromCode : public QObject
{
    Q_OBJECT

private slots:
    void anUnknownRowGivesZeros_data();
    void anUnknownRowGivesZeros();
    void theBlockIsFilledFromRowAndCode_data();
    void theBlockIsFilledFromRowAndCode();
    void theCodesBytesAreRead_data();
    void theCodesBytesAreRead();
    void theTargetGoesByDepth_data();
    void theTargetGoesByDepth();
};

void TestFormatFromCode::anUnknownRowGivesZeros_data()
{
    QTest::addColumn<quint32>("code");
    QTest::newRow("code 0") << 0U;
    QTest::newRow("row byte 0 under valid upper bytes") << 0x01080100U;
    QTest::newRow("row byte 0 under all ones") << 0xFFFFFF00U;
    for (quint32 row = ZorPixelTypeCount + 1; row <= 255; ++row)
        QTest::addRow("row byte %u", row) << (0x01080100U | row);
}

void TestFormatFromCode::anUnknownRowGivesZeros()
{
    QFETCH(quint32, code);
    const zor::FormatBlock block = ZorFormatFromCode(code);
    const zor::FormatBlock zeros = {};
    QCOMPARE(std::memcmp(&block, &zeros, sizeof(block)), 0);
}

void TestFormatFromCode::theBlockIsFilledFromRowAndCode_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<quint32>("packing");
    QTest::addColumn<quint32>("channels");
    QTest::addColumn<quint32>("pixelBits");
    QTest::newRow("Mono8") << 0x01080101U << 8U << 0x0100U << 1U << 8U;
    QTest::newRow("Mono10 takes 16 bits a pixel") << 0x01100202U << 10U << 0x0200U << 1U << 16U;
    QTest::newRow("Mono10Packed takes 12 bits a pixel") << 0x010C1204U << 10U << 0x1200U << 1U << 12U;
    QTest::newRow("Mono12Packed") << 0x010C1308U << 12U << 0x1300U << 1U << 12U;
    QTest::newRow("Mono12p has depth 10 in 12 bits") << 0x010C2307U << 10U << 0x2300U << 1U << 12U;
    QTest::newRow("RGB12") << 0x02300377U << 12U << 0x0300U << 3U << 48U;
    QTest::newRow("YUV444_8 has four channels") << 0x05200184U << 8U << 0x0100U << 4U << 32U;
    QTest::newRow("the last row") << 0x05100185U << 8U << 0x0100U << 3U << 16U;
    QTest::newRow("upper bytes win over the row: Mono8 as 48 bits")
        << 0x02303301U << 8U << 0x3300U << 1U << 48U;
    QTest::newRow("upper bytes all ones") << 0xFFFFFF06U << 12U << 0xFF00U << 1U << 255U;
    QTest::newRow("upper bytes all zero") << 0x00000071U << 8U << 0U << 3U << 0U;
}

void TestFormatFromCode::theBlockIsFilledFromRowAndCode()
{
    QFETCH(quint32, code);
    const zor::FormatBlock block = ZorFormatFromCode(code);
    QCOMPARE(block.pixelType, code);
    QTEST(block.depth, "depth");
    QTEST(block.packing, "packing");
    QTEST(block.channels, "channels");
    QTEST(block.pixelBits, "pixelBits");
    QCOMPARE(int(block.isSigned), 0);
    for (const std::uint8_t padding : block.formatPadding)
        QCOMPARE(int(padding), 0);
}

void TestFormatFromCode::theCodesBytesAreRead_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<quint32>("row");
    QTest::addColumn<quint32>("sampleBits");
    QTest::addColumn<int>("packingClass");
    QTest::addColumn<quint32>("pixelBits");
    QTest::addColumn<int>("family");
    QTest::newRow("Mono8") << 0x01080101U << 1U << 8U << 0 << 8U << 1;
    QTest::newRow("Mono12Packed") << 0x010C1308U << 8U << 12U << 1 << 12U << 1;
    QTest::newRow("Mono10p") << 0x010A2203U << 3U << 10U << 2 << 10U << 1;
    QTest::newRow("Mono14") << 0x0110040AU << 10U << 14U << 0 << 16U << 1;
    QTest::newRow("BayerRG8") << 0x0308010EU << 14U << 8U << 0 << 8U << 3;
    QTest::newRow("YUV422_10_PACKED") << 0x05143283U << 131U << 10U << 3 << 20U << 5;
    QTest::newRow("depth class 5 is 16 bits") << 0x0110050BU << 11U << 16U << 0 << 16U << 1;
    QTest::newRow("depth class 0 is none") << 0x01100001U << 1U << 0U << 0 << 16U << 1;
    QTest::newRow("depth class 6 is none") << 0x01100601U << 1U << 0U << 0 << 16U << 1;
}

void TestFormatFromCode::theCodesBytesAreRead()
{
    QFETCH(quint32, code);
    QTEST(zor::pixelTypeNumber(code), "row");
    QTEST(zor::pixelTypeSampleBits(code), "sampleBits");
    QTEST(int(zor::pixelTypePackingClass(code)), "packingClass");
    QTEST(zor::pixelTypeBits(code), "pixelBits");
    QTEST(int(zor::pixelTypeFamily(code)), "family");
    QCOMPARE(zor::pixelTypePacking(code), code & 0xFF00U);
}

void TestFormatFromCode::theTargetGoesByDepth_data()
{
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<quint32>("target");
    QTest::newRow("10 stays Mono10") << 10U << codeOf("Mono10");
    QTest::newRow("12 stays Mono12") << 12U << codeOf("Mono12");
    QTest::newRow("16 stays Mono16") << 16U << codeOf("Mono16");
    QTest::newRow("8 is Mono8") << 8U << codeOf("Mono8");
    QTest::newRow("14 comes down to Mono8") << 14U << codeOf("Mono8");
    QTest::newRow("0, an unknown format, is Mono8") << 0U << codeOf("Mono8");
    QTest::newRow("9 is Mono8") << 9U << codeOf("Mono8");
    QTest::newRow("11 is Mono8") << 11U << codeOf("Mono8");
    QTest::newRow("32 is Mono8") << 32U << codeOf("Mono8");
}

void TestFormatFromCode::theTargetGoesByDepth()
{
    QFETCH(quint32, depth);
    QTEST(zor::computeFormat(depth), "target");
}

QTEST_APPLESS_MAIN(TestFormatFromCode)
#include "tst_format_from_code.moc"
