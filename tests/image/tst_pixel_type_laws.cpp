#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "tests/reference/PixelFormats.h"

#include <QtTest>

/// The laws between the columns of the pixel type table.
class TestPixelTypeLaws : public QObject
{
    Q_OBJECT

private slots:
    void namesAndCodesAreUnique();
    void codeIsFamilyPixelBitsPackingAndRow_data();
    void codeIsFamilyPixelBitsPackingAndRow();
    void depthIsThatOfThePackingButForOneRow_data();
    void depthIsThatOfThePackingButForOneRow();
    void pixelBitsHoldTheSamples_data();
    void pixelBitsHoldTheSamples();
    void layoutHasAsManyTokensAsItsFamilyWants_data();
    void layoutHasAsManyTokensAsItsFamilyWants();
    void theCellIsTheOneOfTheName_data();
    void theCellIsTheOneOfTheName();
    void packingIsTheOneOfTheName_data();
    void packingIsTheOneOfTheName();
    void phaseIsTheDigitInTheName_data();
    void phaseIsTheDigitInTheName();
    void onlyTheTwoPairedMonoRowsHaveThePairedPacking();
};

namespace {

void addAllRows()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(ZorPixelTypeCount); ++index)
        QTest::newRow(ZorPixelTypeTable[index].name) << index;
}

const ZorPixelTypeRow& fetchedRow()
{
    QFETCH(int, index);
    return ZorPixelTypeTable[index];
}

} // namespace

void TestPixelTypeLaws::namesAndCodesAreUnique()
{
    QSet<QString> names;
    QSet<quint32> codes;
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        names.insert(row.name);
        codes.insert(row.code);
    }
    QCOMPARE(names.size(), int(reference::pixelFormats().size()));
    QCOMPARE(codes.size(), int(reference::pixelFormats().size()));
}

void TestPixelTypeLaws::codeIsFamilyPixelBitsPackingAndRow_data()
{
    addAllRows();
}

/// The depth class is that of the last number in the name, also in the one row whose depth is another; the
/// packing class has a law of its own.
void TestPixelTypeLaws::codeIsFamilyPixelBitsPackingAndRow()
{
    QFETCH(int, index);
    const ZorPixelTypeRow& row = fetchedRow();
    const QString name = row.name;
    const quint32 family = name.startsWith("Mono")        ? reference::Mono
                           : name.startsWith("Bayer")     ? reference::Bayer
                           : name.startsWith("TrueSense") ? reference::TrueSense
                           : name.startsWith('Y')         ? reference::Yuv
                                                          : reference::Rgb;
    const reference::PixelFormat& format = reference::pixelFormats()[std::size_t(index)];
    const quint32 depthClass = (format.heldBits - 6) / 2;
    const quint32 packingClass = quint32(zor::pixelTypePackingClass(row.code));
    QCOMPARE(row.code, family << 24 | format.pixelBits << 16 | packingClass << 12 | depthClass << 8 |
                           quint32(index + 1));
    QCOMPARE(quint32(zor::pixelTypeFamily(row.code)), family);
    QCOMPARE(zor::pixelTypeBits(row.code), format.pixelBits);
    QCOMPARE(zor::pixelTypeSampleBits(row.code), format.heldBits);
    QCOMPARE(zor::pixelTypeNumber(row.code), quint32(index + 1));
}

void TestPixelTypeLaws::depthIsThatOfThePackingButForOneRow_data()
{
    addAllRows();
}

void TestPixelTypeLaws::depthIsThatOfThePackingButForOneRow()
{
    const ZorPixelTypeRow& row = fetchedRow();
    const std::uint32_t sampleBits = zor::pixelTypeSampleBits(row.code);
    QVERIFY(row.depth <= sampleBits);
    if (QString(row.name) == "Mono12p") {
        QCOMPARE(row.depth, 10U);
        QCOMPARE(sampleBits, 12U);
    } else {
        QCOMPARE(row.depth, sampleBits);
    }
}

void TestPixelTypeLaws::pixelBitsHoldTheSamples_data()
{
    addAllRows();
}

void TestPixelTypeLaws::pixelBitsHoldTheSamples()
{
    const ZorPixelTypeRow& row = fetchedRow();
    const std::uint32_t bits = zor::pixelTypeBits(row.code);
    QVERIFY(bits >= 8 && bits <= 48);
    // 4:2:2 formats store two samples a pixel, all others one for each channel.
    const std::uint32_t stored = QString(row.name).contains("422") ? 2 : row.channels;
    QVERIFY(bits >= stored * zor::pixelTypeSampleBits(row.code));
    if (zor::pixelTypePackingClass(row.code) == zor::PackingClass::Unpacked) {
        QCOMPARE(bits, stored * (row.depth > 8 ? 16U : 8U));
    }
}

void TestPixelTypeLaws::layoutHasAsManyTokensAsItsFamilyWants_data()
{
    addAllRows();
}

void TestPixelTypeLaws::layoutHasAsManyTokensAsItsFamilyWants()
{
    const ZorPixelTypeRow& row = fetchedRow();
    const QStringList tokens = QString(row.channelLayout).split(' ');
    QVERIFY(!tokens.contains(QString()));
    switch (zor::pixelTypeFamily(row.code)) {
    case zor::PixelFamily::Mono:
        QCOMPARE(tokens, QStringList{"Y"});
        break;
    case zor::PixelFamily::Rgb:
        QCOMPARE(tokens.size(), int(row.channels));
        for (const QString& token : tokens)
            QCOMPARE(row.channelIndex(token[0].unicode()), tokens.indexOf(token));
        break;
    case zor::PixelFamily::Bayer:
    case zor::PixelFamily::Yuv:
        QCOMPARE(tokens.size(), 4);
        break;
    case zor::PixelFamily::TrueSense:
        QCOMPARE(tokens.size(), 16);
        QCOMPARE(tokens.count("W"), 8);
        break;
    default:
        QFAIL("a family that does not exist");
    }
}

