#include "display/ZorDisplayQt.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QMenu>
#include <QMouseEvent>
#include <QTest>

/// The end of a viewer: nothing is reported after it, and the host's widget is as it was before.
class TestViewerDeletion : public QObject
{
    Q_OBJECT

private slots:
    void aListenerMayDeleteTheViewer_data();
    void aListenerMayDeleteTheViewer();
    void theHostGetsItsCursorAndTrackingBack_data();
    void theHostGetsItsCursorAndTrackingBack();
};

namespace {
void chooseFirstEntry(ShownViewer& shown)
{
    shown.run("cmd.system.menu.create");
    shown.view.findChild<QMenu*>()->actions().first()->trigger();
    QCoreApplication::processEvents();
}
} // namespace

void TestViewerDeletion::aListenerMayDeleteTheViewer_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QByteArray>("deed");
    QTest::newRow("while an image is shown") << QByteArray("view.changed") << QByteArray("display");
    QTest::newRow("after an image was shown") << QByteArray("processed") << QByteArray("display");
    QTest::newRow("while a command moves") << QByteArray("view.changed") << QByteArray("command");
    QTest::newRow("while a key moves") << QByteArray("view.changed") << QByteArray("key");
    QTest::newRow("while the wheel turns") << QByteArray("view.changed") << QByteArray("wheel");
    QTest::newRow("while the hand drags") << QByteArray("view.changed") << QByteArray("drag");
    QTest::newRow("while the window grows") << QByteArray("view.changed") << QByteArray("resize");
    QTest::newRow("while an entry of the menu moves") << QByteArray("view.changed") << QByteArray("menu");
    QTest::newRow("at a click") << QByteArray("mouse.down") << QByteArray("drag");
    QTest::newRow("at a move") << QByteArray("mouse.move") << QByteArray("drag");
    QTest::newRow("at a release") << QByteArray("mouse.up") << QByteArray("drag");
}

// Two listeners: neither hears anything more, the second not even that which the first deleted in.
void TestViewerDeletion::aListenerMayDeleteTheViewer()
{
    QFETCH(QByteArray, code);
    QFETCH(QByteArray, deed);
    ShownViewer shown(QSize(200, 160));
    shown.show(flat(7));
    Listener second;
    QCOMPARE(addListener(shown.viewer, &second), 1);
    int heardSince = -1;
    shown.listener.act = [&](const Listener::Heard& heard) {
        if (heardSince >= 0)
            ++heardSince;
        if (heardSince >= 0 || heard.parameters.at("code") != code.toStdString())
            return;
        heardSince = 0;
        second.heard.clear();
        ZorDisplayCPU::DeleteComponent(shown.viewer);
        shown.viewer = nullptr;
    };
    const TestImage image = flat(9, 80, 50);
    if (deed == "display")
        shown.show(image);
    else if (deed == "command")
        QCOMPARE(shown.run("cmd.display.view.zoom.in"), 1);
    else if (deed == "key")
        QTest::keyClick(&shown.view, Qt::Key_Plus);
    else if (deed == "wheel")
        shown.wheel(QPoint(50, 50), 120);
    else if (deed == "resize")
        shown.view.resize(400, 400);
    else if (deed == "menu")
        chooseFirstEntry(shown);
    else
        shown.drag(QPoint(50, 50), QPoint(90, 80));
    QVERIFY2(!shown.viewer, "nothing was reported");
    shown.move(QPoint(30, 30), Qt::NoButton);
    QCoreApplication::processEvents();
    QCOMPARE(heardSince, 0);
    QVERIFY(second.heard.empty());
}

void TestViewerDeletion::theHostGetsItsCursorAndTrackingBack_data()
{
    QTest::addColumn<bool>("isDeleted");
    QTest::newRow("tracking and cursor after the viewer's end") << true;
    QTest::newRow("the cursor beside the overlay") << false;
}

void TestViewerDeletion::theHostGetsItsCursorAndTrackingBack()
{
    QFETCH(bool, isDeleted);
    QWidget view;
    view.resize(320, 240);
    view.show();
    view.setCursor(Qt::CrossCursor);
    ZorDisplayProcessor* viewer = ZorDisplayCPU::CreateComponent(&view);
    QVERIFY(view.hasMouseTracking());
    const TestImage image = flat(7, 640, 480);
    QCOMPARE(viewer->display(image.record()), 0);
    ParameterMap scale{{"scale", decimals(0.5 * view.devicePixelRatioF())}};
    QCOMPARE(viewer->command("cmd.display.view.scale", &scale), 1);
    ParameterMap rect{{"objectID", "@dump"}, {"rect.x", "0"},   {"rect.y", "0"},
                      {"rect.w", "640"},     {"rect.h", "480"}, {"adjust", "1"}};
    QCOMPARE(viewer->command("cmd.display.overlay.rect.add", &rect), 1);
    const auto moveTo = [&view](const QPoint& where) {
        QMouseEvent event(QEvent::MouseMove, where, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
    };
    moveTo(QPoint(100, 239));
    QCOMPARE(view.cursor().shape(), Qt::SizeAllCursor);
    if (isDeleted) {
        ZorDisplayCPU::DeleteComponent(viewer);
        QVERIFY(!view.hasMouseTracking());
        QCOMPARE(view.cursor().shape(), Qt::CrossCursor);
        return;
    }
    moveTo(QPoint(100, 100));
    QCOMPARE(view.cursor().shape(), Qt::CrossCursor);
    ZorDisplayCPU::DeleteComponent(viewer);
}

QTEST_MAIN(TestViewerDeletion)
#include "tst_viewer_deletion.moc"
