#include "host/zorbench/BackgroundWork.h"

#include <QtTest>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>

using zor::BackgroundWork;

/// Work on a thread of its own, and what follows from it.
class TestBackgroundWork : public QObject
{
    Q_OBJECT

private slots:
    void workIsDoneElsewhereAndFollowedHere();
    void workIsDoneInOrder();
    void nothingFollowsForAReceiverThatIsGone();
    void endWaitsForWhatIsBeingDone();
    void workIsForgottenWhereItWasDone();
};

void TestBackgroundWork::workIsDoneElsewhereAndFollowedHere()
{
    BackgroundWork work;
    std::atomic<QThread*> doneOn{nullptr};
    QThread* followedOn = nullptr;
    work.start(this, [&] {
        doneOn = QThread::currentThread();
        return [&] { followedOn = QThread::currentThread(); };
    });
    QTRY_VERIFY(followedOn);
    QCOMPARE(followedOn, QThread::currentThread());
    QVERIFY(doneOn && doneOn != QThread::currentThread());
}

void TestBackgroundWork::workIsDoneInOrder()
{
    BackgroundWork work;
    QVector<int> done;
    QVector<int> followed;
    for (int i = 0; i < 50; ++i)
        work.start(this, [&done, &followed, i]() -> BackgroundWork::Sequel {
            done.append(i);
            if (i % 5 == 0)
                return {};
            return [&followed, i] { followed.append(i); };
        });
    QTRY_COMPARE(followed.size(), 40);
    QVERIFY(std::is_sorted(followed.begin(), followed.end()));
    QCOMPARE(done.size(), 50);
    QVERIFY(std::is_sorted(done.begin(), done.end()));
}

void TestBackgroundWork::nothingFollowsForAReceiverThatIsGone()
{
    BackgroundWork work;
    auto receiver = std::make_unique<QObject>();
    bool hasFollowed = false;
    bool isOver = false;
    work.start(receiver.get(), [&] { return [&] { hasFollowed = true; }; });
    work.start(this, [&] { return [&] { isOver = true; }; });
    receiver.reset();
    QTRY_VERIFY(isOver);
    QVERIFY(!hasFollowed);
}

void TestBackgroundWork::endWaitsForWhatIsBeingDone()
{
    QSemaphore begun;
    QSemaphore mayEnd;
    std::atomic<bool> hasEnded{false};
    bool hasFollowed = false;
    auto work = std::make_unique<BackgroundWork>();
    work->start(this, [&] {
        begun.release();
        mayEnd.acquire();
        hasEnded = true;
        return [&] { hasFollowed = true; };
    });
    begun.acquire();
    std::thread later([&] { mayEnd.release(); });
    work.reset();
    QVERIFY(hasEnded);
    later.join();
    QCoreApplication::processEvents();
    QVERIFY(!hasFollowed);
}

void TestBackgroundWork::workIsForgottenWhereItWasDone()
{
    struct Witness
    {
        QThread** endedOn = nullptr;
        ~Witness() { *endedOn = QThread::currentThread(); }
    };
    BackgroundWork work;
    QThread* endedOn = nullptr;
    bool isOver = false;
    auto witness = std::make_shared<Witness>();
    witness->endedOn = &endedOn;
    work.start(this, [&isOver, owned = std::move(witness)] { return [&isOver] { isOver = true; }; });
    QTRY_VERIFY(isOver);
    QVERIFY(endedOn && endedOn != QThread::currentThread());
}

QTEST_GUILESS_MAIN(TestBackgroundWork)
#include "tst_background_work.moc"
