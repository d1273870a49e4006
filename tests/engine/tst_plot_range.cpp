#include "engine/PlotRange.h"

#include <QtTest>

class TestPlotRange : public QObject
{
    Q_OBJECT

private slots:
    void limitsAreMultiplesOf20AroundTheExtremes_data();
    void limitsAreMultiplesOf20AroundTheExtremes();
};

void TestPlotRange::limitsAreMultiplesOf20AroundTheExtremes_data()
{
    QTest::addColumn<int>("imageMin");
    QTest::addColumn<int>("imageMax");
    QTest::addColumn<int>("flatMin");
    QTest::addColumn<int>("flatMax");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::newRow("37 to 241 gives 20 to 260") << 37 << 100 << 40 << 241 << 20 << 260;
    QTest::newRow("0 to 240 stays: multiples do not move") << 0 << 240 << 0 << 240 << 0 << 240;
    QTest::newRow("a negative minimum of -5 gives -20") << -5 << 10 << 3 << 10 << -20 << 20;
    QTest::newRow("-20 stays, -21 goes to -40") << -21 << -20 << -20 << -20 << -40 << -20;
    QTest::newRow("a negative maximum goes up to 0") << -5 << -5 << -5 << -5 << -20 << 0;
    QTest::newRow("the image's extremes win") << 1 << 500 << 30 << 40 << 0 << 500;
    QTest::newRow("the corrected image's extremes win") << 30 << 40 << 1 << 501 << 0 << 520;
    QTest::newRow("the signed 16-bit range") << -32768 << 32767 << 0 << 0 << -32780 << 32780;
    QTest::newRow("before the first frame") << -1 << -1 << -1 << -1 << -20 << 0;
}

void TestPlotRange::limitsAreMultiplesOf20AroundTheExtremes()
{
    QFETCH(int, imageMin);
    QFETCH(int, imageMax);
    QFETCH(int, flatMin);
    QFETCH(int, flatMax);
    const zor::PlotRange range = zor::plotRange(imageMin, imageMax, flatMin, flatMax);
    QTEST(range.minimum, "minimum");
    QTEST(range.maximum, "maximum");
}

QTEST_APPLESS_MAIN(TestPlotRange)
#include "tst_plot_range.moc"
