#include "tests/fakes/FakeConverter.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"

#include <QSignalSpy>
#include <QTest>

namespace {

TestFrame frameOf(int width)
{
    return TestFrame(width, 20, 12, [](int x, int y) { return static_cast<unsigned>(500 + 7 * x + 3 * y); });
}

/// A shown dialog with both viewers started, whose views could follow each other.
struct Linked
{
    Linked()
    {
        dialog.show();
        dialog.take(frameOf(40));
        dialog.Update();
        listener = FakeViewer::listener();
        FakeViewer::calls().clear();
        stage.width = 40;
        stage.height = 20;
        FakeViewer::script().stageImage = &stage;
        FakeViewer::script().settings["display.view.scale"] = 2.5;
        FakeViewer::script().answers["cmd.display.view.image"] = [](ParameterMap* map) {
            *map = {{"pos.x", "0"}, {"pos.y", "0"}, {"dim.w", "20"}, {"dim.h", "10"}};
            return 1;
        };
        rest();
    }

    /// Longer than the throttle.
    void rest()
    {
        rested = QTime::currentTime().addSecs(-10);
        dialog.m_viewClock = rested;
    }
    bool isRestarted() const { return dialog.m_viewClock != rested; }

    std::size_t moves() const
    {
        return FakeViewer::callsOf("cmd.display.view.scale").size() +
               FakeViewer::callsOf("cmd.display.view.at").size();
    }

    /// The lower viewer was zoomed or panned: the view's event is posted.
    void tellOfAChange()
    {
        ParameterMap parameters{{"code", "view.changed"}};
        listener->notify("notification.view", &parameters);
    }

    DialogProbe dialog;
    ZorDisplayCommand* listener = nullptr;
    QTime rested;
    _ZorImage stage{};
};

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
    void changeToldByAStartingViewerIsDropped();
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
    Linked linked;
    DialogProbe& d = linked.dialog;
    QSignalSpy changed(d.ui.gVDown, SIGNAL(sigViewChanged(DisplayView*)));
    linked.tellOfAChange();
    int early = -1;
    int late = -1;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view == d.ui.gVUp)
            early = changed.count();
        else
            late = changed.count();
    };
    d.take(frameOf(30));
    QCOMPARE(changed.count(), 0);
    d.Update();
    QCOMPARE(early, 1);
    QCOMPARE(late, 1);
    QCOMPARE(linked.moves(), std::size_t{0});
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
    Linked linked;
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
    d.take(frameOf(30));
    d.Update();
    QCOMPARE(linked.moves(), std::size_t{0});
    QVERIFY(isRestarted);
    QVERIFY(!d.m_viewLock.heldByThisThread() && !d.m_dataLock.heldByThisThread());
}

void TestRefreshEventLoop::changeDuringTheStartOfBothRestartsTheClockOnce()
{
    Linked linked;
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
    d.take(frameOf(30));
    d.Update();
    QVERIFY(isRestarted);
    QCOMPARE(d.m_viewClock, first);
    QCOMPARE(linked.moves(), std::size_t{0});
}

void TestRefreshEventLoop::changeAfterTheRefreshIsFollowed()
{
    Linked linked;
    linked.dialog.take(frameOf(30));
    linked.dialog.Update();
    linked.rest();
    linked.tellOfAChange();
    QCOMPARE(linked.moves(), std::size_t{0});
    QCoreApplication::processEvents();
    QCOMPARE(linked.moves(), std::size_t{2});
}

void TestRefreshEventLoop::resetDuringTheStartComesAfterTheRefresh()
{
    Linked linked;
    DialogProbe& d = linked.dialog;
    int starts = 0;
    FakeViewer::script().onConfigure = [&](QWidget*) {
        d.ResetData(false);
        starts += d.m_image && d.m_flatY ? 1 : 0;
    };
    d.take(frameOf(30));
    d.Update();
    QCOMPARE(starts, 2);
    QVERIFY(!d.m_image && !d.m_flatY);
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{2});
}

void TestRefreshEventLoop::changeToldByAStartingViewerIsDropped()
{
    Linked linked;
    DialogProbe& d = linked.dialog;
    FakeViewer::script().onConfigure = [&](QWidget*) { linked.tellOfAChange(); };
    QSignalSpy changed(d.ui.gVDown, SIGNAL(sigViewChanged(DisplayView*)));
    d.take(frameOf(30));
    d.Update();
    QVERIFY(changed.count() >= 1);
    QCOMPARE(linked.moves(), std::size_t{0});
}

QTEST_MAIN(TestRefreshEventLoop)
#include "tst_refresh_event_loop.moc"
