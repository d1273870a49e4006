#include "host/source/SimulatorSource.h"
#include "host/zorbench/FrameFeed.h"
#include "tests/host/zorbench/HandSource.h"

#include <QSignalSpy>
#include <QtTest>

#include <functional>

using zor::FrameFeed;
using Numbers = QList<int>;

namespace {

/// Lets everything arrive that is under way.
void settle()
{
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
}

/// received, taken, dropped, waiting
Numbers countsOf(const FrameFeed& feed)
{
    const zor::LatestFrame::Counts counts = feed.counts();
    return {int(counts.received), int(counts.taken), int(counts.dropped), int(counts.waiting)};
}

/// Notes the numbers of the frames that arrive.
class Shown
{
public:
    explicit Shown(FrameFeed& feed)
    {
        QObject::connect(&feed, &FrameFeed::arrived, &feed, [this](const zor::SourceFrame& frame) {
            numbers.append(int(frame.number));
            if (within)
                std::exchange(within, {})();
        });
    }

    Numbers numbers;
    std::function<void()> within; ///< runs once, while a frame is being shown
};

} // namespace

/// From a source's thread to the one that shows frames.
class TestFrameFeed : public QObject
{
    Q_OBJECT

private slots:
    void framesArriveInTheEventLoop();
    void onlyTheNewestWaits();
    void nothingArrivesAfterStop();
    void stopWhileAFrameIsShown();
    void startBeginsAnew();
    void aFrameWithinAnEventLoopWaits_data();
    void aFrameWithinAnEventLoopWaits();
    void framesDoNotHoldUpPainting();
    void countsAddUpAtEveryFrame();
    void anErrorThatEndsTheSourceStops();
    void anErrorThatEndsNothingIsReportedOnce();
    void theErrorThatEndsTheSourceComesFirst();
    void anErrorThatComesTooLateIsDropped();
    void aSourceThatCannotBeStartedIsReported();
    void theEndStopsTheSource();
    void theFilterTakesThePlaceOfFrames();
    void aListenerMayStopWhatBegins();
    void startAndStopAtAnyMoment();
};

void TestFrameFeed::framesArriveInTheEventLoop()
{
    HandSource source;
    FrameFeed feed;
    Shown shown(feed);
    QSignalSpy running(&feed, &FrameFeed::runningChanged);
    QVERIFY(!feed.isRunning());
    QCOMPARE(countsOf(feed), (Numbers{0, 0, 0, 0}));
    feed.start(source);
    QVERIFY(feed.isRunning() && source.isRunning());
    for (int i = 0; i < 3; ++i) {
        source.send(static_cast<std::uint64_t>(i));
        QCOMPARE(shown.numbers.size(), i);
        settle();
    }
    QCOMPARE(shown.numbers, (Numbers{0, 1, 2}));
    QVERIFY(feed.framesPerSecond() > 0.0);
    feed.stop();
    feed.stop();
    QCOMPARE(running, (QList<QVariantList>{{true}, {false}}));
}

void TestFrameFeed::onlyTheNewestWaits()
{
    HandSource source;
    FrameFeed feed;
    Shown shown(feed);
    feed.start(source);
    for (std::uint64_t i = 0; i < 5; ++i)
        source.send(i);
    QCOMPARE(countsOf(feed), (Numbers{5, 0, 4, 1}));
    settle();
    QCOMPARE(countsOf(feed), (Numbers{5, 1, 4, 0}));
    QCOMPARE(shown.numbers, Numbers{4});
}

void TestFrameFeed::nothingArrivesAfterStop()
{
    HandSource source;
    FrameFeed feed;
    Shown shown(feed);
    feed.start(source);
    source.send(0);
    settle();
    source.send(1);
    source.send(2);
    feed.stop();
    QVERIFY(!feed.isRunning() && !source.isRunning());
    QCOMPARE(countsOf(feed), (Numbers{3, 1, 2, 0}));
    settle();
    QCOMPARE(shown.numbers, Numbers{0});
}

void TestFrameFeed::stopWhileAFrameIsShown()
{
    HandSource source;
    FrameFeed feed;
    Shown shown(feed);
    shown.within = [&] {
        source.send(1);
        settle();
        feed.stop();
    };
    feed.start(source);
    source.send(0);
    settle();
    QCOMPARE(shown.numbers, Numbers{0});
    QCOMPARE(countsOf(feed), (Numbers{2, 1, 1, 0}));
}

