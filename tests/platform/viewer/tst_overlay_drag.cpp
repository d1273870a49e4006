#include "display/DisplayStage.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

/// An overlay in the operator's hand: what is taken hold of, and where it goes.
class TestOverlayDrag : public QObject
{
    Q_OBJECT

private slots:
    void anOverlayDragStaysInItsPane_data();
    void anOverlayDragStaysInItsPane();
    void overlayBorderMovesAndCornerSizes_data();
    void overlayBorderMovesAndCornerSizes();
    void smallOverlaysCanBeMoved_data();
    void smallOverlaysCanBeMoved();
    void aDragBesideTheOverlayPans();
    void anOverlayIsTakenWithinFourPixels_data();
    void anOverlayIsTakenWithinFourPixels();
    void aDragEndsWithTheRelease_data();
    void aDragEndsWithTheRelease();
};

void TestOverlayDrag::anOverlayDragStaysInItsPane_data()
{
    QTest::addColumn<int>("pane");
    QTest::addColumn<int>("way");
    QTest::addColumn<int>("x");
    QTest::newRow("from the left pane to the right one") << 0 << 80 << 380;
    QTest::newRow("from the right pane to the left one") << 1 << -160 << 260;
}

// A drag over the gap does not jump by the width of a pane.
void TestOverlayDrag::anOverlayDragStaysInItsPane()
{
    QFETCH(int, pane);
    QFETCH(int, way);
    QFETCH(int, x);
    ShownViewer shown(QSize(402, 240));
    QCOMPARE(shown.viewer->displayPair(ramp(640, 480).record(), ramp(640, 480).record()), 1);
    const double ratio = shown.view.devicePixelRatioF();
    shown.setScale(2.0 * ratio);
    shown.lookAt(0.5, 0.5);
    // A pane of 200 shows 100 image pixels, from 270 on.
    shown.run("cmd.display.overlay.rect.add", {{"objectID", "@dump"},
                                               {"rect.x", "340"},
                                               {"rect.y", "230"},
                                               {"rect.w", "20"},
                                               {"rect.h", "20"},
                                               {"adjust", "1"}});
    const int left = (340 - 270) * 2 + pane * 202;
    shown.press(QPoint(left, 120));
    shown.move(QPoint(left + way, 120), Qt::LeftButton);
    shown.release(QPoint(left + way, 120));
    QCOMPARE(shown.viewer->stage()->find("@dump")->value() & 0xFFFF, std::int64_t{x});
}

void TestOverlayDrag::overlayBorderMovesAndCornerSizes_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QRect>("rect");
    // At scale 2 from the corner on, the rectangle 20, 30, 40 x 24 lies from 40, 60 to 120, 108.
    QTest::newRow("left border moves") << QPoint(40, 80) << QPoint(60, 90) << QRect(30, 35, 40, 24);
    QTest::newRow("bottom border moves") << QPoint(80, 108) << QPoint(70, 98) << QRect(15, 25, 40, 24);
    QTest::newRow("moves stop at the image's edge")
        << QPoint(80, 108) << QPoint(-400, -500) << QRect(0, 0, 40, 24);
    QTest::newRow("lower right corner sizes")
        << QPoint(120, 108) << QPoint(140, 118) << QRect(20, 30, 50, 29);
    QTest::newRow("upper left corner sizes") << QPoint(40, 60) << QPoint(30, 80) << QRect(15, 40, 45, 14);
    QTest::newRow("upper right corner sizes") << QPoint(120, 60) << QPoint(100, 40) << QRect(20, 20, 30, 34);
    QTest::newRow("a corner stops at one pixel") << QPoint(120, 108) << QPoint(0, 0) << QRect(20, 30, 1, 1);
}

void TestOverlayDrag::overlayBorderMovesAndCornerSizes()
{
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    QFETCH(QRect, rect);
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    const double ratio = shown.view.devicePixelRatioF();
    shown.setScale(2.0 * ratio);
    shown.lookAt(80.0 / 640.0, 60.0 / 480.0);
    shown.addDumpOverlay();
    const QPointF centre = shown.centre();
    shown.listener.heard.clear();
    QTest::mousePress(shown.surface(), Qt::LeftButton, Qt::NoModifier, from);
    shown.move((from + to) / 2, Qt::LeftButton);
    shown.move(to, Qt::LeftButton);
    QTest::mouseRelease(shown.surface(), Qt::LeftButton, Qt::NoModifier, to);
    // Neither zoom nor place.
    QCOMPARE(shown.listener.count("view.changed"), 0);
    QCOMPARE(shown.centre(), centre);
    const std::int64_t value = shown.viewer->stage()->find("@dump")->value();
    QCOMPARE(QRect(value & 0xFFFF, value >> 16 & 0xFFFF, value >> 32 & 0xFFFF, value >> 48 & 0xFFFF), rect);
}

