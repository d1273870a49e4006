#include "tests/support/DialogProbe.h"

#include <QTest>

#include <numeric>
#include <utility>

namespace {

QVector<int> extremesOf(const DialogProbe& d)
{
    return {d.m_imageMin, d.m_imageMax, d.m_flatMin, d.m_flatMax};
}

void setExtremes(DialogProbe& d, const QVector<int>& extremes)
{
    d.m_imageMin = extremes[0];
    d.m_imageMax = extremes[1];
    d.m_flatMin = extremes[2];
    d.m_flatMax = extremes[3];
}

} // namespace

/// The histogram's peak and the axes of the plots.
class TestRanges : public QObject
{
    Q_OBJECT

private slots:
    void histogramCountsWithoutTheTopLevel();
    void histogramPeakFollowsTheLargestBin_data();
    void histogramPeakFollowsTheLargestBin();
    void histogramIgnoresTheEnds_data();
    void histogramIgnoresTheEnds();
    void rangesAreMultiplesOfTwenty_data();
    void rangesAreMultiplesOfTwenty();
    void rangeOfTheResultFollowsTheDepth_data();
    void rangeOfTheResultFollowsTheDepth();
    void extremesOfTheFrame_data();
    void extremesOfTheFrame();
    void extremesOfTheResult_data();
    void extremesOfTheResult();
    void missingImageKeepsItsExtremes_data();
    void missingImageKeepsItsExtremes();
    void imageAfterTheColumnPassDecidesWhetherTheResultCounts_data();
    void imageAfterTheColumnPassDecidesWhetherTheResultCounts();
    void resultIsReadWithTheStepOfTheColumnPass_data();
    void resultIsReadWithTheStepOfTheColumnPass();
};

void TestRanges::histogramCountsWithoutTheTopLevel()
{
    DialogProbe d;
    d.take(TestFrame(4, 1, 8, [](int x, int) { return x == 0 ? 0U : x == 1 ? 254U : 255U; }));
    QVERIFY(d.ComputeHistogram());
    QCOMPARE(d.m_histogramLevels, 256);
    QCOMPARE(d.m_histogram[0], 1);
    QCOMPARE(d.m_histogram[254], 1);
    QCOMPARE(d.m_histogram[255], 0);

    d.take(TestFrame(3, 1, 16, [](int x, int) { return x == 0 ? 0x8000U : x == 1 ? 0xFFFFU : 0x7FFFU; }));
    QVERIFY(d.ComputeHistogram());
    QCOMPARE(d.m_histogramLevels, 65536);
    QCOMPARE(std::accumulate(d.m_histogram, d.m_histogram + 65536, 0), 1);
    QCOMPARE(d.m_histogram[0x7FFF], 1);
}

void TestRanges::histogramPeakFollowsTheLargestBin_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("floor");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("100 from 0 rises by a grain of 20") << 10 << 10 << 0 << 0 << 120;
    QTest::newRow("100 again leaves 120") << 10 << 10 << 0 << 120 << 120;
    QTest::newRow("50 on 120 falls and rounds up to 60") << 10 << 5 << 0 << 120 << 60;
    QTest::newRow("15000 takes a grain of 10000") << 150 << 100 << 0 << 0 << 20000;
    QTest::newRow("2000 takes a grain of 500") << 50 << 40 << 0 << 0 << 2500;
    QTest::newRow("500 takes a grain of 100") << 25 << 20 << 0 << 0 << 600;
    QTest::newRow("100 above a floor of -1 takes a grain of 100") << 10 << 10 << -1 << 0 << 200;
    QTest::newRow("500 above a floor of 450 takes a grain of 20") << 25 << 20 << 450 << 0 << 520;
}

void TestRanges::histogramPeakFollowsTheLargestBin()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, floor);
    QFETCH(int, before);
    QFETCH(int, after);
    for (const int depth : {8, 12}) {
        DialogProbe d;
        d.take(TestFrame::even(width, height, depth, 77));
        QCOMPARE(d.m_histogramFloor, 0);
        d.m_histogramFloor = floor;
        d.m_histogramPeak = before;
        QVERIFY(d.ComputeHistogram());
        QCOMPARE(d.m_histogramFloor, floor);
        QCOMPARE(d.m_histogram[77], width * height);
        QCOMPARE(d.m_histogramPeak, after);
    }
}

void TestRanges::histogramIgnoresTheEnds_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<unsigned>("value");
    QTest::newRow("8 bits, all black") << 8 << 0U;
    QTest::newRow("8 bits, all white") << 8 << 255U;
    QTest::newRow("12 bits, all black") << 12 << 0U;
    QTest::newRow("16 bits, all with bit 15 set") << 16 << 0x8000U;
}

