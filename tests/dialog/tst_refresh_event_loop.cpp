#include "fakes/FakeConverter.h"
#include "fakes/FakeViewer.h"
#include "support/Cursors.h"
#include "support/DialogProbe.h"

#include <QSignalSpy>
#include <QTest>

#include <system_error>

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
        QTest::qWait(60);
    }

    int clock() const
    {
        QT_WARNING_PUSH
        QT_WARNING_DISABLE_DEPRECATED
        return dialog.m_viewClock.elapsed();
        QT_WARNING_POP
    }

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
    _ZorImage stage{};
};

} // namespace

/// The start of a viewer runs an event loop inside a refresh: what comes in there finds the view lock busy.
class RefreshEventLoop : public QObject
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
    void resetDuringTheStartRaises();
    void changeToldByAStartingViewerIsDropped();
};

void RefreshEventLoop::init()
{
    FakeViewer::reset();
    fakeConverter = FakeConverter();
}

void RefreshEventLoop::cleanup()
{
    QCOMPARE(restoreAllCursors(), 0);
}

// The event was posted before the refresh and is delivered by its event loop.
void RefreshEventLoop::changeThatWaitedComesInDuringTheStart()
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

void RefreshEventLoop::changeDuringTheStartIsDropped_data()
{
    QTest::addColumn<bool>("upperStarts");
    QTest::addColumn<bool>("upperChanges");
    QTest::newRow("upper view starts and changes") << true << true;
    QTest::newRow("upper view starts, lower one changes") << true << false;
    QTest::newRow("lower view starts, upper one changes") << false << true;
    QTest::newRow("lower view starts and changes") << false << false;
}

void RefreshEventLoop::changeDuringTheStartIsDropped()
{
    QFETCH(bool, upperStarts);
    QFETCH(bool, upperChanges);
    Linked linked;
    DialogProbe& d = linked.dialog;
    DisplayView* const starting = upperStarts ? d.ui.gVUp : d.ui.gVDown;
    DisplayView* const changing = upperChanges ? d.ui.gVUp : d.ui.gVDown;
    int before = -1;
    int after = -1;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view != starting)
            return;
        QTest::qSleep(120);
        before = linked.clock();
        emit changing->sigViewChanged(changing);
        after = linked.clock();
    };
    d.take(frameOf(30));
    d.Update();
    QCOMPARE(linked.moves(), std::size_t{0});
    QVERIFY2(before >= 120 && after >= 0 && after < before,
             qPrintable(QString("the clock shows %1 ms, %2 before").arg(after).arg(before)));
    QVERIFY(!d.m_viewLock.heldByThisThread() && !d.m_dataLock.heldByThisThread());
}

void RefreshEventLoop::changeDuringTheStartOfBothRestartsTheClockOnce()
{
    Linked linked;
    DialogProbe& d = linked.dialog;
    QVector<int> shown;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        if (view != d.ui.gVUp)
            return;
        QTest::qSleep(60);
        emit d.ui.gVUp->sigViewChanged(d.ui.gVUp);
        QTest::qSleep(10);
        // Too soon after the first one: not even the clock changes.
        shown << linked.clock();
        emit d.ui.gVDown->sigViewChanged(d.ui.gVDown);
        shown << linked.clock();
    };
    d.take(frameOf(30));
    d.Update();
    QCOMPARE(shown.size(), 2);
    if (shown.at(0) >= 50)
        QSKIP("the machine was too slow for two changes within the throttle");
    QVERIFY2(shown.at(1) >= shown.at(0), qPrintable(QString("%1, then %2").arg(shown[0]).arg(shown[1])));
    QCOMPARE(linked.moves(), std::size_t{0});
}

void RefreshEventLoop::changeAfterTheRefreshIsFollowed()
{
    Linked linked;
    linked.dialog.take(frameOf(30));
    linked.dialog.Update();
    QTest::qWait(60);
    linked.tellOfAChange();
    QCOMPARE(linked.moves(), std::size_t{0});
    QCoreApplication::processEvents();
    QCOMPARE(linked.moves(), std::size_t{2});
}

void RefreshEventLoop::resetDuringTheStartRaises()
{
    Linked linked;
    DialogProbe& d = linked.dialog;
    int raised = 0;
    FakeViewer::script().onConfigure = [&](QWidget*) {
        try {
            d.ResetData(false);
        } catch (const std::system_error&) {
            ++raised;
        }
    };
    d.take(frameOf(30));
    d.Update();
    QCOMPARE(raised, 2);
    QVERIFY(d.m_image && d.m_flatY);
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{2});
}

void RefreshEventLoop::changeToldByAStartingViewerIsDropped()
{
    Linked linked;
    DialogProbe& d = linked.dialog;
    FakeViewer::script().onConfigure = [&](QWidget*) { linked.tellOfAChange(); };
    QSignalSpy changed(d.ui.gVDown, SIGNAL(sigViewChanged(DisplayView*)));
    QTest::qWait(60);
    d.take(frameOf(30));
    d.Update();
    QVERIFY(changed.count() >= 1);
    QCOMPARE(linked.moves(), std::size_t{0});
}

QTEST_MAIN(RefreshEventLoop)
#include "tst_refresh_event_loop.moc"
