#include "host/zorbench/AverageDialog.h"
#include "tests/host/zorbench/Bench.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

namespace {

/// A small sensor, as fast as it goes.
void prepare(Bench& bench)
{
    for (const auto& [name, value] : {std::pair("Width", 40.0), std::pair("Height", 30.0),
                                      std::pair("Frame rate", 1000.0), std::pair("Level", 50.0)})
        controlOf<QDoubleSpinBox>(&bench.window(), name)->setValue(value);
}

/// Answers the dialog that an entry of the menu opens.
void take(Bench& bench, const char* entry, int frames, bool sliding = false)
{
    bench.action(QString::fromUtf8(entry))->trigger();
    auto* dialog = bench.window().findChild<zor::AverageDialog*>();
    QVERIFY(dialog && dialog->isVisible());
    controlOf<QSpinBox>(dialog, "Frames")->setValue(frames);
    if (auto* box = dialog->findChild<QCheckBox*>())
        box->setChecked(sliding);
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
}

void takeAverage(Bench& bench, int frames, bool sliding = false)
{
    take(bench, "Average\u2026", frames, sliding);
}

bool isRunning(Bench& bench)
{
    return bench.action("Stop")->isEnabled();
}

} // namespace

/// Averages and dark frames in the workbench's window.
class TestBenchAverage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void anAverageBecomesTheCurrentFrame();
    void theAverageComesBack();
    void anotherDepthDropsTheAverage();
    void aSlidingAverageIsShownLive();
    void aDarkFrameIsSubtracted();
    void theStreamGoesOnAfterADarkFrame();
    void anotherDepthDropsTheDarkFrame();
    void anAverageCanBeCancelled();
    void aFileEndsAnAverage();
    void aSnapshotIsOneFrame();
    void noiseIsBesideTheJudgement();
    void theWantedAccuracyIsKept();
    void theWindowCanBeClosedMeanwhile();
};

void TestBenchAverage::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestBenchAverage::anAverageBecomesTheCurrentFrame()
{
    Bench bench;
    prepare(bench);
    QVERIFY(!bench.action("Show average")->isEnabled());
    takeAverage(bench, 5);
    QTRY_COMPARE(bench.status("Frame"), QString("Average of 5, Simulator  40 x 30  Mono12"));
    QCOMPARE(bench.window().windowTitle(), QString("Average of 5, Simulator - ZorBench"));
    QCOMPARE(bench.shownSize(), QSize(40, 30));
    QVERIFY(!isRunning(bench));
    QVERIFY(bench.action("Show average")->isEnabled());
    QVERIFY(bench.status("Judgement").startsWith("Green"));
    QTRY_VERIFY(!bench.window().findChild<QProgressDialog*>());
}

void TestBenchAverage::theAverageComesBack()
{
    Bench bench;
    prepare(bench);
    takeAverage(bench, 2);
    QTRY_VERIFY(bench.status("Frame").startsWith("Average"));
    const std::shared_ptr<const zor::Frame> average = bench.view().frame();
    bench.action("Start")->trigger();
    QTRY_VERIFY(bench.status("Frame").startsWith("Simulator"));
    bench.action("Show average")->trigger();
    QVERIFY(bench.status("Frame").startsWith("Average of 2, Simulator"));
    QCOMPARE(bench.view().frame().get(), average.get());
    QVERIFY(!isRunning(bench));
}

void TestBenchAverage::anotherDepthDropsTheAverage()
{
    Bench bench;
    prepare(bench);
    takeAverage(bench, 2);
    QTRY_VERIFY(bench.status("Frame").startsWith("Average"));
    QCOMPARE(bench.status("Notice"), QString());
    controlOf<QComboBox>(&bench.window(), "Depth")->setCurrentIndex(0);
    bench.action("Start")->trigger();
    QTRY_COMPARE(bench.status("Notice"),
                 QString("The average was dropped: the pixel format is Mono8 and was Mono12; "
                         "take another one."));
    QVERIFY(!bench.action("Show average")->isEnabled());
}

void TestBenchAverage::aSlidingAverageIsShownLive()
{
    Bench bench;
    prepare(bench);
    takeAverage(bench, 4, true);
    QVERIFY(isRunning(bench));
    QTRY_VERIFY(bench.status("Frame").endsWith("Mono12  average of 4"));
    QCOMPARE(bench.status("Noise"), QString());
    // One that is taken at once ends it.
    takeAverage(bench, 2);
    QTRY_VERIFY(bench.status("Frame").startsWith("Average of 2"));
    bench.action("Start")->trigger();
    QTRY_VERIFY(bench.status("Frame").startsWith("Simulator"));
    QVERIFY(bench.status("Frame").endsWith("Mono12"));
}

void TestBenchAverage::aDarkFrameIsSubtracted()
{
    Bench bench;
    prepare(bench);
    QAction* subtract = bench.action("Subtract dark frame");
    QVERIFY(!subtract->isEnabled() && !subtract->isChecked());
    // Of a scene with noise alone; the one that follows has twice the light.
    controlOf<QDoubleSpinBox>(&bench.window(), "Level")->setValue(25);
    take(bench, "Dark frame\u2026", 16);
    QTRY_VERIFY(subtract->isEnabled() && subtract->isChecked());
    QCOMPARE(bench.status("Notice"),
             QString("The dark frame is the average of 16 frames. It is subtracted from now on."));
    QVERIFY(!isRunning(bench));
    controlOf<QDoubleSpinBox>(&bench.window(), "Level")->setValue(50);
    const auto mean = [&] {
        const QString text = bench.status("Judgement");
        const QRegularExpressionMatch match = QRegularExpression("mean (?:is )?([0-9.]+) %").match(text);
        return match.captured(1).toDouble();
    };
    takeAverage(bench, 4);
    QTRY_VERIFY(bench.status("Frame").startsWith("Average"));
    const double without = mean();
    subtract->setChecked(false);
    bench.action("Show average")->trigger();
    const double with = mean();
    QVERIFY2(with > 30.0 && std::abs(without - with / 2) < 2.0,
             qPrintable(QString("%1 %2").arg(with).arg(without)));
}

