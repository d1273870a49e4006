#include "tests/host/zorbench/Bench.h"
#include "tests/plugin/UtilityDialog.h"
#include "tests/support/ModalWatch.h"
#include "tests/support/PlotLook.h"

#include <QDoubleSpinBox>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

#include <qwt_plot.h>

namespace {

/// Columns of the frame that the utility has computed; 0 when it shows none.
int computedWidth()
{
    const QwtPlotCurve* curve = curveIn(utilityDialog()->findChild<QwtPlot*>("PlotUp"), "Up X");
    return curve ? static_cast<int>(curve->dataSize()) : 0;
}

void setWidth(Bench& bench, int width)
{
    controlOf<QDoubleSpinBox>(&bench.window(), "Width")->setValue(width);
}

/// A small sensor, as fast as it goes.
void start(Bench& bench)
{
    setWidth(bench, 40);
    controlOf<QDoubleSpinBox>(&bench.window(), "Height")->setValue(30);
    controlOf<QDoubleSpinBox>(&bench.window(), "Frame rate")->setValue(1000);
    bench.action("Start")->trigger();
}

} // namespace

/// The built utility and a stream of frames.
class TestBenchLive : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void withLiveTheUtilityFollows();
    void withoutLiveItStays();
    void withoutLiveItOpensOnTheCurrentFrame();
    void liveCatchesUp();
    void filesAreFollowedAlways();
    void theStreamGoesOnUnderABoxOfTheUtility();
    void theWindowCanBeClosedUnderABoxOfTheUtility();
    void theWindowCanBeClosedAtAnyMoment();
};

void TestBenchLive::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestBenchLive::withLiveTheUtilityFollows()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.action("Live")->trigger();
    bench.action("FFC Utility")->trigger();
    QCOMPARE(computedWidth(), 0);
    start(bench);
    QTRY_COMPARE(computedWidth(), 40);
    setWidth(bench, 50);
    QTRY_COMPARE(computedWidth(), 50);
    bench.action("Stop")->trigger();
    // Closed, it is left alone.
    utilityDialog()->close();
    setWidth(bench, 60);
    bench.action("Start")->trigger();
    QTRY_COMPARE(bench.shownSize(), QSize(60, 30));
    QCOMPARE(computedWidth(), 50);
}

void TestBenchLive::withoutLiveItStays()
{
    Bench bench(PLUG_IN_FOLDER);
    start(bench);
    QTRY_COMPARE(bench.shownSize(), QSize(40, 30));
    bench.action("FFC Utility")->trigger();
    QCOMPARE(computedWidth(), 40);
    setWidth(bench, 50);
    QTRY_COMPARE(bench.shownSize(), QSize(50, 30));
    const QString before = bench.status("Frame");
    QTRY_VERIFY(bench.status("Frame") != before);
    QCOMPARE(computedWidth(), 40);
    // Chosen once more it takes the current one.
    bench.action("FFC Utility")->trigger();
    QCOMPARE(computedWidth(), 50);
}

void TestBenchLive::withoutLiveItOpensOnTheCurrentFrame()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.action("FFC Utility")->trigger();
    start(bench);
    QTRY_COMPARE(bench.shownSize(), QSize(40, 30));
    QCOMPARE(computedWidth(), 0);
    utilityDialog()->close();
    bench.action("FFC Utility")->trigger();
    QCOMPARE(computedWidth(), 40);
}

void TestBenchLive::liveCatchesUp()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.action("FFC Utility")->trigger();
    start(bench);
    QTRY_COMPARE(bench.shownSize(), QSize(40, 30));
    bench.action("Stop")->trigger();
    QCOMPARE(computedWidth(), 0);
    bench.action("Live")->trigger();
    QCOMPARE(computedWidth(), 40);
    bench.action("Live")->trigger();
    setWidth(bench, 50);
    bench.action("Start")->trigger();
    QTRY_COMPARE(bench.shownSize(), QSize(50, 30));
    QCOMPARE(computedWidth(), 40);
}

void TestBenchLive::filesAreFollowedAlways()
{
    Bench bench(PLUG_IN_FOLDER);
    start(bench);
    QTRY_COMPARE(bench.shownSize(), QSize(40, 30));
    bench.action("FFC Utility")->trigger();
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    QCOMPARE(computedWidth(), 6);
}

void TestBenchLive::theStreamGoesOnUnderABoxOfTheUtility()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.action("Live")->trigger();
    bench.action("FFC Utility")->trigger();
    start(bench);
    QTRY_COMPARE(computedWidth(), 40);
    ModalWatch watch;
    int within = 0;
    watch.onBox = [&](QMessageBox&) {
        setWidth(bench, 50);
        QTRY_COMPARE(computedWidth(), 50);
        within = computedWidth();
    };
    // The utility asks for a title.
    QTest::mouseClick(utilityDialog()->findChild<QPushButton*>("pBSave"), Qt::LeftButton);
    QCOMPARE(watch.texts, QStringList("Define Title of file"));
    QCOMPARE(within, 50);
    setWidth(bench, 60);
    QTRY_COMPARE(computedWidth(), 60);
}

void TestBenchLive::theWindowCanBeClosedUnderABoxOfTheUtility()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.action("Live")->trigger();
    bench.action("FFC Utility")->trigger();
    start(bench);
    QTRY_COMPARE(computedWidth(), 40);
    const QPointer<QDialog> dialog = utilityDialog();
    ModalWatch watch;
    watch.onBox = [&](QMessageBox&) { bench.window().close(); };
    QTest::mouseClick(dialog->findChild<QPushButton*>("pBSave"), Qt::LeftButton);
    QCOMPARE(watch.texts, QStringList("Define Title of file"));
    QTRY_VERIFY(!dialog);
    QVERIFY(!bench.action("Stop")->isEnabled());
}

void TestBenchLive::theWindowCanBeClosedAtAnyMoment()
{
    for (int i = 0; i < 30; ++i) {
        Bench bench(PLUG_IN_FOLDER);
        bench.action("Live")->trigger();
        if (i % 2 == 0)
            bench.action("FFC Utility")->trigger();
        start(bench);
        for (int events = 0; events < i; ++events)
            QCoreApplication::processEvents();
        if (i % 2 == 1)
            bench.action("FFC Utility")->trigger();
        if (i % 5 == 4)
            QTRY_COMPARE(computedWidth(), 40);
        bench.window().close();
        QVERIFY(!utilityDialog());
    }
}

QTEST_MAIN(TestBenchLive)
#include "tst_bench_live.moc"
