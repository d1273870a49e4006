#include "host/zorbench/AverageDialog.h"
#include "host/zorbench/CameraDialog.h"
#include "tests/host/camera/GigeCameraProcess.h"
#include "tests/host/camera/OwnNetwork.h"
#include "tests/host/zorbench/Bench.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QtTest>

namespace {

/// The first one that is found.
void connectCamera(Bench& bench)
{
    bench.action("Connect")->trigger();
    auto* connect = controlOf<QPushButton>(bench.window().findChild<zor::CameraDialog*>(), "Connect");
    QTRY_VERIFY(connect->isEnabled());
    connect->click();
    QTRY_VERIFY(bench.action("Disconnect")->isEnabled());
}

QString camera(Bench& bench)
{
    const QRegularExpressionMatch match =
        QRegularExpression(R"(^(Aravis Fake \(\w+\)) \d+ )").match(bench.status("Frame"));
    return match.captured(1);
}

} // namespace

/// A camera in the workbench's window.
class TestBenchCamera : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void framesComeAtOnce();
    void disconnectGoesBackToTheSimulator();
    void anotherExposureDropsTheAverage();
    void theWindowCanBeClosedMeanwhile_data();
    void theWindowCanBeClosedMeanwhile();
    void aLostCameraIsSaidAndComesBack();
};

void TestBenchCamera::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestBenchCamera::framesComeAtOnce()
{
    Bench bench;
    QCOMPARE(bench.status("Incomplete"), QString());
    connectCamera(bench);
    QTRY_COMPARE(camera(bench), QString("Aravis Fake (1)"));
    QCOMPARE(bench.window().windowTitle(), QString("Aravis Fake (1) - ZorBench"));
    QCOMPARE(bench.shownSize(), QSize(512, 512));
    QTRY_COMPARE(bench.status("Incomplete"), QString("0"));
    QVERIFY(!bench.action("Connect")->isEnabled());
    // The format changes while frames come.
    auto* formats = controlOf<QComboBox>(&bench.window(), "Pixel format");
    formats->setCurrentText("Mono16");
    emit formats->activated(formats->currentIndex());
    QTRY_VERIFY(bench.status("Frame").endsWith("512 x 512  Mono16"));
}

void TestBenchCamera::disconnectGoesBackToTheSimulator()
{
    Bench bench;
    connectCamera(bench);
    QTRY_COMPARE(camera(bench), QString("Aravis Fake (1)"));
    bench.action("Disconnect")->trigger();
    QVERIFY(!bench.action("Stop")->isEnabled());
    QVERIFY(bench.action("Connect")->isEnabled());
    bench.action("Start")->trigger();
    QTRY_VERIFY(bench.status("Frame").startsWith("Simulator "));
    QTRY_COMPARE(bench.status("Incomplete"), QString());
}

void TestBenchCamera::anotherExposureDropsTheAverage()
{
    Bench bench;
    connectCamera(bench);
    bench.action(QString::fromUtf8("Average\u2026"))->trigger();
    bench.window()
        .findChild<zor::AverageDialog*>()
        ->findChild<QDialogButtonBox*>()
        ->button(QDialogButtonBox::Ok)
        ->click();
    QTRY_VERIFY(bench.status("Frame").startsWith("Average of 16, Aravis Fake (1)"));
    controlOf<QDoubleSpinBox>(&bench.window(), "Exposure time")->setValue(20000);
    // What is set arrives in the background.
    bench.action("Start")->trigger();
    QTRY_COMPARE(bench.status("Notice"),
                 QString::fromUtf8("The average was dropped: the exposure time is 20000 µs and "
                                   "was 10000 µs; take another one."));
}

void TestBenchCamera::theWindowCanBeClosedMeanwhile_data()
{
    QTest::addColumn<bool>("isSearching");
    QTest::newRow("while cameras are looked for") << true;
    QTest::newRow("while frames come") << false;
}

void TestBenchCamera::theWindowCanBeClosedMeanwhile()
{
    QFETCH(bool, isSearching);
    Bench bench;
    if (isSearching)
        bench.action("Connect")->trigger();
    else
        connectCamera(bench);
    QVERIFY(bench.window().close());
    bench.restart();
    QVERIFY(bench.action("Connect")->isEnabled());
}

/// The last one: from here on the program is in a network of its own.
void TestBenchCamera::aLostCameraIsSaidAndComesBack()
{
    if (!enterOwnNetwork())
        QSKIP("A network of its own takes rights that this user does not have.");
    GigeCameraProcess gige;
    QVERIFY(gige.start());
    Bench bench({}, "gige");
    connectCamera(bench);
    QTRY_COMPARE(camera(bench), QString("Aravis Fake (GV01)"));
    QCOMPARE(bench.status("Notice"), QString());
    gige.kill();
    QTRY_COMPARE_WITH_TIMEOUT(bench.status("Notice"),
                              QString("The camera Aravis Fake (GV01) is lost. It goes on when it is back."),
                              20000);
    const QString last = bench.status("Frame");
    QVERIFY(gige.start());
    QTRY_COMPARE_WITH_TIMEOUT(bench.status("Notice"),
                              QString("The camera Aravis Fake (GV01) was lost and is back."), 20000);
    QTRY_VERIFY_WITH_TIMEOUT(bench.status("Frame") != last, 20000);
    bench.action("Disconnect")->trigger();
    QTRY_VERIFY(bench.action("Connect")->isEnabled());
}

QTEST_MAIN(TestBenchCamera)

#include "tst_bench_camera.moc"