void TestOverlayDrag::smallOverlaysCanBeMoved_data()
{
    QTest::addColumn<int>("side");
    QTest::newRow("a pixel") << 1;
    QTest::newRow("the grip's reach across") << 2;
    QTest::newRow("twice the grip's reach") << 4;
}

// At scale 2, taken in the middle of the left border.
void TestOverlayDrag::smallOverlaysCanBeMoved()
{
    QFETCH(int, side);
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    shown.setScale(2.0 * shown.view.devicePixelRatioF());
    shown.lookAt(80.0 / 640.0, 60.0 / 480.0);
    const std::string length = std::to_string(side);
    shown.run("cmd.display.overlay.rect.add", {{"objectID", "@dump"},
                                               {"rect.x", "20"},
                                               {"rect.y", "30"},
                                               {"rect.w", length},
                                               {"rect.h", length},
                                               {"adjust", "1"}});
    const QPoint from(40, 60 + side);
    shown.move(from, Qt::NoButton);
    QCOMPARE(shown.surface()->cursor().shape(), Qt::SizeAllCursor);
    shown.drag(from, from + QPoint(40, 20));
    const std::int64_t value = shown.viewer->stage()->find("@dump")->value();
    QCOMPARE(QRect(value & 0xFFFF, value >> 16 & 0xFFFF, value >> 32 & 0xFFFF, value >> 48 & 0xFFFF),
             QRect(40, 40, side, side));
}

void TestOverlayDrag::aDragBesideTheOverlayPans()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    shown.setScale(2.0);
    shown.lookAt(0.25, 0.25);
    const ParameterMap rect{
        {"objectID", "@inspect"}, {"rect.x", "120"}, {"rect.y", "90"}, {"rect.w", "80"}, {"rect.h", "60"}};
    shown.run("cmd.display.overlay.rect.add", rect);
    const QPointF before = shown.centre();
    // Its border, but it can't be adjusted.
    shown.drag(QPoint(80, 120), QPoint(100, 120));
    QVERIFY(shown.centre() != before);
    QCOMPARE(shown.viewer->stage()->find("@inspect")->value() & 0xFFFF, std::int64_t{120});
}

void TestOverlayDrag::anOverlayIsTakenWithinFourPixels_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("five pixels outside") << 35 << false;
    QTest::newRow("four pixels outside") << 36 << true;
    QTest::newRow("the fourth pixel inside") << 43 << true;
    QTest::newRow("the fifth pixel inside") << 44 << false;
}

// Of a widget, on every screen. The left border lies between pixels 39 and 40.
void TestOverlayDrag::anOverlayIsTakenWithinFourPixels()
{
    QFETCH(int, x);
    QFETCH(bool, isTaken);
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    shown.setScale(2.0 * shown.view.devicePixelRatioF());
    shown.lookAt(80.0 / 640.0, 60.0 / 480.0);
    shown.addDumpOverlay();
    shown.drag(QPoint(x, 84), QPoint(x + 20, 84));
    QCOMPARE(shown.viewer->stage()->find("@dump")->value() & 0xFFFF, std::int64_t{isTaken ? 30 : 20});
}

void TestOverlayDrag::aDragEndsWithTheRelease_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::newRow("of the picture") << QPoint(200, 200);
    QTest::newRow("of an overlay") << QPoint(40, 84);
}

// A double click begins none, and the moves after it continue none.
void TestOverlayDrag::aDragEndsWithTheRelease()
{
    QFETCH(QPoint, from);
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    shown.setScale(2.0 * shown.view.devicePixelRatioF());
    shown.lookAt(80.0 / 640.0, 60.0 / 480.0);
    shown.addDumpOverlay();
    shown.drag(from, from + QPoint(20, 10));
    shown.press(QPoint(250, 200), QEvent::MouseButtonDblClick);
    const QImage before = shown.grab();
    shown.move(QPoint(200, 150), Qt::LeftButton);
    QCOMPARE(shown.grab(), before);
}

QTEST_MAIN(TestOverlayDrag)
#include "tst_overlay_drag.moc"
