#include "host/source/LatestFrame.h"

#include <QSemaphore>
#include <QtTest>

#include <thread>

using namespace zor;

/// The hand-over from the thread that makes frames to the one that shows them.
class TestLatestFrame : public QObject
{
    Q_OBJECT

private slots:
    void framesAreCounted_data();
    void framesAreCounted();
    void theNewestIsTaken();
    void aDroppedFrameIsFreed();
    void aTakerThatIsWokenMissesNothing();
    void countsAddUpAtEveryMoment();
};

namespace {

SourceFrame frame(std::uint64_t number)
{
    return {std::make_shared<const Frame>(), number, 0};
}

} // namespace

void TestLatestFrame::framesAreCounted_data()
{
    QTest::addColumn<QString>("steps"); // p puts, t takes
    QTest::addColumn<QString>("answers");
    QTest::addColumn<QList<int>>("counts"); // received, taken, dropped, waiting
    QTest::newRow("nothing happens") << ""
                                     << "" << QList<int>{0, 0, 0, 0};
    QTest::newRow("none is there to be taken") << "t"
                                               << "-" << QList<int>{0, 0, 0, 0};
    QTest::newRow("one waits") << "p"
                               << "w" << QList<int>{1, 0, 0, 1};
    QTest::newRow("one is taken") << "pt"
                                  << "w+" << QList<int>{1, 1, 0, 0};
    QTest::newRow("one is taken once") << "ptt"
                                       << "w+-" << QList<int>{1, 1, 0, 0};
    QTest::newRow("a newer one takes its place: nobody is woken") << "pp"
                                                                  << "w." << QList<int>{2, 0, 1, 1};
    QTest::newRow("two newer ones") << "pppt"
                                    << "w..+" << QList<int>{3, 1, 2, 0};
    QTest::newRow("after each take somebody is woken again") << "ppptpptp"
                                                             << "w..+w.+w" << QList<int>{6, 2, 3, 1};
}

void TestLatestFrame::framesAreCounted()
{
    QFETCH(QString, steps);
    QFETCH(QString, answers);
    QFETCH(QList<int>, counts);
    LatestFrame latest;
    QString answered;
    for (const QChar step : steps) {
        if (step == 'p')
            answered += latest.put(frame(0)) ? 'w' : '.';
        else
            answered += latest.take() ? '+' : '-';
    }
    QCOMPARE(answered, answers);
    const LatestFrame::Counts found = latest.counts();
    QCOMPARE((QList<int>{int(found.received), int(found.taken), int(found.dropped), int(found.waiting)}),
             counts);
}

void TestLatestFrame::theNewestIsTaken()
{
    LatestFrame latest;
    latest.put(frame(1));
    latest.put(frame(2));
    latest.put(frame(3));
    QCOMPARE(latest.take().value().number, std::uint64_t(3));
    latest.put(frame(4));
    QCOMPARE(latest.take().value().number, std::uint64_t(4));
}

void TestLatestFrame::aDroppedFrameIsFreed()
{
    LatestFrame latest;
    SourceFrame first = frame(0);
    const std::weak_ptr<const Frame> watched = first.frame;
    latest.put(std::move(first));
    QVERIFY(!watched.expired());
    latest.put(frame(1));
    QVERIFY(watched.expired());
}

void TestLatestFrame::aTakerThatIsWokenMissesNothing()
{
    constexpr std::uint64_t frames = 20000;
    LatestFrame latest;
    QSemaphore wakes;
    std::thread source([&] {
        for (std::uint64_t number = 0; number < frames; ++number) {
            if (latest.put(frame(number)))
                wakes.release();
        }
    });
    std::uint64_t taken = 0;
    std::uint64_t last = 0;
    bool isNewer = true;
    for (; last + 1 < frames; ++taken) {
        wakes.acquire();
        const std::optional<SourceFrame> next = latest.take();
        if (!next)
            break;
        isNewer = isNewer && (taken == 0 || next->number > last);
        last = next->number;
    }
    source.join();
    QCOMPARE(last, frames - 1);
    QVERIFY(isNewer);
    QCOMPARE(wakes.available(), 0);
    QCOMPARE(latest.counts().taken, taken);
    QCOMPARE(latest.counts().received, frames);
    QCOMPARE(latest.counts().dropped, frames - taken);
}

void TestLatestFrame::countsAddUpAtEveryMoment()
{
    LatestFrame latest;
    std::atomic<int> atWork{2};
    std::thread source([&] {
        for (int i = 0; i < 20000; ++i)
            latest.put(frame(0));
        --atWork;
    });
    std::thread taker([&] {
        for (int i = 0; i < 20000; ++i)
            latest.take();
        --atWork;
    });
    std::uint64_t wrong = 0;
    do {
        const LatestFrame::Counts counts = latest.counts();
        wrong += counts.received != counts.taken + counts.dropped + counts.waiting || counts.waiting > 1;
    } while (atWork > 0);
    source.join();
    taker.join();
    QCOMPARE(wrong, std::uint64_t(0));
    QCOMPARE(latest.counts().received, std::uint64_t(20000));
}

QTEST_APPLESS_MAIN(TestLatestFrame)
#include "tst_latest_frame.moc"
