#include "host/source/SimulatorSource.h"
#include "tests/host/source/FrameCollector.h"

#include <QSemaphore>
#include <QtTest>

#include <atomic>
#include <stdexcept>
#include <thread>

using namespace zor;

/// Start and stop of a source, from outside and from within its handlers.
class TestSourceStop : public QObject
{
    Q_OBJECT

private slots:
    void stopOfAStoppedSourceDoesNothing();
    void noHandlerIsLeftAfterStop();
    void stopWaitsForTheHandlerThatRuns();
    void stopEndsALongWait();
    void stopWithinTheHandlerMakesItTheLast_data();
    void stopWithinTheHandlerMakesItTheLast();
    void stopFromSeveralThreadsAtOnce();
    void theDestructorStops();
    void aRunningSourceIsNotStartedAgain();
    void aSourceIsNotStartedOnItsOwnThread_data();
    void aSourceIsNotStartedOnItsOwnThread();
    void aStoppedSourceStartsAgain();
    void aSourceThatIsStoppedFromWithinStartsAgain();
    void aThreadThatComesLaterStartsAndStops();
};

namespace {

constexpr double Fastest = SimulatorSource::LargestFrameRate;
/// A frame in many years: after the first one a source only waits.
constexpr double Never = 1e-12;

SensorModel smallSensor()
{
    SensorModel model;
    model.width = 8;
    model.height = 4;
    return model;
}

} // namespace

void TestSourceStop::stopOfAStoppedSourceDoesNothing()
{
    SimulatorSource source(smallSensor());
    source.stop();
    FrameCollector collector;
    source.start(collector.handlers());
    source.stop();
    source.stop();
    QVERIFY(collector.hasEnded());
}

void TestSourceStop::noHandlerIsLeftAfterStop()
{
    SimulatorSource source(smallSensor(), Fastest);
    for (std::size_t frames = 0; frames < 20; ++frames) {
        FrameCollector collector;
        source.start(collector.handlers());
        const bool haveCome = collector.waitForFrames(frames % 3);
        source.stop();
        QVERIFY(haveCome);
        QVERIFY(collector.hasEnded());
    }
}

void TestSourceStop::stopWaitsForTheHandlerThatRuns()
{
    FrameCollector collector;
    SimulatorSource source(smallSensor(), Never);
    QSemaphore begun;
    QSemaphore stopping;
    std::atomic<bool> isDone{false};
    source.start(collector.handlers([&](const SourceFrame&) {
        begun.release();
        stopping.acquire();
        // The other thread is about to stop or does so already.
        std::this_thread::yield();
        isDone = true;
    }));
    begun.acquire();
    stopping.release();
    source.stop();
    QVERIFY(isDone);
    QVERIFY(collector.hasEnded());
    QCOMPARE(collector.frames().size(), std::size_t(1));
}

void TestSourceStop::stopEndsALongWait()
{
    FrameCollector collector;
    SimulatorSource source(smallSensor(), Never);
    source.start(collector.handlers());
    QVERIFY(collector.waitForFrames(1));
    source.stop();
    QVERIFY(collector.hasEnded());
    QCOMPARE(collector.frames().size(), std::size_t(1));
}

void TestSourceStop::stopWithinTheHandlerMakesItTheLast_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("last");
    QTest::newRow("at the first frame") << Fastest << 0;
    QTest::newRow("at a later frame") << Fastest << 4;
    QTest::newRow("before a long wait") << Never << 0;
}

void TestSourceStop::stopWithinTheHandlerMakesItTheLast()
{
    QFETCH(double, rate);
    QFETCH(int, last);
    FrameCollector collector;
    SimulatorSource source(smallSensor(), rate);
    source.start(collector.handlers([&](const SourceFrame& frame) {
        if (frame.number == std::uint64_t(last))
            source.stop();
    }));
    QVERIFY(collector.waitForTheEnd());
    QCOMPARE(collector.frames().size(), std::size_t(last + 1));
}

