#include "tests/fakes/FakeConverter.h"
#include "tests/support/Cursors.h"
#include "tests/support/LinkedViews.h"

#include <QSignalSpy>
#include <QTest>

namespace {

constexpr QRect Part(0, 0, 20, 10);

std::size_t moves()
{
    return FakeViewer::callsOf("cmd.display.view.scale").size() +
           FakeViewer::callsOf("cmd.display.view.at").size();
}

} // namespace

/// The start of a viewer runs an event loop inside a refresh: what comes in there finds the view lock busy.
class TestRefreshEventLoop : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void changeThatWaitedComesInDuringTheStart();
    void changeDuringTheStartIsDropped_data();
    void changeDuringTheStartIsDropped();
    void changeDuringTheStartOfBothRestartsTheClockOnce();
    void changeAfterTheRefreshIsFollowed();
    void resetDuringTheStartComesAfterTheRefresh();
    void changeReportedByAStartingViewerIsDropped();
};

void TestRefreshEventLoop::init()
{
    FakeViewer::reset();
    fakeConverter = FakeConverter();
}

void TestRefreshEventLoop::cleanup()
{
    QCOMPARE(restoreAllCursors(), 0);
}

// The event was posted before the refresh and is delivered by its event loop.
void TestRefreshEventLoop::changeThatWaitedComesInDuringTheStart()
{
    LinkedViews linked(Part);
    DialogProbe& d = linked.dialog;
    QSignalSpy changed(d.ui.gVDown, SIGNAL(sigViewChanged(DisplayView*)));
    linked.reportAChange();
    int early = -1;
    int late = -1;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view == d.ui.gVUp)
            early = changed.count();
        else
            late = changed.count();
    };
    d.take(TestFrame::rising(30));
    QCOMPARE(changed.count(), 0);
    d.Update();
    QCOMPARE(early, 1);
    QCOMPARE(late, 1);
    QCOMPARE(moves(), std::size_t{0});
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{2});
    QVERIFY(!d.m_viewLock.heldByThisThread() && !d.m_dataLock.heldByThisThread());
}

void TestRefreshEventLoop::changeDuringTheStartIsDropped_data()
{
    QTest::addColumn<bool>("upperStarts");
    QTest::addColumn<bool>("upperChanges");
    QTest::newRow("upper view starts and changes") << true << true;
    QTest::newRow("upper view starts, lower one changes") << true << false;
    QTest::newRow("lower view starts, upper one changes") << false << true;
    QTest::newRow("lower view starts and changes") << false << false;
}

void TestRefreshEventLoop::changeDuringTheStartIsDropped()
{
    QFETCH(bool, upperStarts);
    QFETCH(bool, upperChanges);
    LinkedViews linked(Part);
    DialogProbe& d = linked.dialog;
    DisplayView* const starting = upperStarts ? d.ui.gVUp : d.ui.gVDown;
    DisplayView* const changing = upperChanges ? d.ui.gVUp : d.ui.gVDown;
    bool isRestarted = false;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view != starting)
            return;
        emit changing->sigViewChanged(changing);
        isRestarted = linked.isRestarted();
    };
    d.take(TestFrame::rising(30));
    d.Update();
    QCOMPARE(moves(), std::size_t{0});
    QVERIFY(isRestarted);
    QVERIFY(!d.m_viewLock.heldByThisThread() && !d.m_dataLock.heldByThisThread());
}

void TestRefreshEventLoop::changeDuringTheStartOfBothRestartsTheClockOnce()
{
    LinkedViews linked(Part);
    DialogProbe& d = linked.dialog;
    bool isRestarted = false;
    QTime first;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view != d.ui.gVUp)
            return;
        emit d.ui.gVUp->sigViewChanged(d.ui.gVUp);
        isRestarted = linked.isRestarted();
        // Too soon after the first one: not even the clock changes. A try that is itself done in time
        // decides.
        do {
            first = QTime::currentTime().addMSecs(-10);
            d.m_viewClock = first;
            emit d.ui.gVDown->sigViewChanged(d.ui.gVDown);
        } while (first.msecsTo(QTime::currentTime()) < 10 || first.msecsTo(QTime::currentTime()) >= 50);
    };
    d.take(TestFrame::rising(30));
    d.Update();
    QVERIFY(isRestarted);
    QCOMPARE(d.m_viewClock, first);
    QCOMPARE(moves(), std::size_t{0});
}

void TestRefreshEventLoop::changeAfterTheRefreshIsFollowed()
{
    LinkedViews linked(Part);
    linked.dialog.take(TestFrame::rising(30));
    linked.dialog.Update();
    linked.rest();
    linked.reportAChange();
    QCOMPARE(moves(), std::size_t{0});
    QCoreApplication::processEvents();
    QCOMPARE(moves(), std::size_t{2});
}

void TestRefreshEventLoop::resetDuringTheStartComesAfterTheRefresh()
{
    LinkedViews linked(Part);
    DialogProbe& d = linked.dialog;
    int starts = 0;
    FakeViewer::script().onConfigure = [&](QWidget*) {
        d.ResetData(false);
        starts += d.m_image && d.m_flatY ? 1 : 0;
    };
    d.take(TestFrame::rising(30));
    d.Update();
    QCOMPARE(starts, 2);
    QVERIFY(!d.m_image && !d.m_flatY);
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{2});
}

void TestRefreshEventLoop::changeReportedByAStartingViewerIsDropped()
{
    LinkedViews linked(Part);
    DialogProbe& d = linked.dialog;
    FakeViewer::script().onConfigure = [&](QWidget*) { linked.reportAChange(); };
    QSignalSpy changed(d.ui.gVDown, SIGNAL(sigViewChanged(DisplayView*)));
    d.take(TestFrame::rising(30));
    d.Update();
    QVERIFY(changed.count() >= 1);
    QCOMPARE(moves(), std::size_t{0});
}

QTEST_MAIN(TestRefreshEventLoop)
#include "tst_refresh_event_loop.moc"
