#include "tests/dialog/DialogData.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const double Infinity = std::numeric_limits<double>::infinity();
const double NoNumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

/// The stages one by one, on frames small enough to work out by hand.
class TestStages : public QObject
{
    Q_OBJECT

private slots:
    void everyStageRefusesWithoutAFrame();
    void columnGainsAimAtTheChosenTarget_data();
    void columnGainsAimAtTheChosenTarget();
    void blackColumns_data();
    void blackColumns();
    void meansAreTruncated();
    void oneRowGivesItsOwnPixelsAsMeans();
    void oneColumnHasGainOneWithoutNormalising();
    void smoothingPairsNeighbours();
    void oneCellUnderBothPasses_data();
    void oneCellUnderBothPasses();
    void shortGainListLeavesTheRestAsItIs();
    void columnMeansFollowTheRowBox_data();
    void columnMeansFollowTheRowBox();
    void spareCellsOfTheResultAreBlack_data();
    void spareCellsOfTheResultAreBlack();
    void otherDepthsAreBlack_data();
    void otherDepthsAreBlack();
    void everyPixelGoesToBlackUnderAGainOfZero_data();
    void everyPixelGoesToBlackUnderAGainOfZero();
    void emptyRegionsPassEveryStage_data();
    void emptyRegionsPassEveryStage();
};

