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

/// Switches every source of unevenness off.
const QStringList Even{"--vignetting", "0", "--column-fpn", "0", "--row-fpn",      "0",
                       "--prnu",       "0", "--dark-noise", "0", "--no-shot-noise"};

/// The depth of the picture that a frame of this depth becomes.
std::uint32_t targetDepth(std::uint32_t depth)
{
    return depth == 10 || depth == 12 || depth == 16 ? depth : 8;
}

} // namespace

/// Every format of the table on its way through simulate, compute and convert, without noise.
class TestZorffcAllFormats : public QObject
{
    Q_OBJECT

private slots:
    void anEvenSimulatedFlatStaysEven_data();
    void anEvenSimulatedFlatStaysEven();

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    ZorffcRun run(const QStringList& arguments) const { return runZorffc(m_folder.path(), arguments); }

    QTemporaryDir m_folder;
};

void TestZorffcAllFormats::anEvenSimulatedFlatStaysEven_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(ZorPixelTypeCount); ++index)
        QTest::newRow(ZorPixelTypeTable[index].name) << index;
}

/// 40 % of full scale everywhere: all gains are 1, and the picture has that grey in every pixel.
void TestZorffcAllFormats::anEvenSimulatedFlatStaysEven()
{
    QFETCH(int, index);
    const ZorPixelTypeRow& row = ZorPixelTypeTable[index];
    const QStringList dump = QStringList{"f.raw", "--format", row.name} + Size;
    const ZorffcRun simulated =
        run(QStringList{"simulate", "-o", "f.raw", "--format", row.name, "--level", "40"} + Size + Even);
    QVERIFY2(simulated.exitCode == 0, qPrintable(simulated.transcript()));

    const ZorffcRun computed =
        run(QStringList{"compute"} + dump + QStringList{"--title", "T", "--camera", "C", "-o", "f.ffc"});
    QVERIFY2(computed.exitCode == 0 && computed.err.isEmpty(), qPrintable(computed.transcript()));
    const QString format = QString("Format           %1 (depth from format %1)").arg(row.name);
    QVERIFY2(computed.out.contains(format), qPrintable(computed.transcript()));
    QVERIFY2(
        computed.out.contains("Column gain      1.0000 to 1.0000 computed, 1.0000 to 1.0000 in the file\n"
                              "Row gain         1.0000 to 1.0000 computed, 1.0000 to 1.0000 in the file\n"
                              "Non-uniformity         before       after\n"
                              "  column means       0.0000 %    0.0000 %\n"
                              "  row means          0.0000 %    0.0000 %\n"),
        qPrintable(computed.transcript()));
    QCOMPARE(readFile(path("f.ffc")).count(",256\n"), Width + Height);

    const ZorffcRun converted = run(QStringList{"convert"} + dump + QStringList{"f.pgm"});
    QVERIFY2(converted.exitCode == 0 && converted.err.isEmpty(), qPrintable(converted.transcript()));
    const std::uint32_t sampleBits = zor::pixelTypeSampleBits(row.code);
    const std::uint32_t depth = targetDepth(row.depth);
    // 0.4 times 2^n - 1, to nearest, at the bits of the samples; then a shift to the depth.
    const std::uint32_t sample = (((1u << sampleBits) - 1) * 4 + 5) / 10 >> (sampleBits - depth);
    QCOMPARE(readFile(path("f.pgm")), pgm(Width, Height, (1 << depth) - 1,
                                          std::vector<std::uint16_t>(Width * Height, std::uint16_t(sample))));
}

QTEST_GUILESS_MAIN(TestZorffcAllFormats)
#include "tst_zorffc_all_formats.moc"