void TestSourceStop::stopFromSeveralThreadsAtOnce()
{
    SimulatorSource source(smallSensor(), Fastest);
    for (int i = 0; i < 20; ++i) {
        FrameCollector collector;
        QSemaphore begun;
        source.start(collector.handlers([&](const SourceFrame&) {
            begun.release();
            source.stop();
        }));
        begun.acquire();
        bool hasEndedElsewhere = false;
        std::thread other([&] {
            source.stop();
            hasEndedElsewhere = collector.hasEnded();
        });
        source.stop();
        QVERIFY(collector.hasEnded());
        other.join();
        QVERIFY(hasEndedElsewhere);
        QCOMPARE(collector.frames().size(), std::size_t(1));
    }
}

void TestSourceStop::theDestructorStops()
{
    FrameCollector collector;
    {
        SimulatorSource source(smallSensor(), Fastest);
        source.start(collector.handlers());
        QVERIFY(collector.waitForFrames(2));
    }
    QVERIFY(collector.hasEnded());
}

void TestSourceStop::aRunningSourceIsNotStartedAgain()
{
    FrameCollector collector;
    FrameCollector refused;
    SimulatorSource source(smallSensor(), Fastest);
    source.start(collector.handlers());
    QVERIFY_EXCEPTION_THROWN(source.start(refused.handlers()), std::logic_error);
    QVERIFY(refused.hasEnded());
    QVERIFY2(collector.waitForFrames(collector.frames().size() + 1), "the first start goes on");
}

void TestSourceStop::aSourceIsNotStartedOnItsOwnThread_data()
{
    QTest::addColumn<bool>("isStopped");
    QTest::newRow("while it runs") << false;
    QTest::newRow("after a stop within the handler") << true;
}

void TestSourceStop::aSourceIsNotStartedOnItsOwnThread()
{
    QFETCH(bool, isStopped);
    FrameCollector collector;
    FrameCollector refused;
    SimulatorSource source(smallSensor(), Never);
    std::atomic<bool> isRefused{false};
    source.start(collector.handlers([&](const SourceFrame&) {
        if (isStopped)
            source.stop();
        try {
            source.start(refused.handlers());
        } catch (const std::logic_error&) {
            isRefused = true;
        }
    }));
    QVERIFY(collector.waitForFrames(1));
    source.stop();
    QVERIFY(isRefused);
    QCOMPARE(refused.frames().size(), std::size_t(0));
}

void TestSourceStop::aStoppedSourceStartsAgain()
{
    SimulatorSource source(smallSensor(), Fastest);
    for (int i = 0; i < 3; ++i) {
        FrameCollector collector;
        source.start(collector.handlers());
        QVERIFY(collector.waitForFrames(3));
        source.stop();
        const std::vector<SourceFrame> frames = collector.frames();
        for (std::size_t number = 0; number < frames.size(); ++number)
            QCOMPARE(frames[number].number, std::uint64_t(number));
    }
}

void TestSourceStop::aSourceThatIsStoppedFromWithinStartsAgain()
{
    FrameCollector first;
    FrameCollector second;
    SimulatorSource source(smallSensor(), Fastest);
    QSemaphore stopped;
    source.start(first.handlers([&](const SourceFrame&) {
        source.stop();
        stopped.release();
    }));
    stopped.acquire();
    source.start(second.handlers());
    QVERIFY2(first.hasEnded(), "the second start waits for the end of the first");
    QVERIFY(second.waitForFrames(2));
    QCOMPARE(first.frames().size(), std::size_t(1));
    source.stop();
}

/// It often has the number of the source's thread, which has ended.
void TestSourceStop::aThreadThatComesLaterStartsAndStops()
{
    FrameCollector collector;
    SimulatorSource source(smallSensor(), Fastest);
    for (int i = 0; i < 20; ++i) {
        source.start(collector.handlers());
        source.stop();
        bool isRefused = false;
        bool hasEnded = false;
        std::thread([&] {
            try {
                source.start(collector.handlers());
            } catch (const std::logic_error&) {
                isRefused = true;
            }
            source.stop();
            hasEnded = collector.hasEnded();
        }).join();
        QVERIFY(!isRefused);
        QVERIFY(hasEnded);
    }
}

QTEST_GUILESS_MAIN(TestSourceStop)
#include "tst_source_stop.moc"
