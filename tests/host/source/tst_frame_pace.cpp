#include "host/source/FramePace.h"

#include <QtTest>

using namespace zor;
using namespace std::chrono_literals;

/// When frames are due.
class TestFramePace : public QObject
{
    Q_OBJECT

private slots:
    void framesAreDue_data();
    void framesAreDue();
    void aNewRateCountsFromTheLastFrame();
    void aPeriodIsAtMostAYear_data();
    void aPeriodIsAtMostAYear();
};

namespace {

constexpr FramePace::Time Start{1h};

FramePace::Time after(int milliseconds)
{
    return Start + std::chrono::milliseconds(milliseconds);
}

} // namespace

void TestFramePace::framesAreDue_data()
{
    QTest::addColumn<QList<int>>("begun");
    QTest::addColumn<int>("due");
    QTest::newRow("the first one at once") << QList<int>{} << 0;
    QTest::newRow("the second one a period later") << QList<int>{0} << 10;
    QTest::newRow("by the plan after a first one that is late") << QList<int>{3} << 10;
    QTest::newRow("by the plan after one that is late by less than a period") << QList<int>{0, 19} << 20;
    QTest::newRow("by the plan after several that are late") << QList<int>{0, 14, 25, 39} << 40;
    QTest::newRow("a period after one that is late by a period") << QList<int>{0, 20} << 30;
    QTest::newRow("a period after one that is very late") << QList<int>{0, 10, 507} << 517;
}

void TestFramePace::framesAreDue()
{
    QFETCH(QList<int>, begun);
    QFETCH(int, due);
    FramePace pace(Start);
    for (const int time : begun)
        pace.begin(after(time), 100.0);
    QCOMPARE((pace.due(100.0) - Start).count(), (after(due) - Start).count());
}

void TestFramePace::aNewRateCountsFromTheLastFrame()
{
    FramePace pace(Start);
    pace.begin(Start, 100.0);
    pace.begin(after(12), 100.0);
    QVERIFY(pace.due(1000.0) == after(11));
    QVERIFY(pace.due(50.0) == after(30));
    // At 1000 frames a second this one is late by more than a period.
    pace.begin(after(15), 1000.0);
    QVERIFY(pace.due(1000.0) == after(16));
}

void TestFramePace::aPeriodIsAtMostAYear_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<qint64>("hours");
    QTest::newRow("a frame in 100 days") << 1.0 / (100 * 86400.0) << qint64(100 * 24);
    QTest::newRow("a frame in 366 days") << 1.0 / (366 * 86400.0) << qint64(365 * 24);
    QTest::newRow("next to never") << 1e-300 << qint64(365 * 24);
}

void TestFramePace::aPeriodIsAtMostAYear()
{
    QFETCH(double, rate);
    QFETCH(qint64, hours);
    FramePace pace(Start);
    pace.begin(Start, rate);
    QCOMPARE(qint64(std::chrono::round<std::chrono::hours>(pace.due(rate) - Start).count()), hours);
}

QTEST_APPLESS_MAIN(TestFramePace)
#include "tst_frame_pace.moc"
