#include "tests/fakes/FakeViewer.h"
#include "tests/support/DialogProbe.h"

#include <QTest>

namespace {

/// A shown dialog with both viewers started, and nothing recorded yet.
struct Linked
{
    Linked()
    {
        FakeViewer::reset();
        dialog.show();
        dialog.take(TestFrame(40, 20, 8, [](int x, int y) { return static_cast<unsigned>(50 + x + y); }));
        dialog.Update();
        FakeViewer::calls().clear();

        stage.width = 40;
        stage.height = 20;
        FakeViewer::script().stageImage = &stage;
        FakeViewer::script().settings["display.view.scale"] = 2.5;
        FakeViewer::script().answers["cmd.display.view.image"] = [](ParameterMap* map) {
            *map = {{"pos.x", "-4"}, {"pos.y", "6"}, {"dim.w", "28"}, {"dim.h", "5"}};
            return 1;
        };
        rest();
    }

    /// Longer than the throttle.
    void rest() { dialog.m_viewClock = QTime::currentTime().addSecs(-10); }

    /// What was sent to the views, as "view command key=value ...".
    QStringList sent() const
    {
        QStringList lines;
        for (const ViewerCall& call : FakeViewer::calls()) {
            QString line =
                (call.target == dialog.ui.gVUp ? "up " : "down ") + QString::fromStdString(call.name);
            for (const auto& entry : call.before)
                line += QString::fromStdString(" " + entry.first + "=" + entry.second);
            lines << line;
        }
        return lines;
    }

    _ZorImage stage{};
    DialogProbe dialog;
};

} // namespace

class TestViewFollowing : public QObject
{
    Q_OBJECT

private slots:
    void otherViewGoesToTheSamePlace_data();
    void otherViewGoesToTheSamePlace();
    void anyOtherViewCountsAsTheLower();
    void signalOfEachViewIsFollowed();
    void changesWithinFiftyMillisecondsAreDropped_data();
    void changesWithinFiftyMillisecondsAreDropped();
    void changeThatFindsALockBusyRestartsTheClock_data();
    void changeThatFindsALockBusyRestartsTheClock();
    void missingPiecesMoveNothing_data();
    void missingPiecesMoveNothing();
    void smallScalesMoveNothing_data();
    void smallScalesMoveNothing();
    void viewWithoutARectangleSendsTheOtherToTheCorner();
    void locksAreFreeAfterwards();
};

void TestViewFollowing::otherViewGoesToTheSamePlace_data()
{
    QTest::addColumn<bool>("upper");
    QTest::newRow("the lower view follows the upper") << true;
    QTest::newRow("the upper view follows the lower") << false;
}

void TestViewFollowing::otherViewGoesToTheSamePlace()
{
    QFETCH(bool, upper);
    Linked linked;
    linked.dialog.onViewChanged(upper ? linked.dialog.ui.gVUp : linked.dialog.ui.gVDown);
    const QString source = upper ? "up" : "down";
    const QString target = upper ? "down" : "up";
    // (-4 + 28 / 2) / 40 and (6 + 5 / 2) / 20
    QCOMPARE(linked.sent(),
             (QStringList{source + " cmd.display.view.image",
                          target + " cmd.display.view.scale cs=base scale=2.500000",
                          target + " cmd.display.view.at cs=base pos.x=0.250000 pos.y=0.425000"}));
}

void TestViewFollowing::anyOtherViewCountsAsTheLower()
{
    Linked linked;
    linked.dialog.onViewChanged(nullptr);
    QCOMPARE(linked.sent().value(0).section(' ', 0, 0), QString("down"));
    QCOMPARE(linked.sent().value(2).section(' ', 0, 0), QString("up"));
}

void TestViewFollowing::signalOfEachViewIsFollowed()
{
    Linked linked;
    emit linked.dialog.ui.gVUp->sigViewChanged(linked.dialog.ui.gVUp);
    QCOMPARE(linked.sent().value(1).left(5), QString("down "));
    FakeViewer::calls().clear();
    linked.rest();
    emit linked.dialog.ui.gVDown->sigViewChanged(linked.dialog.ui.gVDown);
    QCOMPARE(linked.sent().value(1).left(3), QString("up "));
}

void TestViewFollowing::changesWithinFiftyMillisecondsAreDropped_data()
{
    QTest::addColumn<int>("age");
    QTest::addColumn<bool>("follows");
    QTest::newRow("at once") << 0 << false;
    QTest::newRow("after 49 ms") << 49 << false;
    QTest::newRow("after 50 ms") << 50 << true;
    QTest::newRow("after 51 ms") << 51 << true;
}

