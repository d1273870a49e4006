#include "tests/fakes/FakeConverter.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/PlotLook.h"

#include <QCheckBox>
#include <QTest>

#include <algorithm>
#include <cstring>
#include <functional>
#include <future>
#include <pthread.h>
#include <utility>
#include <vector>

namespace {

/// What to do when one lock is about to be taken or to be given back.
struct LockWatch
{
    explicit LockWatch(zor::OwnedMutex& lock)
        : watched(&lock)
    {
        current = this;
    }
    ~LockWatch() { current = nullptr; }
    LockWatch(const LockWatch&) = delete;
    LockWatch& operator=(const LockWatch&) = delete;

    bool isIn(const void* mutex) const
    {
        return mutex >= static_cast<const void*>(watched) && mutex < static_cast<const void*>(watched + 1);
    }
    /// Each is called once.
    static void call(std::function<void()> LockWatch::*what, const void* mutex)
    {
        if (current && current->isIn(mutex) && current->*what)
            std::exchange(current->*what, nullptr)();
    }

    const zor::OwnedMutex* watched;
    std::function<void()> onLock;
    std::function<void()> onUnlock;

    static LockWatch* current;
};

LockWatch* LockWatch::current = nullptr;

} // namespace

extern "C" int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
extern "C" int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex)
{
    LockWatch::call(&LockWatch::onLock, mutex);
    return __real_pthread_mutex_lock(mutex);
}

extern "C" int __real_pthread_mutex_unlock(pthread_mutex_t* mutex);
extern "C" int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex)
{
    LockWatch::call(&LockWatch::onUnlock, mutex);
    return __real_pthread_mutex_unlock(mutex);
}

/// What is done before the view lock is taken, under it, and after it is given back.
class TestLockOrder : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void resetThatHasTheLockFirstLeavesNothingToShow_data();
    void resetThatHasTheLockFirstLeavesNothingToShow();
    void lowerImageIsChosenUnderTheLock();
    void adaptersAreMadeUnderTheLock();
    void refreshEndsUnderTheLockAndTheCursorAfterIt();
    void withoutAResultTheLockIsNotTaken();
};

void TestLockOrder::init()
{
    FakeViewer::reset();
    fakeConverter = FakeConverter();
}

void TestLockOrder::cleanup()
{
    QCOMPARE(restoreAllCursors(), 0);
}

void TestLockOrder::resetThatHasTheLockFirstLeavesNothingToShow_data()
{
    QTest::addColumn<bool>("both");
    QTest::newRow("column pass alone") << false;
    QTest::newRow("both passes") << true;
}

// The refresh has looked for a result and found one when another thread drops it.
void TestLockOrder::resetThatHasTheLockFirstLeavesNothingToShow()
{
    QFETCH(bool, both);
    DialogProbe d;
    d.ui.chBShowY->setChecked(both);
    d.show();
    d.take(TestFrame::rising(30));
    QVERIFY(d.RunCorrection());
    LockWatch watch(d.m_viewLock);
    watch.onLock = [&d] { std::async(std::launch::async, [&d] { d.ResetData(false); }).get(); };
    d.ShowAll();
    QVERIFY(!watch.onLock);
    QVERIFY(!d.m_image);
    QVERIFY(FakeViewer::calls().empty());
    QVERIFY(!d.m_viewLock.heldByThisThread());
}

void TestLockOrder::lowerImageIsChosenUnderTheLock()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame::rising(30));
    QVERIFY(d.RunCorrection());
    const std::vector<std::uint16_t> rows(d.m_flatY, d.m_flatY + 30 * 20);
    QVERIFY(!std::equal(rows.begin(), rows.end(), d.m_flatX));
    LockWatch watch(d.m_viewLock);
    watch.onLock = [&d] { d.ui.chBShowY->setChecked(true); };
    d.ShowAll();
    const std::vector<std::uint8_t> shown = FakeViewer::callsOf("display").at(1).pixels;
    QCOMPARE(shown.size(), rows.size() * 2);
    QCOMPARE(std::memcmp(shown.data(), rows.data(), shown.size()), 0);
}

void TestLockOrder::adaptersAreMadeUnderTheLock()
{
    DialogProbe d;
    LockWatch watch(d.m_viewLock);
    int before = -1;
    int after = -1;
    const auto adapters = [&d] { return (d.m_adapterUp ? 1 : 0) + (d.m_adapterDown ? 1 : 0); };
    watch.onLock = [&] { before = adapters(); };
    watch.onUnlock = [&] { after = adapters(); };
    d.show();
    QCOMPARE(before, 0);
    QCOMPARE(after, 2);
}

void TestLockOrder::refreshEndsUnderTheLockAndTheCursorAfterIt()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame::rising(30));
    QVERIFY(d.RunCorrection());
    LockWatch watch(d.m_viewLock);
    bool isPlotted = false;
    bool hasCursor = false;
    watch.onUnlock = [&] {
        isPlotted = curveIn(d.ui.PlotDown, "Down X") != nullptr;
        hasCursor = QGuiApplication::overrideCursor() != nullptr;
    };
    d.ShowAll();
    QVERIFY(isPlotted);
    QVERIFY(hasCursor);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestLockOrder::withoutAResultTheLockIsNotTaken()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame::rising(30));
    LockWatch watch(d.m_viewLock);
    bool isTaken = false;
    watch.onLock = [&isTaken] { isTaken = true; };
    d.ShowAll();
    QVERIFY(!isTaken);
}

QTEST_MAIN(TestLockOrder)
#include "tst_lock_order.moc"