void TestBenchAverage::theStreamGoesOnAfterADarkFrame()
{
    Bench bench;
    prepare(bench);
    bench.action("Start")->trigger();
    take(bench, "Dark frame\u2026", 3);
    QTRY_VERIFY(bench.action("Subtract dark frame")->isChecked());
    QVERIFY(isRunning(bench));
    QTRY_VERIFY(bench.status("Judgement").startsWith("Red"));
}

void TestBenchAverage::anotherDepthDropsTheDarkFrame()
{
    Bench bench;
    prepare(bench);
    take(bench, "Dark frame\u2026", 2);
    QTRY_VERIFY(bench.action("Subtract dark frame")->isChecked());
    controlOf<QComboBox>(&bench.window(), "Depth")->setCurrentIndex(0);
    bench.action("Start")->trigger();
    QTRY_VERIFY(bench.status("Notice").endsWith(
        "The dark frame was dropped: the pixel format is Mono8 and was Mono12; "
        "take another one."));
    QVERIFY(!bench.action("Subtract dark frame")->isEnabled());
}

void TestBenchAverage::anAverageCanBeCancelled()
{
    Bench bench;
    prepare(bench);
    controlOf<QDoubleSpinBox>(&bench.window(), "Frame rate")->setValue(5);
    bench.action("Start")->trigger();
    QTRY_VERIFY(bench.status("Frame").startsWith("Simulator"));
    takeAverage(bench, 1024);
    auto* progress = bench.window().findChild<QProgressDialog*>();
    QVERIFY(progress);
    QVERIFY(!isRunning(bench));
    progress->findChild<QPushButton*>()->click();
    QVERIFY(isRunning(bench));
    QTRY_VERIFY(!bench.window().findChild<QProgressDialog*>());
    QVERIFY(!bench.action("Show average")->isEnabled());
    QVERIFY(isRunning(bench));
}

void TestBenchAverage::aFileEndsAnAverage()
{
    Bench bench;
    prepare(bench);
    controlOf<QDoubleSpinBox>(&bench.window(), "Frame rate")->setValue(5);
    takeAverage(bench, 1024);
    bench.open(bench.write("a.pgm", countedPgm(4, 3)));
    QVERIFY(bench.status("Frame").startsWith("a.pgm"));
    QTRY_VERIFY(!bench.window().findChild<QProgressDialog*>());
    QVERIFY(!isRunning(bench));
}

void TestBenchAverage::aSnapshotIsOneFrame()
{
    Bench bench;
    prepare(bench);
    for (int i = 0; i < 2; ++i) {
        bench.action("Snapshot")->trigger();
        QTRY_VERIFY(!isRunning(bench));
        QVERIFY(bench.status("Frame").startsWith("Simulator "));
    }
    bench.action("Snapshot")->trigger();
    bench.action("Stop")->trigger();
    // What was stopped before its frame came is no snapshot any more.
    bench.action("Start")->trigger();
    QVERIFY(!bench.action("Snapshot")->isEnabled());
    QTRY_VERIFY(bench.status("Frame").split(' ')[1].toInt() > 3);
    QVERIFY(isRunning(bench));
}

void TestBenchAverage::noiseIsBesideTheJudgement()
{
    Bench bench;
    prepare(bench);
    bench.action("Start")->trigger();
    QTRY_VERIFY(bench.status("Noise").endsWith(" DN"));
    QVERIFY(bench.status("Noise").split(' ')[0].toDouble() > 1.0);
    QVERIFY(bench.status("Frames needed").toInt() > 1);
    bench.open(bench.write("a.pgm", countedPgm(4, 3)));
    QCOMPARE(bench.status("Noise"), QString());
    QCOMPARE(bench.status("Frames needed"), QString());
}

void TestBenchAverage::theWantedAccuracyIsKept()
{
    Bench bench;
    prepare(bench);
    QCOMPARE(zor::AverageDialog::wantedAccuracy(bench.settings()), 0.1);
    bench.action(QString::fromUtf8("Average\u2026"))->trigger();
    auto* dialog = bench.window().findChild<zor::AverageDialog*>();
    controlOf<QDoubleSpinBox>(dialog, "Wanted gain accuracy")->setValue(0.002);
    controlOf<QSpinBox>(dialog, "Frames")->setValue(1);
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    QTRY_VERIFY(bench.status("Frame").startsWith("Average of 1"));
    QCOMPARE(zor::AverageDialog::wantedAccuracy(bench.settings()), 0.002);
    bench.action("Start")->trigger();
    QTRY_COMPARE(bench.status("Frames needed"), QString("more than 1024"));
    for (const QVariant& wrong : {QVariant("much"), QVariant(0), QVariant(-1), QVariant(1000)}) {
        bench.settings().setValue("Average/Accuracy", wrong);
        QCOMPARE(zor::AverageDialog::wantedAccuracy(bench.settings()), 0.1);
    }
}

void TestBenchAverage::theWindowCanBeClosedMeanwhile()
{
    Bench bench;
    prepare(bench);
    controlOf<QDoubleSpinBox>(&bench.window(), "Frame rate")->setValue(5);
    takeAverage(bench, 1024);
    QVERIFY(bench.window().close());
    bench.restart();
    QVERIFY(!isRunning(bench));
}

QTEST_MAIN(TestBenchAverage)

#include "tst_bench_average.moc"
