#include "tests/plugin/HostedDialog.h"
#include "tests/plugin/StoppedClock.h"

#include <QGraphicsView>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <cmath>
#include <memory>

namespace {

/// A place in a view that is not its middle.
const QPoint Aside(90, 70);

struct ViewPlace
{
    double scale;
    QPointF centre;
};

ViewPlace placeOf(const QWidget* view)
{
    return {ViewerTap::scaleOf(view), ViewerTap::centreOf(view)};
}

QString textOf(const ViewPlace& place)
{
    return QString("scale %1 at %2, %3").arg(place.scale).arg(place.centre.x()).arg(place.centre.y());
}

/// The scale to the digits of a command. Centres are reported in halves of an image pixel, alike by both
/// views.
bool isSame(const ViewPlace& one, const ViewPlace& other)
{
    return std::abs(one.scale - other.scale) <= 1e-6 && one.centre == other.centre;
}

/// The dialog with a frame in both views, zoomed in so far that a drag has somewhere to go, at rest.
struct ZoomedDialog
{
    explicit ZoomedDialog(bool fromUpper = true)
    {
        host.show(TestFrame(640, 480, 12, [](int x, int y) { return 400U + unsigned(x + 3 * y); }));
        upper = host.find("gVUp");
        lower = host.find("gVDown");
        hand = fromUpper ? upper : lower;
        follower = fromUpper ? lower : upper;
        HostedDialog::pause();
        fitted = ViewerTap::scaleOf(hand);
        ViewerTap::setScale(hand, 2.0);
        HostedDialog::pause();
        for (QWidget* view : {hand, follower})
            changes.push_back(std::make_unique<QSignalSpy>(view, SIGNAL(sigViewChanged(DisplayView*))));
    }

    HostedDialog host;
    QWidget* upper;
    QWidget* lower;
    QWidget* hand;
    QWidget* follower;
    double fitted;                                    ///< scale at which the whole frame is seen
    std::vector<std::unique_ptr<QSignalSpy>> changes; ///< of the hand's view, then of the other
};

} // namespace

/// The two views of the built plug-in follow each other, with the real viewer and the operator's mouse.
class TestViewSynchronisation : public QObject
{
    Q_OBJECT

private slots:
    void otherViewFollows_data();
    void otherViewFollows();
    void otherViewFollowsTheMenu_data();
    void otherViewFollowsTheMenu();
    void followUpEndsAtOnce_data();
    void followUpEndsAtOnce();
    void changeWithinTheThrottleIsDropped();
    void nextChangeCatchesUp();
    void viewsFollowAlsoWithoutAFrame();
    void changeBeforeTheFirstImageMovesNothing();
    void newFrameOfAnotherSizeKeepsTheViewsTogether();
};

void TestViewSynchronisation::otherViewFollows_data()
{
    QTest::addColumn<bool>("fromUpper");
    QTest::addColumn<int>("wheel");
    for (const bool fromUpper : {true, false}) {
        const char* const which = fromUpper ? "upper" : "lower";
        QTest::addRow("wheel forward on the %s view", which) << fromUpper << 240;
        QTest::addRow("wheel back on the %s view", which) << fromUpper << -120;
        QTest::addRow("drag on the %s view", which) << fromUpper << 0;
    }
}

void TestViewSynchronisation::otherViewFollows()
{
    QFETCH(bool, fromUpper);
    QFETCH(int, wheel);
    ZoomedDialog d(fromUpper);
    const ViewPlace before = placeOf(d.hand);
    QVERIFY2(isSame(before, placeOf(d.follower)), qPrintable(textOf(placeOf(d.follower))));
    if (wheel != 0)
        HostedDialog::wheel(d.hand, Aside, wheel);
    else
        HostedDialog::drag(d.hand, QPoint(200, 150), QPoint(140, 121));
    HostedDialog::pause();

    const ViewPlace after = placeOf(d.hand);
    if (wheel != 0) {
        // Four notches double the scale; the pixel below the cursor stays.
        QVERIFY2(std::abs(after.scale / before.scale - std::exp2(wheel / 480.0)) < 1e-9,
                 qPrintable(textOf(after)));
        QVERIFY2((after.centre.x() < before.centre.x()) == (wheel > 0), qPrintable(textOf(after)));
    } else {
        // 60 and 29 device pixels at two for each image pixel.
        QCOMPARE(after.scale, before.scale);
        QCOMPARE(after.centre - before.centre, QPointF(30.0, 14.5));
    }
    QVERIFY2(isSame(placeOf(d.follower), after),
             qPrintable(textOf(placeOf(d.follower)) + ", expected " + textOf(after)));
}

void TestViewSynchronisation::otherViewFollowsTheMenu_data()
{
    QTest::addColumn<bool>("fromUpper");
    QTest::addColumn<int>("entry");
    const char* const entries[] = {"Zoom in", "Zoom out", "Fit", "1:1"};
    for (int i = 0; i < 4; ++i) {
        QTest::addRow("%s, with the mouse on the upper view", entries[i]) << true << i;
        QTest::addRow("%s, with keys on the lower view", entries[i]) << false << i;
    }
}

