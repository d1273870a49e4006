#include "engine/HistogramPeak.h"

#include <QtTest>

#include <limits>

namespace {

constexpr int Lowest = std::numeric_limits<int>::min();
constexpr int Highest = std::numeric_limits<int>::max();

} // namespace

class TestHistogramPeak : public QObject
{
    Q_OBJECT

private slots:
    void levelsArePowersOfTwo_data();
    void levelsArePowersOfTwo();
    void firstAndTopEntryDoNotCount_data();
    void firstAndTopEntryDoNotCount();
    void peakFollowsTheLargestBin_data();
    void peakFollowsTheLargestBin();
    void valuesAreRoundedToMultiples_data();
    void valuesAreRoundedToMultiples();
};

void TestHistogramPeak::levelsArePowersOfTwo_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("levels");
    QTest::newRow("depth 0") << 0 << 1;
    QTest::newRow("depth 1") << 1 << 2;
    QTest::newRow("depth 8") << 8 << 256;
    QTest::newRow("depth 10") << 10 << 1024;
    QTest::newRow("depth 12") << 12 << 4096;
    QTest::newRow("depth 16") << 16 << 65536;
    QTest::newRow("depth 30") << 30 << 0x40000000;
    QTest::newRow("depth 31 does not fit") << 31 << Lowest;
    QTest::newRow("depth 5000 does not fit") << 5000 << Lowest;
    QTest::newRow("a negative depth is truncated to nothing") << -1 << 0;
}

void TestHistogramPeak::levelsArePowersOfTwo()
{
    QFETCH(int, depth);
    QFETCH(int, levels);
    QCOMPARE(zor::histogramLevels(depth), levels);
}

void TestHistogramPeak::firstAndTopEntryDoNotCount_data()
{
    QTest::addColumn<QVector<int>>("bins");
    QTest::addColumn<int>("largest");
    QTest::newRow("the first and the top entry are left out") << QVector<int>{99, 3, 7, 5, 98} << 7;
    QTest::newRow("the first inner bin counts") << QVector<int>{0, 8, 1, 1, 0} << 8;
    QTest::newRow("the last inner bin counts") << QVector<int>{0, 1, 1, 8, 0} << 8;
    QTest::newRow("a frame of one value 0: nothing is above 0") << QVector<int>{64, 0, 0, 0} << 0;
    QTest::newRow("three levels have one inner bin") << QVector<int>{9, 4, 9} << 4;
    QTest::newRow("two levels have none") << QVector<int>{9, 9} << Lowest;
    QTest::newRow("one level has none") << QVector<int>{9} << Lowest;
}

void TestHistogramPeak::firstAndTopEntryDoNotCount()
{
    QFETCH(QVector<int>, bins);
    QFETCH(int, largest);
    QCOMPARE(zor::largestInnerBin(bins.constData(), bins.size()), largest);
}

void TestHistogramPeak::peakFollowsTheLargestBin_data()
{
    QTest::addColumn<int>("peak");
    QTest::addColumn<int>("floor");
    QTest::addColumn<int>("largest");
    QTest::addColumn<int>("next");
    QTest::newRow("a first peak of 100 has grain 20") << 0 << 0 << 100 << 120;
    QTest::newRow("100 again: 72 is not above it, the peak stays") << 120 << 0 << 100 << 120;
    QTest::newRow("50 is under 72: the peak falls and is rounded up") << 120 << 0 << 50 << 60;
    QTest::newRow("exactly 60 percent keeps the peak") << 100 << 0 << 60 << 100;
    QTest::newRow("one under 60 percent moves it") << 100 << 0 << 59 << 60;
    QTest::newRow("an equal peak stays") << 120 << 0 << 120 << 120;
    QTest::newRow("15000 has grain 10000") << 0 << 0 << 15000 << 20000;
    QTest::newRow("2000 has grain 500") << 0 << 0 << 2000 << 2500;
    QTest::newRow("500 has grain 100") << 0 << 0 << 500 << 600;
    QTest::newRow("101 has grain 100") << 0 << 0 << 101 << 200;
    QTest::newRow("1000 still has grain 100") << 0 << 0 << 1000 << 1100;
    QTest::newRow("1001 has grain 500") << 0 << 0 << 1001 << 1500;
    QTest::newRow("10000 still has grain 500") << 0 << 0 << 10000 << 10500;
    QTest::newRow("10001 has grain 10000") << 0 << 0 << 10001 << 20000;
    QTest::newRow("a floor of -1 counts") << -1 << -1 << 100 << 200;
    QTest::newRow("an empty histogram leaves a peak of 0") << 0 << 0 << 0 << 0;
    QTest::newRow("an empty histogram before the first reset lifts -1 to 0") << -1 << -1 << 0 << 0;
    QTest::newRow("no inner bins: the lowest number and its remainder wrap")
        << 0 << 0 << Lowest << Highest - 7;
    QTest::newRow("the highest peak wraps when rounded") << 0 << 0 << Highest << Lowest + 6352;
}

void TestHistogramPeak::peakFollowsTheLargestBin()
{
    QFETCH(int, peak);
    QFETCH(int, floor);
    QFETCH(int, largest);
    QFETCH(int, next);
    QCOMPARE(zor::nextHistogramPeak(peak, floor, largest), next);
}

void TestHistogramPeak::valuesAreRoundedToMultiples_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("multiple");
    QTest::addColumn<bool>("up");
    QTest::addColumn<int>("result");
    QTest::newRow("up: to the next multiple") << 101 << 20 << true << 120;
    QTest::newRow("up: a multiple moves on by one") << 100 << 20 << true << 120;
    QTest::newRow("up: 0 stays") << 0 << 20 << true << 0;
    QTest::newRow("up: a negative value moves away from zero by its remainder") << -25 << 20 << true << -30;
    QTest::newRow("up: a negative multiple stays") << -40 << 20 << true << -40;
    QTest::newRow("down: to the multiple below") << 119 << 20 << false << 100;
    QTest::newRow("down: a multiple stays") << 100 << 20 << false << 100;
    QTest::newRow("down: 0 stays") << 0 << 20 << false << 0;
    QTest::newRow("down: a negative value moves below") << -25 << 20 << false << -40;
    QTest::newRow("down: a negative multiple moves on by one") << -40 << 20 << false << -60;
    QTest::newRow("a multiple of -1 does not overflow") << Lowest << -1 << true << Lowest;
}

void TestHistogramPeak::valuesAreRoundedToMultiples()
{
    QFETCH(int, value);
    QFETCH(int, multiple);
    QFETCH(bool, up);
    QFETCH(int, result);
    QCOMPARE(zor::RoundToMultiple(value, multiple, up), result);
}

QTEST_APPLESS_MAIN(TestHistogramPeak)
#include "tst_histogram_peak.moc"
