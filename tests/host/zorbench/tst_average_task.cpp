#include "host/zorbench/AverageTask.h"
#include "tests/host/zorbench/HandSource.h"

#include <QSignalSpy>
#include <QtTest>

using namespace zor;

namespace {

std::shared_ptr<const Frame> grey(std::uint8_t value)
{
    auto frame = std::make_shared<Frame>();
    frame->width = 2;
    frame->height = 1;
    frame->pitch = 2;
    frame->pixelType = 0x01080101;
    frame->pixels.assign(2, value);
    return frame;
}

/// A task of three frames, and what it says. Its frames are taken with an exposure time that the test sets.
class Taking
{
public:
    Taking()
    {
        QObject::connect(&task, &AverageTask::done, &task,
                         [this](const std::shared_ptr<const Frame>& frame, const CaptureSettings& of) {
                             said.append(QString("done %1 %2").arg(frame->pixels[0]).arg(*of.exposureTime));
                         });
        QObject::connect(&task, &AverageTask::failed, &task,
                         [this](const QString& sentence) { said.append(sentence); });
    }

    HandSource source;
    double exposureTime = 100.0;
    AverageTask task{source, 3, [this](const Frame& frame) {
                         CaptureSettings settings = settingsOf(frame);
                         settings.exposureTime = exposureTime;
                         return settings;
                     }};
    QStringList said;
};

} // namespace

/// An average of frames of a source.
class TestAverageTask : public QObject
{
    Q_OBJECT

private slots:
    void framesAreTakenAndAveraged();
    void progressIsReported();
    void otherSettingsEndIt();
    void framesThatCannotBeAveragedEndIt();
    void anErrorOfTheSourceEndsIt();
    void anErrorThatEndsNothingIsPassedOver();
    void anErrorBeforeTheFirstFrameEndsIt();
    void aSourceThatCannotBeStartedIsReported();
    void cancelStopsTheSource();
    void whatIsOverLeavesTheSource();
};

void TestAverageTask::framesAreTakenAndAveraged()
{
    Taking taking;
    taking.task.start();
    QVERIFY(taking.source.isRunning());
    taking.source.send(0, grey(10));
    taking.source.send(1, grey(20));
    QTest::qWait(120);
    QCOMPARE(taking.said, QStringList());
    taking.source.send(2, grey(60));
    QTRY_COMPARE(taking.said, QStringList("done 30 100"));
    QVERIFY(!taking.source.isRunning());
    QTest::qWait(120);
    QCOMPARE(taking.said.size(), 1);
}

void TestAverageTask::progressIsReported()
{
    Taking taking;
    QSignalSpy progress(&taking.task, &AverageTask::progressed);
    taking.task.start();
    taking.source.send(0, grey(10));
    taking.source.send(1, grey(20));
    QTRY_VERIFY(!progress.isEmpty());
    QCOMPARE(progress.last(), QVariantList{2});
}

void TestAverageTask::otherSettingsEndIt()
{
    Taking taking;
    taking.task.start();
    taking.source.send(0, grey(10));
    taking.exposureTime = 200.0;
    taking.source.send(1, grey(20));
    QTRY_COMPARE(taking.said, QStringList(QString::fromUtf8(
                                  "the exposure time is 200 µs and was 100 µs; take the average again")));
    QVERIFY(!taking.source.isRunning());
}

void TestAverageTask::framesThatCannotBeAveragedEndIt()
{
    Taking taking;
    taking.task.start();
    auto broken = std::make_shared<Frame>(*grey(1));
    broken->pixels.clear();
    taking.source.send(0, broken);
    QTRY_COMPARE(taking.said.size(), 1);
    QVERIFY(!taking.said[0].startsWith("done"));
    QVERIFY(!taking.source.isRunning());
}

void TestAverageTask::anErrorOfTheSourceEndsIt()
{
    Taking taking;
    taking.task.start();
    taking.source.fail("the cable is off", true);
    QTRY_COMPARE(taking.said, QStringList("the cable is off"));
}

void TestAverageTask::anErrorThatEndsNothingIsPassedOver()
{
    Taking taking;
    taking.task.start();
    taking.source.send(0, grey(7));
    taking.source.fail("a frame was odd", false);
    taking.source.send(2, grey(7));
    taking.source.send(3, grey(7));
    QTRY_COMPARE(taking.said, QStringList("done 7 100"));
}

void TestAverageTask::anErrorBeforeTheFirstFrameEndsIt()
{
    Taking taking;
    taking.task.start();
    taking.source.fail("frames of this width cannot be used", false);
    QTRY_COMPARE(taking.said, QStringList("frames of this width cannot be used"));
    QVERIFY(!taking.source.isRunning());
}

void TestAverageTask::aSourceThatCannotBeStartedIsReported()
{
    Taking taking;
    taking.source.hasNoThread = true;
    taking.task.start();
    QTRY_COMPARE(taking.said.size(), 1);
}

void TestAverageTask::cancelStopsTheSource()
{
    Taking taking;
    taking.task.start();
    taking.source.send(0, grey(10));
    taking.task.cancel();
    QVERIFY(!taking.source.isRunning());
    QTest::qWait(120);
    QCOMPARE(taking.said, QStringList());
}

void TestAverageTask::whatIsOverLeavesTheSource()
{
    HandSource source;
    {
        AverageTask task(source, 1, settingsOf);
        QSignalSpy over(&task, &AverageTask::done);
        task.start();
        source.send(0, grey(10));
        QTRY_COMPARE(over.size(), 1);
        source.start({});
    }
    QVERIFY(source.isRunning());
}

QTEST_GUILESS_MAIN(TestAverageTask)

#include "tst_average_task.moc"