void TestFrameFeed::startBeginsAnew()
{
    HandSource first;
    HandSource second;
    FrameFeed feed;
    Shown shown(feed);
    feed.start(first);
    for (std::uint64_t i = 0; i < 3; ++i) {
        first.send(i);
        settle();
    }
    first.send(3);
    feed.start(second);
    QVERIFY(!first.isRunning() && second.isRunning());
    QCOMPARE(countsOf(feed), (Numbers{0, 0, 0, 0}));
    QCOMPARE(feed.framesPerSecond(), 0.0);
    settle();
    second.send(7);
    settle();
    QCOMPARE(shown.numbers, (Numbers{0, 1, 2, 7}));
    QCOMPARE(countsOf(feed), (Numbers{1, 1, 0, 0}));
}

void TestFrameFeed::aFrameWithinAnEventLoopWaits_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<Numbers>("expected");
    QTest::newRow("one comes") << 1 << Numbers{0, 1};
    QTest::newRow("three come, of which the last is shown") << 3 << Numbers{0, 3};
}

void TestFrameFeed::aFrameWithinAnEventLoopWaits()
{
    QFETCH(int, count);
    QFETCH(Numbers, expected);
    HandSource source;
    FrameFeed feed;
    Shown shown(feed);
    Numbers meanwhile;
    shown.within = [&] {
        for (int i = 1; i <= count; ++i) {
            source.send(static_cast<std::uint64_t>(i));
            settle();
        }
        meanwhile = shown.numbers;
    };
    feed.start(source);
    source.send(0);
    settle();
    QCOMPARE(meanwhile, Numbers{0});
    QCOMPARE(shown.numbers, expected);
    QCOMPARE(countsOf(feed), (Numbers{1 + count, 2, count - 1, 0}));
}

void TestFrameFeed::framesDoNotHoldUpPainting()
{
    /// Notes an event of the lowest priority, as painting has it.
    class Painter : public QObject
    {
    public:
        explicit Painter(Numbers& into)
            : numbers(into)
        {
        }
        bool event(QEvent*) override
        {
            numbers.append(-1);
            return true;
        }
        Numbers& numbers;
    };
    HandSource source;
    FrameFeed feed;
    Shown shown(feed);
    Painter painter(shown.numbers);
    // The next frame is there before this one has been shown.
    shown.within = [&] {
        source.send(1);
        QCoreApplication::postEvent(&painter, new QEvent(QEvent::User), Qt::LowEventPriority);
    };
    feed.start(source);
    source.send(0);
    settle();
    QCOMPARE(shown.numbers, (Numbers{0, -1, 1}));
}

void TestFrameFeed::countsAddUpAtEveryFrame()
{
    zor::SensorModel model;
    model.width = 64;
    model.height = 32;
    zor::SimulatorSource source(model, zor::SimulatorSource::LargestFrameRate);
    FrameFeed feed;
    bool addUp = true;
    bool isOrdered = true;
    std::int64_t last = -1;
    connect(&feed, &FrameFeed::arrived, this, [&](const zor::SourceFrame& frame) {
        const zor::LatestFrame::Counts counts = feed.counts();
        addUp = addUp && counts.received == counts.taken + counts.dropped + counts.waiting &&
                counts.waiting <= 1 && counts.received > frame.number;
        isOrdered = isOrdered && std::int64_t(frame.number) > last;
        last = std::int64_t(frame.number);
    });
    feed.start(source);
    QTRY_VERIFY(feed.counts().taken >= 50);
    feed.stop();
    QVERIFY(addUp && isOrdered);
    const zor::LatestFrame::Counts counts = feed.counts();
    QCOMPARE(counts.received, counts.taken + counts.dropped);
    settle();
    QCOMPARE(feed.counts().taken, counts.taken);
}

void TestFrameFeed::anErrorThatEndsTheSourceStops()
{
    HandSource source;
    FrameFeed feed;
    Shown shown(feed);
    QSignalSpy failed(&feed, &FrameFeed::failed);
    feed.start(source);
    source.send(0);
    source.fail("the cable is out; plug it in", true);
    QVERIFY(feed.isRunning());
    settle();
    QVERIFY(!feed.isRunning() && !source.isRunning());
    QCOMPARE(failed, (QList<QVariantList>{{"the cable is out; plug it in"}}));
    feed.start(source);
    source.send(5);
    settle();
    QCOMPARE(shown.numbers.last(), 5);
}

