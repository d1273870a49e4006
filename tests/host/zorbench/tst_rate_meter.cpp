#include "host/zorbench/RateMeter.h"

#include <QtTest>

/// How often something happens, by a clock that the test sets.
class TestRateMeter : public QObject
{
    Q_OBJECT

private slots:
    void rateOverTheLastSecond_data();
    void rateOverTheLastSecond();
};

void TestRateMeter::rateOverTheLastSecond_data()
{
    QTest::addColumn<QList<int>>("times"); // ms
    QTest::addColumn<int>("now");
    QTest::addColumn<double>("expected");
    const auto steps = [](int from, int step, int count) {
        QList<int> times;
        for (int i = 0; i < count; ++i)
            times.append(from + i * step);
        return times;
    };
    QTest::newRow("nothing happened") << QList<int>{} << 0 << 0.0;
    QTest::newRow("once") << QList<int>{5} << 10 << 0.0;
    QTest::newRow("twice at one moment") << QList<int>{5, 5} << 10 << 0.0;
    QTest::newRow("twice") << QList<int>{0, 250} << 300 << 4.0;
    QTest::newRow("evenly for long") << steps(0, 50, 200) << 9951 << 20.0;
    QTest::newRow("faster than before: the second before does not count")
        << steps(0, 100, 11) + steps(1010, 10, 101) << 2010 << 100.0;
    QTest::newRow("faster for half of the last second")
        << steps(0, 100, 6) + steps(510, 10, 50) << 1000 << 55.0;
    QTest::newRow("less often than once a second") << steps(0, 4000, 3) << 8100 << 0.25;
    QTest::newRow("silence of a second is none yet") << steps(0, 50, 3) << 1100 << 20.0;
    QTest::newRow("silence of four seconds") << steps(0, 50, 3) << 4100 << 0.25;
    QTest::newRow("silence that is shorter than a rare period") << steps(0, 4000, 3) << 10000 << 0.25;
}

void TestRateMeter::rateOverTheLastSecond()
{
    QFETCH(QList<int>, times);
    QFETCH(int, now);
    QFETCH(double, expected);
    const auto at = [](int time) { return zor::RateMeter::Time(std::chrono::milliseconds(time)); };
    zor::RateMeter meter;
    for (const int time : times)
        meter.count(at(time));
    QCOMPARE(meter.perSecond(at(now)), expected);
}

QTEST_APPLESS_MAIN(TestRateMeter)
#include "tst_rate_meter.moc"
