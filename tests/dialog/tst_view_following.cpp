#include "tests/support/LinkedViews.h"

#include <QTest>

namespace {

constexpr QRect Part(-4, 6, 28, 5);

/// What was sent to the views, as "view command key=value ...".
QStringList sentIn(const LinkedViews& linked)
{
    QStringList lines;
    for (const ViewerCall& call : FakeViewer::calls()) {
        QString line =
            (call.target == linked.dialog.ui.gVUp ? "up " : "down ") + QString::fromStdString(call.name);
        for (const auto& entry : call.before)
            line += QString::fromStdString(" " + entry.first + "=" + entry.second);
        lines << line;
    }
    return lines;
}

} // namespace

class TestViewFollowing : public QObject
{
    Q_OBJECT

private slots:
    void init() { FakeViewer::reset(); }
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
    LinkedViews linked(Part);
    linked.dialog.onViewChanged(upper ? linked.dialog.ui.gVUp : linked.dialog.ui.gVDown);
    const QString source = upper ? "up" : "down";
    const QString target = upper ? "down" : "up";
    // (-4 + 28 / 2) / 40 and (6 + 5 / 2) / 20
    QCOMPARE(sentIn(linked),
             (QStringList{source + " cmd.display.view.image",
                          target + " cmd.display.view.scale cs=base scale=2.500000",
                          target + " cmd.display.view.at cs=base pos.x=0.250000 pos.y=0.425000"}));
}

void TestViewFollowing::anyOtherViewCountsAsTheLower()
{
    LinkedViews linked(Part);
    linked.dialog.onViewChanged(nullptr);
    QCOMPARE(sentIn(linked).value(0).section(' ', 0, 0), QString("down"));
    QCOMPARE(sentIn(linked).value(2).section(' ', 0, 0), QString("up"));
}

void TestViewFollowing::signalOfEachViewIsFollowed()
{
    LinkedViews linked(Part);
    emit linked.dialog.ui.gVUp->sigViewChanged(linked.dialog.ui.gVUp);
    QCOMPARE(sentIn(linked).value(1).left(5), QString("down "));
    FakeViewer::calls().clear();
    linked.rest();
    emit linked.dialog.ui.gVDown->sigViewChanged(linked.dialog.ui.gVDown);
    QCOMPARE(sentIn(linked).value(1).left(3), QString("up "));
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
    LinkedViews linked(Part);
    QTime clock;
    // A try that begins and ends in the same millisecond decides.
    do {
        FakeViewer::calls().clear();
        clock = QTime::currentTime().addMSecs(-age);
        linked.dialog.m_viewClock = clock;
        linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    } while (clock.msecsTo(QTime::currentTime()) != age);
    QCOMPARE(sentIn(linked).size(), follows ? 3 : 0);
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
    LinkedViews linked(Part);
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
    QVERIFY(sentIn(linked).isEmpty());
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
    LinkedViews linked(Part);
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
    LinkedViews linked(Part);
    FakeViewer::script().settings["display.view.scale"] = scale;
    linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    QCOMPARE(FakeViewer::callsOf("cmd.display.view.scale").size(), std::size_t(moves));
    QCOMPARE(FakeViewer::callsOf("cmd.display.view.at").size(), std::size_t(moves));
}

void TestViewFollowing::viewWithoutARectangleSendsTheOtherToTheCorner()
{
    LinkedViews linked(Part);
    FakeViewer::script().answers["cmd.display.view.image"] = [](ParameterMap*) { return 0; };
    linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    QCOMPARE(sentIn(linked).value(2),
             QString("down cmd.display.view.at cs=base pos.x=0.000000 pos.y=0.000000"));
}

void TestViewFollowing::locksAreFreeAfterwards()
{
    LinkedViews linked(Part);
    linked.dialog.onViewChanged(linked.dialog.ui.gVUp);
    QCOMPARE(sentIn(linked).size(), 3);
    QVERIFY(!linked.dialog.m_viewLock.heldByThisThread());
    QVERIFY(!linked.dialog.m_dataLock.heldByThisThread());
}

QTEST_MAIN(TestViewFollowing)
#include "tst_view_following.moc"
