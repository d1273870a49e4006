#include "image/ZorPixelTypeTable.h"
#include "tests/reference/ExpectedFormats.h"

#include <QtTest>

/// The pixel type table row by row.
class TestPixelTypeTable : public QObject
{
    Q_OBJECT

private slots:
    void everyRowIsTheFormatOfItsNumber_data();
    void everyRowIsTheFormatOfItsNumber();
    void codesAreInFull_data();
    void codesAreInFull();
    void aLetterLeadsToItsPlaceInThePixel_data();
    void aLetterLeadsToItsPlaceInThePixel();
    void countIsTheNumberOfRows();
};

void TestPixelTypeTable::everyRowIsTheFormatOfItsNumber_data()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const ExpectedFormat& format : expectedFormats())
        QTest::newRow(format.name.c_str()) << index++;
}

void TestPixelTypeTable::everyRowIsTheFormatOfItsNumber()
{
    QFETCH(int, index);
    const ExpectedFormat expected = expectedFormats()[std::size_t(index)];
    const ZorPixelTypeRow& row = ZorPixelTypeTable[index];
    QCOMPARE(row.name, expected.name.c_str());
    QCOMPARE(row.channelLayout, expected.layout.c_str());
    QCOMPARE(row.channels, expected.channels);
    QCOMPARE(row.depth, expected.depth);
    QCOMPARE(row.phase, expected.phase);
    QCOMPARE(row.code, expected.family << 24 | expected.pixelBits << 16 | expected.packingByte << 8 |
                           std::uint32_t(index + 1));
}

void TestPixelTypeTable::codesAreInFull_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("name");
    QTest::addColumn<quint32>("code");
    const auto add = [](int row, const char* name, quint32 code) {
        QTest::newRow(name) << row << name << code;
    };
    add(1, "Mono8", 0x01080101);
    add(2, "Mono10", 0x01100202);
    add(3, "Mono10p", 0x010A2203);
    add(4, "Mono10Packed", 0x010C1204);
    add(5, "Mono10_FLExPacked", 0x010C3205);
    add(6, "Mono12", 0x01100306);
    add(7, "Mono12p", 0x010C2307);
    add(8, "Mono12Packed", 0x010C1308);
    add(9, "Mono12_FLExPacked", 0x010C3309);
    add(10, "Mono14", 0x0110040A);
    add(11, "Mono16", 0x0110050B);
    add(12, "Mono8_FLExPacked", 0x0108310C);
    add(14, "BayerRG8", 0x0308010E);
    add(25, "BayerGR10p", 0x030A2219);
    add(48, "BayerBG16", 0x03100530);
    add(49, "TrueSense_BGGR_WBBW_0_8", 0x04080131);
    add(52, "TrueSense_BGGR_WBBW_3_8", 0x04080134);
    add(53, "TrueSense_GBRG_WGGW_0_8", 0x04080135);
    add(64, "TrueSense_RGGB_WRRW_3_8", 0x04080140);
    add(65, "TrueSense_BGGR_WBBW_0_10", 0x04100241);
    add(112, "TrueSense_RGGB_WRRW_3_14", 0x04100470);
    add(113, "RGB8", 0x02180171);
    add(114, "BGR8", 0x02180172);
    add(115, "RGBa8", 0x02200173);
    add(116, "BGRa8", 0x02200174);
    add(117, "RGB10", 0x02300275);
    add(118, "BGR10", 0x02300276);
    add(119, "RGB12", 0x02300377);
    add(120, "BGR12", 0x02300378);
    add(121, "RGB14", 0x02300479);
    add(122, "BGR14", 0x0230047A);
    add(123, "RGB16", 0x0230057B);
    add(124, "BGR16", 0x0230057C);
    add(125, "RGB_8_FLEX_Packed", 0x0218317D);
    add(126, "RGB_10_FLEX_Packed", 0x0220327E);
    add(127, "RGB_12_FLEX_Packed", 0x0224337F);
    add(128, "YUV422_8_UYVY", 0x05100180);
    add(129, "YUV422_8", 0x05100181);
    add(130, "YUV422_10", 0x05200282);
    add(131, "YUV422_10_PACKED", 0x05143283);
    add(132, "YUV444_8", 0x05200184);
    add(133, "YCbCr422_8", 0x05100185);
}

void TestPixelTypeTable::codesAreInFull()
{
    QFETCH(int, row);
    QFETCH(QString, name);
    QFETCH(quint32, code);
    QCOMPARE(QString(ZorPixelTypeTable[row - 1].name), name);
    QCOMPARE(ZorPixelTypeTable[row - 1].code, code);
}

void TestPixelTypeTable::aLetterLeadsToItsPlaceInThePixel_data()
{
    everyRowIsTheFormatOfItsNumber_data();
}

void TestPixelTypeTable::aLetterLeadsToItsPlaceInThePixel()
{
    QFETCH(int, index);
    const std::string known = expectedFormats()[std::size_t(index)].knownLetters;
    for (int letter = 0; letter <= 0xFFFF; ++letter) {
        const auto place = letter < 0x80 ? known.find(char(letter)) : std::string::npos;
        const int expected = place == std::string::npos ? -1 : int(place);
        const int actual = ZorPixelTypeTable[index].channelIndex(char16_t(letter));
        if (actual != expected)
            QFAIL(qPrintable(
                QString("letter 0x%1: expected %2, got %3").arg(letter, 4, 16).arg(expected).arg(actual)));
    }
}

void TestPixelTypeTable::countIsTheNumberOfRows()
{
    QCOMPARE(ZorPixelTypeCount, 133U);
    QCOMPARE(expectedFormats().size(), std::size_t(133));
    QCOMPARE(std::size(ZorPixelTypeTable), std::size_t(133));
}

QTEST_APPLESS_MAIN(TestPixelTypeTable)
#include "tst_pixel_type_table.moc"