void TestViewSynchronisation::otherViewFollowsTheMenu()
{
    QFETCH(bool, fromUpper);
    QFETCH(int, entry);
    ZoomedDialog d(fromUpper);
    const bool hasReturned = HostedDialog::useMenu(d.hand, [&](QMenu& menu) {
        if (fromUpper) {
            QTest::mouseClick(menu.windowHandle(), Qt::LeftButton, {},
                              menu.actionGeometry(menu.actions().at(entry)).center());
            return;
        }
        for (int i = 0; i <= entry; ++i)
            QTest::keyClick(menu.windowHandle(), Qt::Key_Down);
        QTest::keyClick(menu.windowHandle(), Qt::Key_Return);
    });
    QVERIFY(hasReturned);
    HostedDialog::pause();
    const double expected[] = {std::sqrt(8.0), std::sqrt(2.0), d.fitted, 1.0};
    QVERIFY2(std::abs(placeOf(d.hand).scale - expected[entry]) <= 1e-6, qPrintable(textOf(placeOf(d.hand))));
    QVERIFY2(isSame(placeOf(d.follower), placeOf(d.hand)),
             qPrintable(textOf(placeOf(d.follower)) + ", expected " + textOf(placeOf(d.hand))));
}

void TestViewSynchronisation::followUpEndsAtOnce_data()
{
    QTest::addColumn<bool>("fromUpper");
    QTest::newRow("from the upper view") << true;
    QTest::newRow("from the lower view") << false;
}

void TestViewSynchronisation::followUpEndsAtOnce()
{
    QFETCH(bool, fromUpper);
    ZoomedDialog d(fromUpper);
    HostedDialog::wheel(d.hand, Aside, 120);
    const ViewPlace reported = placeOf(d.hand);
    for (int i = 0; i < 4; ++i)
        HostedDialog::pause();
    // One change under the hand; the other view reports its new scale and its new place at most.
    QCOMPARE(d.changes[0]->count(), 1);
    QVERIFY2(d.changes[1]->count() >= 1 && d.changes[1]->count() <= 2,
             qPrintable(QString("%1 changes of the other view").arg(d.changes[1]->count())));
    QVERIFY2(placeOf(d.hand).centre == reported.centre && isSame(placeOf(d.hand), reported),
             qPrintable(textOf(placeOf(d.hand)) + ", expected " + textOf(reported)));
}

void TestViewSynchronisation::changeWithinTheThrottleIsDropped()
{
    ZoomedDialog d;
    HostedDialog::wheel(d.hand, Aside, 120);
    QCoreApplication::sendPostedEvents();
    const ViewPlace first = placeOf(d.hand);
    QVERIFY(isSame(placeOf(d.follower), first));
    StoppedClock::advance(HostedDialog::Throttle - 1);
    HostedDialog::wheel(d.hand, Aside, 120);
    QCoreApplication::sendPostedEvents();
    QVERIFY2(isSame(placeOf(d.follower), first),
             qPrintable(textOf(placeOf(d.follower)) + ", expected " + textOf(first)));
    QVERIFY(!isSame(placeOf(d.hand), first));
    StoppedClock::advance(1);
    HostedDialog::wheel(d.hand, Aside, 120);
    QCoreApplication::sendPostedEvents();
    QVERIFY2(isSame(placeOf(d.follower), placeOf(d.hand)),
             qPrintable(textOf(placeOf(d.follower)) + ", expected " + textOf(placeOf(d.hand))));
}

void TestViewSynchronisation::nextChangeCatchesUp()
{
    ZoomedDialog d;
    for (int i = 0; i < 5; ++i) {
        HostedDialog::wheel(d.hand, Aside, 120);
        QCoreApplication::sendPostedEvents();
    }
    HostedDialog::pause();
    HostedDialog::wheel(d.hand, Aside, -120);
    HostedDialog::pause();
    QVERIFY2(isSame(placeOf(d.follower), placeOf(d.hand)),
             qPrintable(textOf(placeOf(d.follower)) + ", expected " + textOf(placeOf(d.hand))));
}

void TestViewSynchronisation::viewsFollowAlsoWithoutAFrame()
{
    ZoomedDialog d;
    d.host.plugIn().Reset();
    HostedDialog::wheel(d.hand, Aside, 240);
    HostedDialog::pause();
    QVERIFY(placeOf(d.hand).scale > 2.5);
    QVERIFY(isSame(placeOf(d.follower), placeOf(d.hand)));
}

void TestViewSynchronisation::changeBeforeTheFirstImageMovesNothing()
{
    HostedDialog host;
    HostedDialog::wheel(host.find("gVUp"), Aside, 240);
    HostedDialog::drag(host.find("gVDown"), QPoint(50, 50), QPoint(90, 90));
    HostedDialog::pause();
    QVERIFY(!ViewerTap::viewerOf(host.find("gVUp")) && !ViewerTap::viewerOf(host.find("gVDown")));
}

void TestViewSynchronisation::newFrameOfAnotherSizeKeepsTheViewsTogether()
{
    ZoomedDialog d;
    d.host.show(TestFrame(200, 300, 8, [](int x, int y) { return 40U + unsigned(x + y) / 4; }));
    HostedDialog::pause();
    HostedDialog::wheel(d.follower, Aside, 240);
    HostedDialog::pause();
    QVERIFY2(isSame(placeOf(d.follower), placeOf(d.hand)),
             qPrintable(textOf(placeOf(d.follower)) + " and " + textOf(placeOf(d.hand))));
}

QTEST_MAIN(TestViewSynchronisation)
#include "tst_view_synchronisation.moc"
