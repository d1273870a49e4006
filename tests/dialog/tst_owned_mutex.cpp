#include "dialog/OwnedMutex.h"

#include <QTest>

#include <future>

class TestOwnedMutex : public QObject
{
    Q_OBJECT

private slots:
    void tryIsBusyForTheOwnerToo();
    void tryIsBusyForAnotherThread();
    void lockByTheOwnerRaises();
    void unlockByAnotherThreadRaises();
    void unlockWithoutLockRaises();
    void lockWaitsForAnotherThread();
    void ownershipEndsWithTheLock();
    void unlockCallsWhenTheMutexIsFree();
};

void TestOwnedMutex::tryIsBusyForTheOwnerToo()
{
    zor::OwnedMutex mutex;
    QVERIFY(mutex.try_lock());
    QVERIFY(!mutex.try_lock());
    mutex.unlock();
    QVERIFY(mutex.try_lock());
    mutex.unlock();
}

void TestOwnedMutex::tryIsBusyForAnotherThread()
{
    zor::OwnedMutex mutex;
    mutex.lock();
    QVERIFY(!std::async(std::launch::async, [&] { return mutex.try_lock(); }).get());
    mutex.unlock();
}

void TestOwnedMutex::lockByTheOwnerRaises()
{
    zor::OwnedMutex mutex;
    mutex.lock();
    QVERIFY_EXCEPTION_THROWN(mutex.lock(), std::system_error);
    QVERIFY(mutex.heldByThisThread());
    mutex.unlock();
}

void TestOwnedMutex::unlockByAnotherThreadRaises()
{
    zor::OwnedMutex mutex;
    mutex.lock();
    auto other = std::async(std::launch::async, [&] { mutex.unlock(); });
    QVERIFY_EXCEPTION_THROWN(other.get(), std::system_error);
    QVERIFY(mutex.heldByThisThread());
    mutex.unlock();
}

void TestOwnedMutex::unlockWithoutLockRaises()
{
    zor::OwnedMutex mutex;
    QVERIFY_EXCEPTION_THROWN(mutex.unlock(), std::system_error);
}

void TestOwnedMutex::lockWaitsForAnotherThread()
{
    zor::OwnedMutex mutex;
    bool released = false;
    std::promise<void> held;
    auto other = std::async(std::launch::async, [&] {
        const std::lock_guard<zor::OwnedMutex> lock(mutex);
        held.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        released = true;
    });
    held.get_future().wait();
    const std::lock_guard<zor::OwnedMutex> lock(mutex);
    QVERIFY(released);
}

void TestOwnedMutex::ownershipEndsWithTheLock()
{
    zor::OwnedMutex mutex;
    QVERIFY(!mutex.heldByThisThread());
    {
        const std::lock_guard<zor::OwnedMutex> lock(mutex);
        QVERIFY(mutex.heldByThisThread());
        QVERIFY(!std::async(std::launch::async, [&] { return mutex.heldByThisThread(); }).get());
    }
    QVERIFY(!mutex.heldByThisThread());
}

void TestOwnedMutex::unlockCallsWhenTheMutexIsFree()
{
    int calls = 0;
    int busy = 0;
    zor::OwnedMutex* watched = nullptr;
    zor::OwnedMutex mutex([&] {
        if (++calls > 1)
            return;
        // It calls once more.
        const std::unique_lock<zor::OwnedMutex> lock(*watched, std::try_to_lock);
        busy += lock ? 0 : 1;
    });
    watched = &mutex;
    QVERIFY_EXCEPTION_THROWN(mutex.unlock(), std::system_error);
    mutex.lock();
    QCOMPARE(calls, 0);
    mutex.unlock();
    QCOMPARE(calls, 2);
    QCOMPARE(busy, 0);
}

QTEST_GUILESS_MAIN(TestOwnedMutex)
#include "tst_owned_mutex.moc"
