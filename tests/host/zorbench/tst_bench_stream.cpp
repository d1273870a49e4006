#include "tests/host/zorbench/Bench.h"
#include "tests/support/ModalWatch.h"
#include "tests/support/NewLimit.h"

#include "display/DisplayView.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QtTest>

namespace {

void setNumber(Bench& bench, const char* name, double value)
{
    controlOf<QDoubleSpinBox>(&bench.window(), name)->setValue(value);
}

/// A small sensor, as fast as it goes.
void prepare(Bench& bench)
{
    setNumber(bench, "Width", 40);
    setNumber(bench, "Height", 30);
    setNumber(bench, "Frame rate", 1000);
}

/// The number of the current frame of the simulator; -1 for any other.
int frameNumber(Bench& bench)
{
    const QStringList words = bench.status("Frame").split(' ');
    return words[0] == "Simulator" && words.size() > 1 ? words[1].toInt() : -1;
}

void settle()
{
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
}

} // namespace

/// Frames of the simulator in the workbench's window.
class TestBenchStream : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startShowsFramesUntilStop();
    void keysWorkOnTheFullScreen();
    void statusCountsFrames();
    void judgementFollowsTheStream();
    void anotherSensorCountsAtOnce();
    void anotherSensorStartsNothing();
    void aFileStopsTheStream();
    void aBrokenFileLeavesTheStream();
    void theStreamComesBackAfterAFile();
    void aLackOfMemoryIsToldOnce();
    void theWindowCanBeClosedAtAnyMoment_data();
    void theWindowCanBeClosedAtAnyMoment();
    void settingsAreKeptBetweenRuns();
};

void TestBenchStream::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestBenchStream::startShowsFramesUntilStop()
{
    Bench bench;
    prepare(bench);
    QAction* start = bench.action("Start");
    QAction* stop = bench.action("Stop");
    QVERIFY(start->isEnabled() && !stop->isEnabled());
    start->trigger();
    QVERIFY(!start->isEnabled() && stop->isEnabled());
    QTRY_VERIFY(frameNumber(bench) > 3);
    QCOMPARE(bench.shownSize(), QSize(40, 30));
    QVERIFY(bench.status("Frame").endsWith("  40 x 30  Mono12"));
    QCOMPARE(bench.window().windowTitle(), QString("Simulator - ZorBench"));
    stop->trigger();
    QVERIFY(start->isEnabled() && !stop->isEnabled());
    const int last = frameNumber(bench);
    settle();
    QCOMPARE(frameNumber(bench), last);
    // Frames are counted from 0 again.
    setNumber(bench, "Frame rate", 0.1);
    start->trigger();
    QTRY_COMPARE(frameNumber(bench), 0);
}

void TestBenchStream::keysWorkOnTheFullScreen()
{
    Bench bench;
    prepare(bench);
    bench.action("Full screen")->trigger();
    QWidget* view = &bench.view().view();
    QTRY_COMPARE(QApplication::activeWindow(), view);
    QTest::keyClick(view, Qt::Key_F5);
    QTRY_VERIFY(frameNumber(bench) > 0);
    QTest::keyClick(view, Qt::Key_L, Qt::ControlModifier);
    QVERIFY(bench.action("Live")->isChecked());
    QTest::keyClick(view, Qt::Key_F5, Qt::ShiftModifier);
    QVERIFY(bench.action("Start")->isEnabled());
}

void TestBenchStream::statusCountsFrames()
{
    Bench bench;
    prepare(bench);
    QCOMPARE(bench.status("Frames per second"), QString());
    QCOMPARE(bench.status("Dropped"), QString());
    bench.action("Start")->trigger();
    QCOMPARE(bench.status("Dropped"), QString("0"));
    QTRY_VERIFY(bench.status("Frames per second").toDouble() > 1.0);
    // Nobody takes a frame while the window is busy.
    const int before = frameNumber(bench);
    QTRY_VERIFY(frameNumber(bench) > before);
    QThread::msleep(50);
    QTRY_VERIFY(bench.status("Dropped").toInt() > 10);
    bench.action("Stop")->trigger();
    QCOMPARE(bench.status("Frames per second"), QString());
    QVERIFY(bench.status("Dropped").toInt() > 10);
}

void TestBenchStream::judgementFollowsTheStream()
{
    Bench bench;
    prepare(bench);
    setNumber(bench, "Column pattern", 0.0);
    setNumber(bench, "Vignetting", 0.0);
    bench.action("Start")->trigger();
    QTRY_VERIFY(bench.status("Judgement").startsWith("Green: mean 70."));
    QVERIFY(bench.status("Column non-uniformity").remove(" %").toDouble() < 1.0);
    // The lamp is moved.
    setNumber(bench, "Level", 2.0);
    setNumber(bench, "Vignetting", 90.0);
    QTRY_VERIFY(bench.status("Judgement").startsWith("Red: the mean is "));
    QVERIFY(bench.status("Column non-uniformity").remove(" %").toDouble() > 10.0);
}