void TestRanges::histogramIgnoresTheEnds()
{
    QFETCH(int, depth);
    QFETCH(unsigned, value);
    DialogProbe d;
    d.take(TestFrame::even(10, 10, depth, value));
    QVERIFY(d.ComputeHistogram());
    QCOMPARE(d.m_histogramPeak, 0);
}

void TestRanges::rangesAreMultiplesOfTwenty_data()
{
    QTest::addColumn<QVector<int>>("extremes"); // image min, image max, flat min, flat max
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::newRow("37 to 241") << QVector<int>({37, 200, 50, 241}) << 20 << 260;
    QTest::newRow("exact multiples stay") << QVector<int>({0, 100, 20, 240}) << 0 << 240;
    QTest::newRow("a negative minimum") << QVector<int>({10, 100, -5, 90}) << -20 << 100;
    QTest::newRow("one value, a multiple: no span") << QVector<int>({40, 40, 40, 40}) << 40 << 40;
}

void TestRanges::rangesAreMultiplesOfTwenty()
{
    QFETCH(QVector<int>, extremes);
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    // Without images the extremes keep what they hold.
    DialogProbe d;
    setExtremes(d, extremes);
    d.m_width = 9;
    d.ComputeRanges();
    QCOMPARE(extremesOf(d), extremes);
    QCOMPARE(d.m_rangeYMin, minimum);
    QCOMPARE(d.m_rangeYMax, maximum);
    QCOMPARE(d.m_rangeXMin, 0);
    QCOMPARE(d.m_rangeXMax, 9);
}

void TestRanges::rangeOfTheResultFollowsTheDepth_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("flatMin");
    QTest::addColumn<int>("flatMax");
    QTest::addColumn<int>("rangeMin");
    QTest::addColumn<int>("rangeMax");
    QTest::newRow("8 bits: above 255, from the column pass") << 8 << 300 << 300 << 200 << 300;
    QTest::newRow("10 bits: from both passes") << 10 << 150 << 150 << 140 << 200;
    QTest::newRow("12 bits: from both passes") << 12 << 150 << 150 << 140 << 200;
    QTest::newRow("16 bits: white reads as -1") << 16 << -1 << -1 << -20 << 200;
}

void TestRanges::rangeOfTheResultFollowsTheDepth()
{
    QFETCH(int, depth);
    QFETCH(int, flatMin);
    QFETCH(int, flatMax);
    QFETCH(int, rangeMin);
    QFETCH(int, rangeMax);
    DialogProbe d;
    d.take(TestFrame::even(2, 2, depth, 200));
    d.m_columnGains = {1.5, 1.5};
    d.m_rowGains = {0.5, 0.5};
    QVERIFY(d.ApplyRowGains());
    d.ComputeRanges();
    QCOMPARE(d.m_imageMin, 200);
    QCOMPARE(d.m_imageMax, 200);
    QCOMPARE(d.m_flatMin, flatMin);
    QCOMPARE(d.m_flatMax, flatMax);
    QCOMPARE(d.m_rangeYMin, rangeMin);
    QCOMPARE(d.m_rangeYMax, rangeMax);
}

void TestRanges::extremesOfTheFrame_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QVector<int>>("pixels");
    QTest::addColumn<QVector<int>>("extremes"); // least, greatest
    QTest::addColumn<QVector<int>>("range");    // with flat extremes of 0
    QTest::newRow("8 bits: unsigned")
        << 8 << QVector<int>({200, 255, 3, 9}) << QVector<int>({3, 255}) << QVector<int>({0, 260});
    QTest::newRow("12 bits") << 12 << QVector<int>({200, 4095, 30, 41}) << QVector<int>({30, 4095})
                             << QVector<int>({0, 4100});
    QTest::newRow("16 bits: 0xFFFB counts as -5")
        << 16 << QVector<int>({0xFFFB, 100, 41, 90}) << QVector<int>({-5, 100}) << QVector<int>({-20, 100});
    QTest::newRow("16 bits: 0xFFFF counts as -1")
        << 16 << QVector<int>({100, 0xFFFF, 101, 90}) << QVector<int>({-1, 101}) << QVector<int>({-20, 120});
    QTest::newRow("16 bits: 0x8000 is the least, 0x7FFF the greatest")
        << 16 << QVector<int>({0x8000, 0x7FFF, 0, 1}) << QVector<int>({-32768, 32767})
        << QVector<int>({-32780, 32780});
}

void TestRanges::extremesOfTheFrame()
{
    QFETCH(int, depth);
    QFETCH(QVector<int>, pixels);
    QFETCH(QVector<int>, extremes);
    QFETCH(QVector<int>, range);
    DialogProbe d;
    d.take(TestFrame(2, 2, depth, [&](int x, int y) { return static_cast<unsigned>(pixels[2 * y + x]); }));
    d.ComputeRanges();
    QCOMPARE(extremesOf(d), extremes + QVector<int>({0, 0}));
    QCOMPARE(QVector<int>({d.m_rangeYMin, d.m_rangeYMax}), range);
    QCOMPARE(QVector<int>({d.m_rangeXMin, d.m_rangeXMax}), QVector<int>({0, 2}));
}