void TestStages::everyStageRefusesWithoutAFrame()
{
    ModalWatch watch;
    DialogProbe d;
    d.m_columnGains = {2.0};
    d.m_rowGains = {2.0};
    QVERIFY(!d.ApplyColumnGains(true));
    QVERIFY(!d.ApplyRowGains());
    QVERIFY(!d.ComputeHistogram());
    QVERIFY(!d.TakeProfileLines(0, -1, -1));
    QVERIFY(!d.TakeProfileLines(1, -1, -1));
    QCOMPARE(int(d.m_columnGains.size()), 1);
    QVERIFY(!d.ComputeColumnGains());
    QVERIFY(d.m_columnGains.empty());
    QVERIFY(!d.ComputeRowGains());
    QVERIFY(d.m_rowGains.empty());
    QVERIFY(!d.RunCorrection());
    QVERIFY(watch.texts.isEmpty());
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestStages::columnGainsAimAtTheChosenTarget_data()
{
    QTest::addColumn<int>("normalize");
    QTest::addColumn<double>("value");
    QTest::addColumn<QVector<double>>("gains");
    QTest::newRow("peak times 1") << 1 << 1.0 << QVector<double>({4.0, 2.0, 1.0});
    QTest::newRow("half the peak") << 1 << 0.5 << QVector<double>({2.0, 1.0, 0.5});
    QTest::newRow("negative values give negative gains") << 1 << -1.0 << QVector<double>({-4.0, -2.0, -1.0});
    QTest::newRow("value 0") << 1 << 0.0 << QVector<double>({0.0, 0.0, 0.0});
    QTest::newRow("mean of the means, the value plays no part")
        << 0 << 7.0 << QVector<double>({700.0 / 3 / 100, 700.0 / 3 / 200, 700.0 / 3 / 400});
}

void TestStages::columnGainsAimAtTheChosenTarget()
{
    QFETCH(int, normalize);
    QFETCH(double, value);
    QFETCH(QVector<double>, gains);
    DialogProbe d;
    d.take(TestFrame(3, 2, 12, [](int x, int) { return 100U << x; }));
    d.m_normalize = normalize;
    d.m_normalizeValue = value;
    QVERIFY(d.ComputeColumnGains());
    QCOMPARE(listed(d.m_columnGains), gains);
}

void TestStages::blackColumns_data()
{
    QTest::addColumn<bool>("allBlack");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("infinite");
    QTest::newRow("one black column gives +infinity") << false << 1.0 << true;
    QTest::newRow("all columns black give no number") << true << 1.0 << false;
    QTest::newRow("a value of 0 gives no number") << false << 0.0 << false;
}

void TestStages::blackColumns()
{
    QFETCH(bool, allBlack);
    QFETCH(double, value);
    QFETCH(bool, infinite);
    DialogProbe d;
    d.take(TestFrame(2, 3, 12, [=](int x, int) { return x == 0 || allBlack ? 0U : 600U; }));
    d.m_normalizeValue = value;
    QVERIFY(d.RunCorrection());
    const double gain = d.m_columnGains.front();
    QVERIFY(infinite ? std::isinf(gain) && gain > 0 : std::isnan(gain));
    for (int y = 0; y < 3; ++y) {
        QCOMPARE(int(d.m_flatX[2 * y]), 0);
        QCOMPARE(int(d.m_flatY[2 * y]), 0);
    }
}

void TestStages::meansAreTruncated()
{
    DialogProbe d;
    d.take(
        TestFrame(2, 2, 12, [](int x, int y) { return static_cast<unsigned>(10 + x + 4 * y + 2 * x * y); }));
    QVERIFY(d.ComputeColumnGains());
    // Pixels 10 11 / 14 17.
    QCOMPARE(items(d.m_columnMean, 2), QVector<int>({12, 14}));
    QCOMPARE(items(d.m_rowMean, 2), QVector<int>({10, 15}));
}

void TestStages::oneRowGivesItsOwnPixelsAsMeans()
{
    DialogProbe d;
    d.take(TestFrame(3, 1, 8, [](int x, int) { return static_cast<unsigned>(50 * (x + 1)); }));
    QVERIFY(d.ComputeColumnGains());
    QCOMPARE(items(d.m_columnMean, 3), QVector<int>({50, 100, 150}));
    QCOMPARE(listed(d.m_columnGains), QVector<double>({3.0, 1.5, 1.0}));
}

void TestStages::oneColumnHasGainOneWithoutNormalising()
{
    DialogProbe d;
    d.take(TestFrame(1, 3, 8, [](int, int y) { return static_cast<unsigned>(50 * (y + 1)); }));
    d.m_normalize = 0;
    QVERIFY(d.ComputeColumnGains());
    QCOMPARE(listed(d.m_columnGains), QVector<double>({1.0}));
}

void TestStages::smoothingPairsNeighbours()
{
    DialogProbe d;
    d.take(TestFrame(3, 1, 12, [](int x, int) { return x == 2 ? 400U : x == 1 ? 300U : 100U; }));
    d.m_pairSmoothing = 1;
    QVERIFY(d.ComputeColumnGains());
    // Columns 0 and 1 share 200, column 2 keeps its own 400 and makes the peak.
    QCOMPARE(listed(d.m_columnGains), QVector<double>({2.0, 2.0, 1.0}));
}

void TestStages::oneCellUnderBothPasses_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<unsigned>("pixel");
    QTest::addColumn<double>("columnGain");
    QTest::addColumn<double>("rowGain");
    QTest::addColumn<int>("afterColumns");
    QTest::addColumn<int>("afterBoth");
    const auto row = [](const char* name, int depth, unsigned pixel, double column, double rowGain, int first,
                        int second) {
        QTest::newRow(name) << depth << pixel << column << rowGain << first << second;
    };
    row("12 bits, 4095 passes a gain under 1", 12, 4095, 0.5, 0.25, 4095, 4095);
    row("12 bits, 4095 passes a gain above 1", 12, 4095, 3.0, 2.0, 4095, 4095);
    row("12 bits, 3000 x 1.5 is limited to 4095", 12, 3000, 1.5, 0.5, 4095, 4095);
    row("12 bits, 4094 x 15.999 has bit 15 set and is stored unlimited", 12, 4094, 15.999, 1.0, 65488, 65488);
    row("12 bits, truncated: 1001 x 1.5", 12, 1001, 1.5, 1.0, 1501, 1501);
    row("12 bits, black under +infinity stays black", 12, 0, Infinity, Infinity, 0, 0);
    row("12 bits, black under no number stays black", 12, 0, NoNumber, NoNumber, 0, 0);
    row("12 bits, a gain of 16 wraps to 0", 12, 1000, 16.0, 1.0, 0, 0);
    row("12 bits, the sign of a gain is dropped", 12, 1000, -1.5, 1.0, 1500, 1500);
    row("8 bits, 200 x 1.5 exceeds 255 until the row pass", 8, 200, 1.5, 1.0, 300, 255);
    row("8 bits, 255 has no exemption in the column pass and rounds to even", 8, 255, 0.5, 1.0, 128, 128);
    row("8 bits, a cell of 255 passes the row pass", 8, 255, 1.0, 0.5, 255, 255);
    row("8 bits, rounds to nearest: 3 x 0.5 is 2", 8, 3, 0.5, 1.0, 2, 2);
    row("8 bits, rounds ties to even: 1 x 0.5 is 0", 8, 1, 0.5, 1.0, 0, 0);
    row("16 bits, 65535 reads as -1 and is not exempt", 16, 65535, 1.5, 1.0, 65534, 65534);
    row("16 bits, results wrap in the column pass", 16, 40000, 2.0, 1.0, 14464, 65535);
    row("16 bits, a result with bit 15 clear comes out white", 16, 1000, 1.0, 1.0, 1000, 65535);
    row("16 bits, a result with bit 15 set stays", 16, 40000, 1.0, 1.0, 40000, 40000);
    row("10 bits, limited to 1023", 10, 900, 2.0, 1.0, 1023, 1023);
}