void TestBenchStream::anotherSensorCountsAtOnce()
{
    Bench bench;
    prepare(bench);
    bench.action("Start")->trigger();
    QTRY_COMPARE(bench.shownSize(), QSize(40, 30));
    setNumber(bench, "Width", 50);
    QTRY_COMPARE(bench.shownSize(), QSize(50, 30));
    QVERIFY(bench.action("Stop")->isEnabled());
}

void TestBenchStream::anotherSensorStartsNothing()
{
    Bench bench;
    prepare(bench);
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    setNumber(bench, "Width", 50);
    settle();
    QVERIFY(bench.action("Start")->isEnabled());
    QCOMPARE(bench.shownSize(), QSize(6, 4));
}

void TestBenchStream::aFileStopsTheStream()
{
    Bench bench;
    prepare(bench);
    bench.action("Start")->trigger();
    QTRY_VERIFY(frameNumber(bench) > 0);
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    QVERIFY(bench.action("Start")->isEnabled() && !bench.action("Stop")->isEnabled());
    settle();
    QCOMPARE(bench.shownSize(), QSize(6, 4));
    QCOMPARE(bench.status("Frame"), QString("flat.pgm  6 x 4  Mono8  (maxval 255)"));
    QCOMPARE(bench.window().windowTitle(), QString("flat.pgm - ZorBench"));
    // Its mean is 17.5 of 255, which the frames before were not.
    QVERIFY2(bench.status("Judgement").startsWith("Amber: the mean is 6.9 %"),
             qPrintable(bench.status("Judgement")));
}

void TestBenchStream::aBrokenFileLeavesTheStream()
{
    Bench bench;
    ModalWatch watch;
    prepare(bench);
    bench.action("Start")->trigger();
    QTRY_VERIFY(frameNumber(bench) > 0);
    bench.open(bench.write("short.pgm", countedPgm(6, 4).chopped(1)));
    QTRY_COMPARE(watch.texts.size(), 1);
    QVERIFY(bench.action("Stop")->isEnabled());
    const int before = frameNumber(bench);
    QTRY_VERIFY(frameNumber(bench) > before);
}

void TestBenchStream::theStreamComesBackAfterAFile()
{
    Bench bench;
    prepare(bench);
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    QCOMPARE(frameNumber(bench), -1);
    bench.action("Start")->trigger();
    QTRY_VERIFY(frameNumber(bench) > 0);
    QCOMPARE(bench.shownSize(), QSize(40, 30));
}

void TestBenchStream::aLackOfMemoryIsToldOnce()
{
    Bench bench;
    ModalWatch watch;
    prepare(bench);
    setNumber(bench, "Width", 4000);
    setNumber(bench, "Height", 3000);
    tooLarge = 4000 * 3000;
    bench.action("Start")->trigger();
    QTRY_COMPARE(watch.texts.size(), 1);
    tooLarge = NoLimit;
    QCOMPARE(watch.texts.first(),
             QString("Simulator: there is no memory for simulated frames of 4000x3000 pixels; "
                     "choose a smaller size or close other programs"));
    QVERIFY(bench.action("Start")->isEnabled() && !bench.action("Stop")->isEnabled());
    prepare(bench);
    bench.action("Start")->trigger();
    QTRY_VERIFY(frameNumber(bench) > 0);
    QCOMPARE(watch.texts.size(), 1);
}

void TestBenchStream::theWindowCanBeClosedAtAnyMoment_data()
{
    QTest::addColumn<bool>("byItsEnd");
    QTest::newRow("closed") << false;
    QTest::newRow("ended without being closed") << true;
}

void TestBenchStream::theWindowCanBeClosedAtAnyMoment()
{
    QFETCH(bool, byItsEnd);
    for (int i = 0; i < 30; ++i) {
        Bench bench;
        prepare(bench);
        bench.action("Start")->trigger();
        // Also before the first frame, and while its viewer starts.
        for (int events = 0; events < i; ++events)
            QCoreApplication::processEvents();
        if (i % 3 == 2)
            QTRY_VERIFY(frameNumber(bench) > i);
        if (byItsEnd)
            continue;
        QSignalSpy closed(&bench.window(), &zor::MainWindow::closed);
        bench.window().close();
        QCOMPARE(closed.count(), 1);
        QVERIFY(!bench.action("Stop")->isEnabled());
        const int last = frameNumber(bench);
        settle();
        QCOMPARE(frameNumber(bench), last);
    }
}

void TestBenchStream::settingsAreKeptBetweenRuns()
{
    Bench bench;
    prepare(bench);
    QVERIFY(!controlOf(&bench.window(), "Width")->isVisible());
    bench.action("Simulator")->trigger();
    QVERIFY(controlOf(&bench.window(), "Width")->isVisible());
    bench.restart();
    QVERIFY(controlOf(&bench.window(), "Width")->isVisible());
    bench.action("Start")->trigger();
    QTRY_COMPARE(bench.shownSize(), QSize(40, 30));
}

QTEST_MAIN(TestBenchStream)
#include "tst_bench_stream.moc"