void TestFrameFeed::anErrorThatEndsNothingIsReportedOnce()
{
    HandSource source;
    FrameFeed feed;
    QSignalSpy failed(&feed, &FrameFeed::failed);
    for (int run = 0; run < 2; ++run) {
        feed.start(source);
        for (const char* text : {"a packet is lost", "another packet is lost"}) {
            source.fail(text, false);
            settle();
            QVERIFY(feed.isRunning());
        }
    }
    source.fail("the cable is out", true);
    settle();
    QCOMPARE(failed, (QList<QVariantList>{{"a packet is lost"}, {"a packet is lost"}, {"the cable is out"}}));
}

void TestFrameFeed::theErrorThatEndsTheSourceComesFirst()
{
    HandSource source;
    FrameFeed feed;
    QSignalSpy failed(&feed, &FrameFeed::failed);
    feed.start(source);
    source.fail("a packet is lost", false);
    source.fail("the cable is out", true);
    source.fail("nobody is there", false);
    settle();
    QVERIFY(!feed.isRunning());
    QCOMPARE(failed, (QList<QVariantList>{{"the cable is out"}}));
}

void TestFrameFeed::anErrorThatComesTooLateIsDropped()
{
    HandSource source;
    FrameFeed feed;
    QSignalSpy failed(&feed, &FrameFeed::failed);
    feed.start(source);
    source.fail("the cable is out", true);
    feed.stop();
    settle();
    QCOMPARE(failed.count(), 0);
}

void TestFrameFeed::aSourceThatCannotBeStartedIsReported()
{
    HandSource source;
    FrameFeed feed;
    QSignalSpy failed(&feed, &FrameFeed::failed);
    QSignalSpy running(&feed, &FrameFeed::runningChanged);
    source.hasNoThread = true;
    feed.start(source);
    QVERIFY(!feed.isRunning());
    QCOMPARE(running, (QList<QVariantList>{{true}, {false}}));
    QCOMPARE(failed,
             (QList<QVariantList>{{"cannot be started (Resource temporarily unavailable); close other "
                                   "programs and start again"}}));
    source.hasNoThread = false;
    feed.start(source);
    QVERIFY(feed.isRunning());
}

void TestFrameFeed::theEndStopsTheSource()
{
    HandSource source;
    {
        FrameFeed feed;
        QSignalSpy running(&feed, &FrameFeed::runningChanged);
        feed.start(source);
        source.send(0);
    }
    QVERIFY(!source.isRunning());
    settle();
}

void TestFrameFeed::theFilterTakesThePlaceOfFrames()
{
    HandSource source;
    FrameFeed feed;
    const auto other = std::make_shared<const zor::Frame>();
    std::shared_ptr<const zor::Frame> arrived;
    QObject::connect(&feed, &FrameFeed::arrived, &feed,
                     [&](const zor::SourceFrame& frame) { arrived = frame.frame; });
    feed.setFilter([&](const std::shared_ptr<const zor::Frame>&) { return other; });
    feed.start(source);
    source.send(0);
    settle();
    QCOMPARE(arrived.get(), other.get());
}

void TestFrameFeed::aListenerMayStopWhatBegins()
{
    HandSource source;
    FrameFeed feed;
    QObject::connect(&feed, &FrameFeed::runningChanged, &feed, [&](bool isRunning) {
        if (isRunning)
            feed.stop();
    });
    feed.start(source);
    QVERIFY(!feed.isRunning() && !source.isRunning());
}

void TestFrameFeed::startAndStopAtAnyMoment()
{
    zor::SensorModel model;
    model.width = 8;
    model.height = 4;
    zor::SimulatorSource source(model, zor::SimulatorSource::LargestFrameRate);
    for (int i = 0; i < 30; ++i) {
        FrameFeed feed;
        bool isStopped = false;
        bool isLate = false;
        connect(&feed, &FrameFeed::arrived, this, [&] { isLate = isLate || isStopped; });
        feed.start(source);
        const auto wanted = static_cast<std::uint64_t>(i % 3);
        QTRY_VERIFY(feed.counts().taken >= wanted);
        if (i % 2 == 0) {
            feed.stop();
            isStopped = true;
            settle();
        }
        QVERIFY(!isLate);
    }
}

QTEST_GUILESS_MAIN(TestFrameFeed)
#include "tst_frame_feed.moc"
