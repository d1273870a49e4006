#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

/// Mouse events that the viewer has no use for pass on to the host, the others don't.
class TestViewerUnusedEvents : public QObject
{
    Q_OBJECT

private slots:
    void dragsOfOtherKindsPassOn_data();
    void dragsOfOtherKindsPassOn();
    void aMoveWithoutAButtonPassesOn();
    void aMoveAfterADoubleClickPassesOn();
};

void TestViewerUnusedEvents::dragsOfOtherKindsPassOn_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("passes");
    const auto row = [](const char* name, const QPoint& from, Qt::MouseButton button,
                        Qt::KeyboardModifiers modifiers, bool passes) {
        QTest::newRow(name) << from << int(button) << int(modifiers) << passes;
    };
    row("of the picture", QPoint(200, 200), Qt::LeftButton, Qt::NoModifier, false);
    row("of an overlay", QPoint(40, 84), Qt::LeftButton, Qt::NoModifier, false);
    row("with Shift", QPoint(200, 200), Qt::LeftButton, Qt::ShiftModifier, true);
    row("with the right button", QPoint(200, 200), Qt::RightButton, Qt::NoModifier, true);
}

void TestViewerUnusedEvents::dragsOfOtherKindsPassOn()
{
    QFETCH(QPoint, from);
    QFETCH(int, button);
    QFETCH(int, modifiers);
    QFETCH(bool, passes);
    HostFilter host;
    ShownViewer shown(QSize(320, 240), &host);
    shown.showDumpOverlay();
    host.types.clear();
    const auto pressed = static_cast<Qt::MouseButton>(button);
    QTest::mousePress(shown.surface(), pressed, Qt::KeyboardModifiers(modifiers), from);
    QCOMPARE(host.heard(QEvent::MouseButtonPress), passes);
    shown.move(from + QPoint(20, 10), pressed, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(host.heard(QEvent::MouseMove), passes);
    QTest::mouseRelease(shown.surface(), pressed, Qt::KeyboardModifiers(modifiers), from + QPoint(20, 10));
    QCOMPARE(host.heard(QEvent::MouseButtonRelease), passes);
}

void TestViewerUnusedEvents::aMoveWithoutAButtonPassesOn()
{
    HostFilter host;
    ShownViewer shown(QSize(320, 240), &host);
    shown.showDumpOverlay();
    host.types.clear();
    shown.move(QPoint(30, 40), Qt::NoButton);
    QVERIFY(host.heard(QEvent::MouseMove));
}

void TestViewerUnusedEvents::aMoveAfterADoubleClickPassesOn()
{
    HostFilter host;
    ShownViewer shown(QSize(320, 240), &host);
    shown.showDumpOverlay();
    host.types.clear();
    shown.press(QPoint(250, 200), QEvent::MouseButtonDblClick);
    QVERIFY(!host.heard(QEvent::MouseButtonDblClick));
    shown.move(QPoint(200, 150), Qt::LeftButton);
    QVERIFY(host.heard(QEvent::MouseMove));
}

QTEST_MAIN(TestViewerUnusedEvents)
#include "tst_viewer_unused_events.moc"
