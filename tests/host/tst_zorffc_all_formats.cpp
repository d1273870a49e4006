#include "ZorffcRun.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

using Samples = std::vector<std::uint16_t>;

/// Odd, and no multiple of a colour cell.
constexpr int Width = 15;
constexpr int Height = 9;
const QStringList Size{"--size", "15x9"};

/// Switches every source of unevenness off.
const QStringList Even{"--vignetting", "0", "--column-fpn", "0", "--row-fpn",      "0",
                       "--prnu",       "0", "--dark-noise", "0", "--no-shot-noise"};

bool seesWholePixels(const ZorPixelTypeRow& row)
{
    const PixelFamily family = pixelTypeFamily(row.code);
    return family != PixelFamily::Bayer && family != PixelFamily::TrueSense;
}

/// The depth of the picture that a frame of this depth becomes.
std::uint32_t targetDepth(std::uint32_t depth)
{
    return depth == 10 || depth == 12 || depth == 16 ? depth : 8;
}

} // namespace

/// Every format of the table on its way through the commands.
class tst_zorffc_all_formats : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void anEvenSimulatedFlatStaysEven_data() { addFormats(); }
    void anEvenSimulatedFlatStaysEven();
    void aSimulatedFlatKeepsItsSamples_data() { addFormats(); }
    void aSimulatedFlatKeepsItsSamples();
    void bothOrdersOfPackedAreOneFrame_data();
    void bothOrdersOfPackedAreOneFrame();

private:
    static void addFormats();
    QString path(const QString& name) const { return m_folder.filePath(name); }
    ZorffcRun run(const QStringList& arguments) const { return runZorffc(m_folder.path(), arguments); }

    QTemporaryDir m_folder;
    Samples m_flat14; ///< the default flat of a sensor of 14 bits
};

void tst_zorffc_all_formats::addFormats()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(ZorPixelTypeCount); ++index)
        QTest::newRow(ZorPixelTypeTable[index].name) << index;
}

void tst_zorffc_all_formats::initTestCase()
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

void tst_zorffc_all_formats::bothOrdersOfPackedAreOneFrame_data()
{
    QTest::addColumn<QString>("name");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        if (pixelTypePackingClass(row.code) == PackingClass::Packed)
            QTest::newRow(row.name) << QString(row.name);
}

/// 40 % of full scale everywhere: all gains are 1, and the picture has that grey in every pixel.
void tst_zorffc_all_formats::anEvenSimulatedFlatStaysEven()
{
    QFETCH(int, index);
    const ZorPixelTypeRow& row = ZorPixelTypeTable[index];
    const QStringList dump = QStringList{"f.raw", "--format", row.name} + Size;
    const ZorffcRun simulated =
        run(QStringList{"simulate", "-o", "f.raw", "--format", row.name, "--level", "40"} + Size + Even);
    QVERIFY2(simulated.exitCode == 0, qPrintable(simulated.told()));

    const ZorffcRun computed =
        run(QStringList{"compute"} + dump + QStringList{"--title", "T", "--camera", "C", "-o", "f.ffc"});
    QVERIFY2(computed.exitCode == 0 && computed.err.isEmpty(), qPrintable(computed.told()));
    const QString format = QString("Format           %1 (depth from format %1)").arg(row.name);
    QVERIFY2(computed.out.contains(format), qPrintable(computed.told()));
    QVERIFY2(computed.out.contains("Column gain      1.0000 to 1.0000\nRow gain         1.0000 to 1.0000\n"
                                   "Non-uniformity         before       after\n"
                                   "  column means       0.0000 %    0.0000 %\n"
                                   "  row means          0.0000 %    0.0000 %\n"),
             qPrintable(computed.told()));
    QCOMPARE(readFile(path("f.ffc")).count(",256\n"), Width + Height);

    const ZorffcRun converted = run(QStringList{"convert"} + dump + QStringList{"f.pgm"});
    QVERIFY2(converted.exitCode == 0 && converted.err.isEmpty(), qPrintable(converted.told()));
    const std::uint32_t sampleBits = pixelTypeSampleBits(row.code);
    const std::uint32_t depth = targetDepth(row.depth);
    // 0.4 times 2^n - 1, to nearest, at the bits of the samples; then a shift to the depth.
    const std::uint32_t sample = (((1u << sampleBits) - 1) * 4 + 5) / 10 >> (sampleBits - depth);
    QCOMPARE(readFile(path("f.pgm")),
             pgm(Width, Height, (1 << depth) - 1, Samples(Width * Height, std::uint16_t(sample))));
}

/// Noise and all: where a pixel is one stored value, convert gives the simulator's samples; where a colour
/// cell is interpolated, compute still finds a flat that it can even out.
void tst_zorffc_all_formats::aSimulatedFlatKeepsItsSamples()
{
    QFETCH(int, index);
    const ZorPixelTypeRow& row = ZorPixelTypeTable[index];
    const QStringList dump = QStringList{"f.raw", "--format", row.name} + Size;
    QCOMPARE(run(QStringList{"simulate", "-o", "f.raw", "--format", row.name} + Size).exitCode, 0);
    const std::uint32_t sampleBits = pixelTypeSampleBits(row.code);

    if (!seesWholePixels(row)) {
        const ZorffcRun computed =
            run(QStringList{"compute"} + dump +
                QStringList{"--precision", "12", "--title", "T", "--camera", "C", "-o", "f.ffc"});
        QVERIFY2(computed.exitCode == 0, qPrintable(computed.told()));
        const QRegularExpression figures("  column means +([0-9.]+) % +([0-9.]+) %\n"
                                         "  row means +([0-9.]+) % +([0-9.]+) %\n");
        const QRegularExpressionMatch match = figures.match(computed.out);
        QVERIFY2(match.hasMatch(), qPrintable(computed.told()));
        for (const int before : {1, 3})
            QVERIFY2(match.captured(before).toDouble() > 0.5, qPrintable(computed.out));
        for (const int after : {2, 4})
            QVERIFY2(match.captured(after).toDouble() < 0.3, qPrintable(computed.out));
        return;
    }

    if (sampleBits == 14) {
        const ZorffcRun converted =
            run(QStringList{"convert"} + dump + QStringList{"--depth", "16", "f.pgm"});
        QVERIFY2(converted.exitCode == 0, qPrintable(converted.told()));
        Samples expected;
        for (const std::uint16_t sample : m_flat14)
            expected.push_back(std::uint16_t(sample << 2 | sample >> 12));
        QCOMPARE(readFile(path("f.pgm")), pgm(Width, Height, 65535, expected));
        return;
    }
    const QString depth = QString::number(sampleBits);
    const ZorffcRun converted = run(QStringList{"convert"} + dump + QStringList{"--depth", depth, "f.pgm"});
    QVERIFY2(converted.exitCode == 0, qPrintable(converted.told()));
    QCOMPARE(readFile(path("f.pgm")), readFile(path(depth + ".pgm")));
}

void tst_zorffc_all_formats::bothOrdersOfPackedAreOneFrame()
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

QTEST_GUILESS_MAIN(tst_zorffc_all_formats)
#include "tst_zorffc_all_formats.moc"
