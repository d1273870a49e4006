#include "tests/host/ZorffcRun.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Odd, and no multiple of a colour cell.
constexpr int Width = 15;
constexpr int Height = 9;
const QStringList Size{"--size", "15x9"};

/// Whether a pixel sees one colour filter of a cell alone.
bool isMosaic(const ZorPixelTypeRow& row)
{
    const zor::PixelFamily family = zor::pixelTypeFamily(row.code);
    return family == zor::PixelFamily::Bayer || family == zor::PixelFamily::TrueSense;
}

} // namespace

/// A simulated flat with all its noise in every format of the table.
class TestZorffcFormatSamples : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aSimulatedFlatKeepsItsSamples_data() { addFormats(false); }
    void aSimulatedFlatKeepsItsSamples();
    void computeEvensOutAMosaic_data() { addFormats(true); }
    void computeEvensOutAMosaic();
    void bothOrdersOfPackedAreOneFrame_data();
    void bothOrdersOfPackedAreOneFrame();

private:
    static void addFormats(bool mosaics);
    QString path(const QString& name) const { return m_folder.filePath(name); }
    ZorffcRun run(const QStringList& arguments) const { return runZorffc(m_folder.path(), arguments); }

    QTemporaryDir m_folder;
    std::vector<std::uint16_t> m_flat14; ///< the default flat of a sensor of 14 bits
};

void TestZorffcFormatSamples::addFormats(bool mosaics)
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(ZorPixelTypeCount); ++index)
        if (isMosaic(ZorPixelTypeTable[index]) == mosaics)
            QTest::newRow(ZorPixelTypeTable[index].name) << index;
}

void TestZorffcFormatSamples::initTestCase()
{
    QVERIFY(m_folder.isValid());
    for (const QString depth : {"8", "10", "12", "16"})
        QCOMPARE(run(QStringList{"simulate", "-o", depth + ".pgm", "--depth", depth} + Size).exitCode, 0);
    // No PGM of the simulator has 14 bits; the plain words of this dump are its samples.
    QCOMPARE(run(QStringList{"simulate", "-o", "14.raw", "--format", "Mono14"} + Size).exitCode, 0);
    const QByteArray words = readFile(path("14.raw"));
    QCOMPARE(words.size(), 2 * Width * Height);
    for (int i = 0; i < words.size(); i += 2)
        m_flat14.push_back(std::uint16_t(std::uint8_t(words[i]) | std::uint8_t(words[i + 1]) << 8));
}

void TestZorffcFormatSamples::bothOrdersOfPackedAreOneFrame_data()
{
    QTest::addColumn<QString>("name");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        if (zor::pixelTypePackingClass(row.code) == zor::PackingClass::Packed)
            QTest::newRow(row.name) << QString(row.name);
}

/// Where a pixel has a value of its own, convert gives the simulator's samples.
void TestZorffcFormatSamples::aSimulatedFlatKeepsItsSamples()
{
    QFETCH(int, index);
    const ZorPixelTypeRow& row = ZorPixelTypeTable[index];
    const QStringList format = QStringList{"--format", row.name} + Size;
    QCOMPARE(run(QStringList{"simulate", "-o", "f.raw"} + format).exitCode, 0);
    const std::uint32_t sampleBits = zor::pixelTypeSampleBits(row.code);
    const QString depth = QString::number(sampleBits == 14 ? 16 : sampleBits);
    const ZorffcRun converted = run(QStringList{"convert", "f.raw", "f.pgm", "--depth", depth} + format);
    QVERIFY2(converted.exitCode == 0, qPrintable(converted.transcript()));

    QByteArray expected = readFile(path(depth + ".pgm"));
    if (sampleBits == 14) {
        std::vector<std::uint16_t> broughtUp;
        for (const std::uint16_t sample : m_flat14)
            broughtUp.push_back(std::uint16_t(sample << 2 | sample >> 12));
        expected = pgm(Width, Height, 65535, broughtUp);
    }
    QCOMPARE(readFile(path("f.pgm")), expected);
}

/// Where colour cells are interpolated, noise spreads, and compute still finds a flat that it can even out.
void TestZorffcFormatSamples::computeEvensOutAMosaic()
{
    QFETCH(int, index);
    const QStringList format = QStringList{"--format", ZorPixelTypeTable[index].name} + Size;
    QCOMPARE(run(QStringList{"simulate", "-o", "f.raw"} + format).exitCode, 0);
    const ZorffcRun computed = run(
        QStringList{"compute", "f.raw", "--precision", "12", "--title", "T", "--camera", "C", "-o", "f.ffc"} +
        format);
    QVERIFY2(computed.exitCode == 0, qPrintable(computed.transcript()));
    const QRegularExpression figures("  column means +([0-9.]+) % +([0-9.]+) %\n"
                                     "  row means +([0-9.]+) % +([0-9.]+) %\n");
    const QRegularExpressionMatch match = figures.match(computed.out);
    QVERIFY2(match.hasMatch(), qPrintable(computed.transcript()));
    for (const int before : {1, 3})
        QVERIFY2(match.captured(before).toDouble() > 0.5, qPrintable(computed.out));
    for (const int after : {2, 4})
        QVERIFY2(match.captured(after).toDouble() < 0.3, qPrintable(computed.out));
}

void TestZorffcFormatSamples::bothOrdersOfPackedAreOneFrame()
{
    QFETCH(QString, name);
    const QStringList format = QStringList{"--format", name} + Size;
    const QStringList record{"--packed-order", "record"};
    QCOMPARE(run(QStringList{"simulate", "-o", "w.raw"} + format).exitCode, 0);
    QCOMPARE(run(QStringList{"simulate", "-o", "r.raw"} + format + record).exitCode, 0);
    QVERIFY(readFile(path("w.raw")) != readFile(path("r.raw")));

    QCOMPARE(run(QStringList{"convert", "w.raw", "w.pgm"} + format).exitCode, 0);
    QCOMPARE(run(QStringList{"convert", "r.raw", "r.pgm"} + format + record).exitCode, 0);
    QVERIFY(readFile(path("w.pgm")).startsWith("P5\n15 9\n"));
    QCOMPARE(readFile(path("w.pgm")), readFile(path("r.pgm")));
}

QTEST_GUILESS_MAIN(TestZorffcFormatSamples)
#include "tst_zorffc_format_samples.moc"