void TestViewFollowing::changesWithinFiftyMillisecondsAreDropped()
{
    QFETCH(int, age);
    QFETCH(bool, follows);
    Linked linked;
    QTime clock;
    // A try that begins and ends in the same millisecond decides.
    do {
        FakeViewer::calls().clear();
        clock = QTime::currentTime().addMSecs(-age);
        linked.dialog.m_viewClock = clock;
        linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    } while (clock.msecsTo(QTime::currentTime()) != age);
    QCOMPARE(linked.sent().size(), follows ? 3 : 0);
    // What is followed restarts the clock, what is dropped does not.
    QCOMPARE(linked.dialog.m_viewClock != clock, follows);
}

void TestViewFollowing::changeThatFindsALockBusyRestartsTheClock_data()
{
    QTest::addColumn<bool>("view");
    QTest::newRow("the view lock") << true;
    QTest::newRow("the data lock") << false;
}

void TestViewFollowing::changeThatFindsALockBusyRestartsTheClock()
{
    QFETCH(bool, view);
    Linked linked;
    zor::OwnedMutex& lock = view ? linked.dialog.m_viewLock : linked.dialog.m_dataLock;
    lock.lock();
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    // From long before, which a busy machine does not take for the way through one call.
    linked.dialog.m_viewClock = QTime::currentTime().addSecs(-60);
    linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    const int elapsed = linked.dialog.m_viewClock.elapsed();
    QT_WARNING_POP
    lock.unlock();
    QVERIFY(linked.sent().isEmpty());
    QVERIFY2(elapsed < 60000, qPrintable(QString("the clock shows %1 ms").arg(elapsed)));
    QVERIFY(!linked.dialog.m_viewLock.heldByThisThread());
}

void TestViewFollowing::missingPiecesMoveNothing_data()
{
    QTest::addColumn<QString>("missing");
    for (const char* piece : {"stage", "image", "width", "height", "settings", "scale", "adapters"})
        QTest::newRow(piece) << piece;
}

void TestViewFollowing::missingPiecesMoveNothing()
{
    QFETCH(QString, missing);
    Linked linked;
    ViewerScript& script = FakeViewer::script();
    if (missing == "stage")
        script.hasStage = false;
    else if (missing == "image")
        script.stageImage = nullptr;
    else if (missing == "width")
        linked.stage.width = 0;
    else if (missing == "height")
        linked.stage.height = 0;
    else if (missing == "settings")
        script.hasSettings = false;
    else if (missing == "scale")
        script.settings.clear();
    else
        linked.dialog.ResetData(true);
    int settingsAsked = 0;
    script.onSettings = [&](QWidget*) { ++settingsAsked; };
    linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    // The rectangle is asked for first, the scale last.
    QCOMPARE(FakeViewer::callsOf("cmd.display.view.image").size(), std::size_t(missing != "adapters"));
    QCOMPARE(settingsAsked, missing == "settings" || missing == "scale" ? 1 : 0);
    QVERIFY(FakeViewer::callsOf("cmd.display.view.scale").empty());
    QVERIFY(FakeViewer::callsOf("cmd.display.view.at").empty());
    QVERIFY(!linked.dialog.m_viewLock.heldByThisThread());
    QVERIFY(!linked.dialog.m_dataLock.heldByThisThread());
}

void TestViewFollowing::smallScalesMoveNothing_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<bool>("moves");
    QTest::newRow("0") << 0.0 << false;
    QTest::newRow("1e-5") << 1e-5 << false;
    QTest::newRow("just above 1e-5") << 1.0001e-5 << true;
    QTest::newRow("negative") << -1.0 << false;
    QTest::newRow("not a number") << qQNaN() << false;
}

void TestViewFollowing::smallScalesMoveNothing()
{
    QFETCH(double, scale);
    QFETCH(bool, moves);
    Linked linked;
    FakeViewer::script().settings["display.view.scale"] = scale;
    linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    QCOMPARE(FakeViewer::callsOf("cmd.display.view.scale").size(), std::size_t(moves));
    QCOMPARE(FakeViewer::callsOf("cmd.display.view.at").size(), std::size_t(moves));
}

void TestViewFollowing::viewWithoutARectangleSendsTheOtherToTheCorner()
{
    Linked linked;
    FakeViewer::script().answers["cmd.display.view.image"] = [](ParameterMap*) { return 0; };
    linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    QCOMPARE(linked.sent().value(2),
             QString("down cmd.display.view.at cs=base pos.x=0.000000 pos.y=0.000000"));
}

void TestViewFollowing::locksAreFreeAfterwards()
{
    Linked linked;
    linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    QCOMPARE(linked.sent().size(), 3);
    QVERIFY(!linked.dialog.m_viewLock.heldByThisThread());
    QVERIFY(!linked.dialog.m_dataLock.heldByThisThread());
}

QTEST_MAIN(TestViewFollowing)
#include "tst_view_following.moc"