void TestStages::oneCellUnderBothPasses()
{
    QFETCH(int, depth);
    QFETCH(unsigned, pixel);
    QFETCH(double, columnGain);
    QFETCH(double, rowGain);
    QFETCH(int, afterColumns);
    QFETCH(int, afterBoth);
    DialogProbe d;
    d.take(TestFrame::even(2, 2, depth, pixel));
    d.m_columnGains = {columnGain, columnGain};
    d.m_rowGains = {rowGain, rowGain};
    QVERIFY(d.ApplyColumnGains(true));
    QCOMPARE(items(d.m_flatX, 4), QVector<int>(4, afterColumns));
    QVERIFY(d.ApplyRowGains());
    QCOMPARE(items(d.m_flatX, 4), QVector<int>(4, afterColumns));
    QCOMPARE(items(d.m_flatY, 4), QVector<int>(4, afterBoth));
    QCOMPARE(items(d.m_flatRowMean, 2), QVector<int>(2, afterBoth));
}

void TestStages::shortGainListLeavesTheRestAsItIs()
{
    DialogProbe d;
    d.take(TestFrame::even(4, 3, 12, 100));
    d.m_columnGains = {2.0};
    d.m_rowGains = {3.0, 0.5};
    QVERIFY(d.ApplyColumnGains(true));
    QCOMPARE(items(d.m_flatX, 4), QVector<int>({200, 100, 100, 100}));
    QVERIFY(d.ApplyRowGains());
    QCOMPARE(items(d.m_flatY, 12), QVector<int>({600, 300, 300, 300, 100, 50, 50, 50, 200, 100, 100, 100}));
}

void TestStages::columnMeansFollowTheRowBox_data()
{
    QTest::addColumn<bool>("ticked");
    QTest::addColumn<int>("mean");
    QTest::newRow("box clear: the image after the column pass") << false << 300;
    QTest::newRow("box ticked: the image after both") << true << 450;
}

void TestStages::columnMeansFollowTheRowBox()
{
    QFETCH(bool, ticked);
    QFETCH(int, mean);
    DialogProbe d;
    d.take(TestFrame::even(2, 2, 12, 200));
    d.ui.chBShowY->setChecked(ticked);
    d.m_columnGains = {1.5, 1.5};
    d.m_rowGains = {1.5, 1.5};
    QVERIFY(d.ApplyRowGains());
    QCOMPARE(items(d.m_flatColumnMean, 2), QVector<int>(2, mean));
    QCOMPARE(items(d.m_flatRowMean, 2), QVector<int>(2, 450));
}

void TestStages::spareCellsOfTheResultAreBlack_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("8 bits") << 8;
    QTest::newRow("12 bits") << 12;
    QTest::newRow("16 bits") << 16;
}

void TestStages::spareCellsOfTheResultAreBlack()
{
    QFETCH(int, depth);
    DialogProbe d;
    d.take(TestFrame::even(3, 2, depth, 200));
    QVERIFY(d.RunCorrection());
    QCOMPARE(d.m_flatYStep, 8);
    for (const int spare : {3, 7, 8, 9, 10, 11})
        QCOMPARE(int(d.m_flatY[spare]), 0);
    QVERIFY(d.m_flatY[2] != 0 && d.m_flatY[6] != 0);
    if (depth == 8) {
        for (const int spare : {3, 7, 8, 9, 10, 11})
            QCOMPARE(int(d.m_flatX[spare]), 0);
    }
}

void TestStages::otherDepthsAreBlack_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("result");
    QTest::newRow("1 bit") << 1 << 0;
    QTest::newRow("5 bits") << 5 << 0;
    QTest::newRow("7 bits") << 7 << 0;
    QTest::newRow("17 bits: the row pass makes white of black") << 17 << 65535;
    QTest::newRow("24 bits: the row pass makes white of black") << 24 << 65535;
}