void TestRanges::extremesOfTheResult_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QVector<int>>("flat"); // least, greatest
    // Columns of 50 and 100 under gains of 1 and 2, then row gains of 0.5 and 0.25.
    QTest::newRow("8 bits: after the column pass") << 8 << QVector<int>({50, 200});
    QTest::newRow("12 bits: after both passes") << 12 << QVector<int>({12, 100});
    QTest::newRow("16 bits: after both passes, where all is white") << 16 << QVector<int>({-1, -1});
}

void TestRanges::extremesOfTheResult()
{
    QFETCH(int, depth);
    QFETCH(QVector<int>, flat);
    DialogProbe d;
    d.take(TestFrame(2, 2, depth, [](int x, int) { return x == 0 ? 50U : 100U; }));
    d.m_columnGains = {1.0, 2.0};
    d.m_rowGains = {0.5, 0.25};
    QVERIFY(d.ApplyRowGains());
    d.ComputeRanges();
    QCOMPARE(extremesOf(d), QVector<int>({50, 100}) + flat);
}

void TestRanges::missingImageKeepsItsExtremes_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("flatX");
    QTest::newRow("8 bits, no image after the column pass") << 8 << false;
    QTest::newRow("12 bits, no image after the column pass") << 12 << false;
    QTest::newRow("12 bits, the image after the column pass alone") << 12 << true;
    QTest::newRow("16 bits, the image after the column pass alone") << 16 << true;
}

void TestRanges::missingImageKeepsItsExtremes()
{
    QFETCH(int, depth);
    QFETCH(bool, flatX);
    DialogProbe d;
    d.take(TestFrame::even(2, 2, depth, 200));
    d.m_columnGains = {1.0, 1.0};
    if (flatX)
        QVERIFY(d.ApplyColumnGains(true));
    setExtremes(d, {7, 8, -37, 1001});
    d.ComputeRanges();
    QCOMPARE(extremesOf(d), QVector<int>({200, 200, -37, 1001}));
    QCOMPARE(d.m_rangeYMin, -40);
    QCOMPARE(d.m_rangeYMax, 1020);
}

void TestRanges::imageAfterTheColumnPassDecidesWhetherTheResultCounts_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("flatX"); // else the image after both passes is there alone
    QTest::addColumn<QVector<int>>("flat");
    QTest::newRow("8 bits, the image after the column pass alone") << 8 << true << QVector<int>({300, 300});
    QTest::newRow("8 bits, the image after both passes alone") << 8 << false << QVector<int>({-37, 1001});
    QTest::newRow("12 bits, the image after both passes alone") << 12 << false << QVector<int>({-37, 1001});
    QTest::newRow("16 bits, the image after both passes alone") << 16 << false << QVector<int>({-37, 1001});
}

void TestRanges::imageAfterTheColumnPassDecidesWhetherTheResultCounts()
{
    QFETCH(int, depth);
    QFETCH(bool, flatX);
    QFETCH(QVector<int>, flat);
    DialogProbe d;
    d.take(TestFrame::even(2, 2, depth, 200));
    d.m_columnGains = {1.5, 1.5};
    d.m_rowGains = {0.5, 0.5};
    QVERIFY(d.ApplyRowGains());
    setExtremes(d, {7, 8, -37, 1001});
    std::uint16_t*& missing = flatX ? d.m_flatY : d.m_flatX;
    std::uint16_t* const block = std::exchange(missing, nullptr);
    d.ComputeRanges();
    missing = block;
    QCOMPARE(extremesOf(d), QVector<int>({200, 200}) + flat);
}

void TestRanges::resultIsReadWithTheStepOfTheColumnPass_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("8 bits") << 8;
    QTest::newRow("12 bits") << 12;
}

void TestRanges::resultIsReadWithTheStepOfTheColumnPass()
{
    QFETCH(int, depth);
    DialogProbe d;
    d.take(TestFrame(2, 2, depth, [](int x, int y) { return static_cast<unsigned>(50 * (2 * y + x + 1)); }));
    d.m_columnGains = {1.0, 1.0};
    d.m_rowGains = {1.0, 1.0};
    QVERIFY(d.ApplyRowGains());
    d.m_flatYStep = 0;
    d.ComputeRanges();
    QCOMPARE(d.m_flatMax, 200);
    // With a step of 0 the first row is taken for both.
    d.m_flatXStep = 0;
    d.ComputeRanges();
    QCOMPARE(d.m_flatMax, 100);
}

QTEST_MAIN(TestRanges)
#include "tst_ranges.moc"
