#include "tests/dialog/DialogData.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"

#include <QTest>

#include <atomic>
#include <future>
#include <utility>

namespace {

/// Whether anybody can have the lock.
bool isFree(zor::OwnedMutex& lock)
{
    return std::async(std::launch::async,
                      [&lock] {
                          const bool had = lock.try_lock();
                          if (had)
                              lock.unlock();
                          return had;
                      })
        .get();
}

/// Notes who holds the locks while the frame is dropped.
class LockWatcher : public DialogProbe
{
public:
    void ResetFrame() override
    {
        bothHeld = m_viewLock.heldByThisThread() && m_dataLock.heldByThisThread();
        DialogProbe::ResetFrame();
    }

    bool bothHeld = false;
};

} // namespace

/// The two locks and what gives way to whom.
class TestDialogLocks : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void resetHoldsBothLocks();
    void resetWaitsForARefreshOnAnotherThread();
    void resetWithTheAdaptersInsideARefreshRaises();
    void resetThatCannotHaveTheDataRaises();
    void resetTakesTheViewsFirst();
    void viewChangeDuringARefreshIsDropped();
    void refreshLeavesNoLock();
};

void TestDialogLocks::cleanup()
{
    restoreAllCursors();
}

void TestDialogLocks::resetHoldsBothLocks()
{
    LockWatcher d;
    d.ResetData(false);
    QVERIFY(d.bothHeld);
    QVERIFY(isFree(d.m_viewLock));
    QVERIFY(isFree(d.m_dataLock));
}

void TestDialogLocks::resetWaitsForARefreshOnAnotherThread()
{
    DialogProbe d;
    d.take(unevenFrame());
    std::atomic<bool> refreshed{false};
    std::promise<void> held;
    auto refresh = std::async(std::launch::async, [&] {
        const std::lock_guard<zor::OwnedMutex> lock(d.m_viewLock);
        held.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        refreshed = d.m_image != nullptr;
    });
    held.get_future().wait();
    d.ResetData(false);
    QVERIFY(refreshed);
    QVERIFY(!d.m_image);
}

void TestDialogLocks::resetWithTheAdaptersInsideARefreshRaises()
{
    DialogProbe d;
    d.show();
    d.take(unevenFrame());
    d.m_viewLock.lock();
    QVERIFY_EXCEPTION_THROWN(d.ResetData(true), std::system_error);
    d.m_viewLock.unlock();
    // Nothing is made up for afterwards.
    QVERIFY(d.m_image);
    QVERIFY(d.m_adapterUp && d.m_adapterDown);
    QVERIFY(d.m_dataLock.try_lock());
    d.m_dataLock.unlock();
}

void TestDialogLocks::resetThatCannotHaveTheDataRaises()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.m_dataLock.lock();
    QVERIFY_EXCEPTION_THROWN(d.ResetData(false), std::system_error);
    QVERIFY(isFree(d.m_viewLock));
    QVERIFY(d.m_dataLock.heldByThisThread());
    d.m_dataLock.unlock();
    QVERIFY(d.m_image);
    d.ResetData(false);
    QVERIFY(!d.m_image);
}

void TestDialogLocks::resetTakesTheViewsFirst()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.m_dataLock.lock();
    auto reset = std::async(std::launch::async, [&d] { d.ResetData(false); });
    // The other thread gets the lock of the views and then waits for the data. In the other order the views'
    // lock would stay free.
    const auto viewsTaken = [&d] { return !isFree(d.m_viewLock); };
    const bool taken = QTest::qWaitFor(viewsTaken);
    const bool held = d.m_image != nullptr;
    d.m_dataLock.unlock();
    reset.get();
    QVERIFY(taken);
    QVERIFY(held);
    QVERIFY(!d.m_image);
}

void TestDialogLocks::viewChangeDuringARefreshIsDropped()
{
    DialogProbe d;
    const QTime longAgo = QTime::currentTime().addSecs(-10);
    d.m_viewClock = longAgo;
    d.m_viewLock.lock();
    emit d.ui.gVUp->sigViewChanged(d.ui.gVUp);
    QVERIFY(d.m_viewLock.heldByThisThread());
    d.m_viewLock.unlock();
    // The change is lost, and the clock runs anew all the same.
    QVERIFY(d.m_viewClock != longAgo);
    QVERIFY(d.m_dataLock.try_lock());
    d.m_dataLock.unlock();
}

void TestDialogLocks::refreshLeavesNoLock()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.Update();
    QVERIFY(isFree(d.m_viewLock));
    QVERIFY(isFree(d.m_dataLock));
}

QTEST_MAIN(TestDialogLocks)
#include "tst_dialog_locks.moc"