/// Every stage passes: no column gains, means and cells of 0, row gains that are no number.
void TestStages::otherDepthsAreBlack()
{
    QFETCH(int, depth);
    QFETCH(int, result);
    DialogProbe d;
    d.take(TestFrame::even(2, 3, 16, 20));
    QVERIFY(d.RunCorrection());
    d.m_depth = depth;
    QVERIFY(d.RunCorrection());
    QVERIFY(d.m_columnGains.empty());
    QCOMPARE(items(d.m_columnMean, 2), QVector<int>(2, 0));
    QCOMPARE(items(d.m_rowMean, 3), QVector<int>(3, 0));
    QCOMPARE(items(d.m_columnLine, 2), QVector<int>(2, 0));
    QCOMPARE(items(d.m_rowLine, 3), QVector<int>(3, 0));
    QCOMPARE(items(d.m_flatX, 8), QVector<int>(8, 0));
    QCOMPARE(items(d.m_flatColumnMean, 2), QVector<int>(2, 0));
    QCOMPARE(int(d.m_rowGains.size()), 3);
    for (const double gain : d.m_rowGains)
        QVERIFY(std::isnan(gain));
    QCOMPARE(items(d.m_flatY, 6), QVector<int>(6, result));
    QCOMPARE(items(d.m_flatRowMean, 3), QVector<int>(3, result));
    QCOMPARE(d.m_histogramLevels, 1 << depth);
    QCOMPARE(QVector<int>({d.m_imageMin, d.m_imageMax}), QVector<int>({20, 20}));
}

void TestStages::everyPixelGoesToBlackUnderAGainOfZero_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("pixel");
    QTest::addColumn<int>("result");
    QTest::newRow("8 bits") << 8 << 100 << 0;
    QTest::newRow("8 bits, white too: the column pass exempts nothing") << 8 << 255 << 0;
    QTest::newRow("12 bits") << 12 << 1000 << 0;
    QTest::newRow("12 bits, but for white") << 12 << 4095 << 4095;
    QTest::newRow("16 bits: black comes out white") << 16 << 1000 << 65535;
}

void TestStages::everyPixelGoesToBlackUnderAGainOfZero()
{
    QFETCH(int, depth);
    QFETCH(int, pixel);
    QFETCH(int, result);
    DialogProbe d;
    d.take(TestFrame::even(2, 2, depth, static_cast<unsigned>(pixel)));
    d.m_normalizeValue = 0.0;
    QVERIFY(d.RunCorrection());
    QCOMPARE(listed(d.m_columnGains), QVector<double>({0.0, 0.0}));
    QCOMPARE(items(d.m_flatY, 4), QVector<int>(4, result));
}

void TestStages::emptyRegionsPassEveryStage_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("noColumns");
    for (const int depth : {8, 10, 12, 16}) {
        QTest::addRow("%d bits, width 0", depth) << depth << true;
        QTest::addRow("%d bits, height 0", depth) << depth << false;
    }
}

void TestStages::emptyRegionsPassEveryStage()
{
    QFETCH(int, depth);
    QFETCH(bool, noColumns);
    DialogProbe d;
    d.take(TestFrame::even(2, 2, depth, 100));
    (noColumns ? d.m_width : d.m_height) = 0;
    d.m_imageMin = -300;
    d.m_imageMax = 70000;
    d.m_flatMin = -40000;
    d.m_flatMax = 99999;
    QVERIFY(d.RunCorrection());
    QCOMPARE(int(d.m_columnGains.size()), noColumns ? 0 : 2);
    QCOMPARE(int(d.m_rowGains.size()), noColumns ? 2 : 0);
    for (const double gain : noColumns ? d.m_rowGains : d.m_columnGains)
        QVERIFY(std::isnan(gain));
    // Means that are no number are stored as 0, and lines copy them.
    const QVector<int> black(2, 0);
    QCOMPARE(items(noColumns ? d.m_rowMean : d.m_columnMean, 2), black);
    QCOMPARE(items(noColumns ? d.m_flatRowMean : d.m_flatColumnMean, 2), black);
    QCOMPARE(items(noColumns ? d.m_rowLine : d.m_columnLine, 2), black);
    QCOMPARE(items(noColumns ? d.m_flatRowLine : d.m_flatColumnLine, 2), black);
    // The primitives refuse the region: no pixel is counted, and the extremes stay.
    QCOMPARE(std::count(d.m_histogram, d.m_histogram + d.m_histogramLevels, 0),
             std::ptrdiff_t{d.m_histogramLevels});
    QCOMPARE(d.m_histogramPeak, 0);
    QCOMPARE(QVector<int>({d.m_imageMin, d.m_imageMax, d.m_flatMin, d.m_flatMax}),
             QVector<int>({-300, 70000, -40000, 99999}));
    QCOMPARE(QVector<int>({d.m_rangeXMax, d.m_rangeYMin, d.m_rangeYMax}),
             QVector<int>({noColumns ? 0 : 2, -40000, 100000}));
}

QTEST_MAIN(TestStages)
#include "tst_stages.moc"