void TestPixelTypeLaws::theCellIsTheOneOfTheName_data()
{
    addAllRows();
}

/// Bayer tokens run round the cell, the lower row from right to left; TrueSense tokens run row by row and do
/// not give the phase; the tokens of the others are a pixel's samples, or those of a pair.
void TestPixelTypeLaws::theCellIsTheOneOfTheName()
{
    const ZorPixelTypeRow& row = fetchedRow();
    const reference::PixelFormat& format = reference::pixelFormats()[zor::pixelTypeNumber(row.code) - 1];
    const QStringList tokens = QString(row.channelLayout).split(' ');
    const zor::PixelFamily family = zor::pixelTypeFamily(row.code);
    for (int i = 0; i < tokens.size(); ++i) {
        const auto n = std::uint32_t(i);
        const char letter = tokens[i] == "Cb" ? 'U' : tokens[i] == "Cr" ? 'V' : tokens[i][0].toLatin1();
        if (family == zor::PixelFamily::Bayer) {
            const bool lower = n >= 2;
            QCOMPARE(letter, format.component(lower ? 3 - n : n, lower ? 1 : 0));
        } else if (family == zor::PixelFamily::TrueSense) {
            const std::uint32_t column = n % 4 + 4 - row.phase % 2;
            const std::uint32_t y = n / 4 + 4 - row.phase / 2;
            QCOMPARE(letter, format.component(column, y));
        } else {
            QCOMPARE(letter, format.component(n / format.samplesPerPixel, 0, n % format.samplesPerPixel));
        }
    }
    // The second green of a Bayer cell is told apart by its name.
    QStringList different = tokens;
    QCOMPARE(different.removeDuplicates() == 0,
             family != zor::PixelFamily::TrueSense && !QString(row.name).contains("422"));
    QCOMPARE(tokens.contains("G2"), family == zor::PixelFamily::Bayer);
}

void TestPixelTypeLaws::packingIsTheOneOfTheName_data()
{
    addAllRows();
}

void TestPixelTypeLaws::packingIsTheOneOfTheName()
{
    const ZorPixelTypeRow& row = fetchedRow();
    const QString name = row.name;
    const std::uint32_t bits = zor::pixelTypeBits(row.code);
    const std::uint32_t sampleBits = zor::pixelTypeSampleBits(row.code);
    const std::uint32_t samples =
        reference::pixelFormats()[zor::pixelTypeNumber(row.code) - 1].samplesPerPixel;
    switch (zor::pixelTypePackingClass(row.code)) {
    case zor::PackingClass::Unpacked:
        QVERIFY(!name.endsWith('p') && !name.contains("packed", Qt::CaseInsensitive));
        QCOMPARE(bits % 8, 0U);
        break;
    case zor::PackingClass::Packed:
        QVERIFY(name.endsWith("Packed") && !name.contains("flex", Qt::CaseInsensitive));
        QVERIFY(sampleBits == 10 || sampleBits == 12);
        QCOMPARE(bits, 12U); // two pixels in three bytes
        break;
    case zor::PackingClass::P:
        QVERIFY(name.endsWith('p'));
        QCOMPARE(bits, sampleBits);
        break;
    case zor::PackingClass::Flex:
        QVERIFY(name.contains("flex", Qt::CaseInsensitive) || name.endsWith("PACKED"));
        // 3 x 10 bits of colour are in 32, 10 bits of mono in 12; all others leave nothing over.
        QCOMPARE(bits - samples * sampleBits,
                 name == "RGB_10_FLEX_Packed" || name == "Mono10_FLExPacked" ? 2U : 0U);
        break;
    default:
        QFAIL("a packing class that does not exist");
    }
}

void TestPixelTypeLaws::phaseIsTheDigitInTheName_data()
{
    addAllRows();
}

void TestPixelTypeLaws::phaseIsTheDigitInTheName()
{
    const ZorPixelTypeRow& row = fetchedRow();
    if (zor::pixelTypeFamily(row.code) != zor::PixelFamily::TrueSense) {
        QCOMPARE(row.phase, 0U);
        return;
    }
    const QStringList parts = QString(row.name).split('_');
    QCOMPARE(parts.size(), 5);
    QCOMPARE(row.phase, parts[3].toUInt());
    QCOMPARE(row.depth, parts[4].toUInt());
}

void TestPixelTypeLaws::onlyTheTwoPairedMonoRowsHaveThePairedPacking()
{
    QStringList mono;
    QStringList others;
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        const std::uint32_t packing = row.code & 0xFF00;
        if (packing == 0x1200 || packing == 0x1300)
            (zor::pixelTypeFamily(row.code) == zor::PixelFamily::Mono ? mono : others).append(row.name);
    }
    QCOMPARE(mono, (QStringList{"Mono10Packed", "Mono12Packed"}));
    QCOMPARE(others,
             (QStringList{"BayerGR10Packed", "BayerRG10Packed", "BayerGB10Packed", "BayerBG10Packed",
                          "BayerGR12Packed", "BayerRG12Packed", "BayerGB12Packed", "BayerBG12Packed"}));
}

QTEST_APPLESS_MAIN(TestPixelTypeLaws)
#include "tst_pixel_type_laws.moc"
