#include "display/ZorDisplayQt.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QAbstractScrollArea>
#include <QMouseEvent>
#include <QTest>

#include <cmath>

/// Mouse, wheel and keys as a person uses them, by real events on the view and its viewport.
class TestViewerInput : public QObject
{
    Q_OBJECT

private slots:
    void wheelZoomsAboutTheCursor_data();
    void wheelZoomsAboutTheCursor();
    void wheelThereAndBackIsTheSame();
    void dragPans();
    void shiftLeavesDragsToTheHost();
    void otherButtonsDoNotPan();
    void doubleClickTogglesFitAndOneToOne();
    void keysMoveTheView_data();
    void keysMoveTheView();
    void keysForTheHostPassOn_data();
    void keysForTheHostPassOn();
    void notificationsCarryBothPositions_data();
    void notificationsCarryBothPositions();
    void everyDevicePixelIsMet();
    void dragsAndWheelsAreExactToTheDevicePixel();
    void aDoubleClickReportsWhatWasSeen();
    void buttonsAreReported();
    void aMoveIsReportedOnce();
    void whatAScrollAreaPassesOnIsReportedOnce();

private:
    static TestImage places();
};

// Red tells x, green y; blue the blocks of 64 of both.
TestImage TestViewerInput::places()
{
    return {Rgb8Code, 640, 480, [](int x, int y, int c) {
                return c == 0 ? x & 255 : c == 1 ? y & 255 : (x / 256) * 16 + y / 256;
            }};
}

void TestViewerInput::wheelZoomsAboutTheCursor_data()
{
    QTest::addColumn<QPoint>("cursor");
    QTest::addColumn<int>("units");
    QTest::addColumn<double>("factor");
    QTest::newRow("one notch in") << QPoint(100, 80) << 120 << std::exp2(0.25);
    QTest::newRow("four notches double") << QPoint(210, 33) << 480 << 2.0;
    QTest::newRow("one notch out") << QPoint(60, 140) << -120 << std::exp2(-0.25);
    QTest::newRow("a fine wheel") << QPoint(60, 140) << 30 << std::exp2(0.0625);
}

void TestViewerInput::wheelZoomsAboutTheCursor()
{
    QFETCH(QPoint, cursor);
    QFETCH(int, units);
    QFETCH(double, factor);
    ShownViewer shown(QSize(320, 240));
    shown.show(places());
    shown.setScale(4.0);
    shown.move(cursor, Qt::NoButton);
    const ParameterMap before = shown.listener.last("mouse.move");
    shown.listener.heard.clear();
    shown.wheel(cursor, units);
    QCOMPARE(shown.listener.count("view.changed"), 1);
    QVERIFY2(std::abs(shown.scale() - 4.0 * factor) < 1e-9, qPrintable(QString::number(shown.scale())));
    shown.move(cursor, Qt::NoButton);
    const ParameterMap after = shown.listener.last("mouse.move");
    QCOMPARE(numberIn(after, "img.x"), numberIn(before, "img.x"));
    QCOMPARE(numberIn(after, "img.y"), numberIn(before, "img.y"));
}

void TestViewerInput::wheelThereAndBackIsTheSame()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(places());
    shown.setScale(2.0);
    shown.lookAt(0.5, 0.5);
    const QImage before = shown.grab();
    for (int i = 0; i < 8; ++i)
        shown.wheel(QPoint(71, 93), 120);
    QVERIFY(shown.grab() != before);
    for (int i = 0; i < 8; ++i)
        shown.wheel(QPoint(71, 93), -120);
    QVERIFY(std::abs(shown.scale() - 2.0) < 1e-9);
    QCOMPARE(shown.centre(), QPointF(320.0, 240.0));
}

void TestViewerInput::dragPans()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(places());
    const double ratio = shown.view.devicePixelRatioF();
    shown.setScale(2.0 * ratio);
    shown.lookAt(0.5, 0.5);
    const QRgb below = shown.pixel(static_cast<int>(100 * ratio), static_cast<int>(100 * ratio));
    shown.listener.heard.clear();
    shown.drag(QPoint(100, 100), QPoint(140, 70));
    QCOMPARE(shown.centre(), QPointF(320.0 - 20.0, 240.0 + 15.0));
    QCOMPARE(shown.pixel(static_cast<int>(140 * ratio), static_cast<int>(70 * ratio)), below);
    QCOMPARE(shown.listener.count("view.changed"), 2);
    // A move without the button pans no more.
    shown.move(QPoint(10, 10), Qt::NoButton);
    QCOMPARE(shown.centre(), QPointF(300.0, 255.0));
}

void TestViewerInput::shiftLeavesDragsToTheHost()
{
    HostFilter host;
    ShownViewer watched(QSize(320, 240), &host);
    watched.show(places());
    watched.setScale(2.0);
    const QPointF before = watched.centre();
    watched.drag(QPoint(100, 100), QPoint(140, 70), Qt::ShiftModifier);
    QCOMPARE(watched.centre(), before);
    QCOMPARE(watched.listener.count("mouse.down"), 1);
    QCOMPARE(watched.listener.count("mouse.up"), 1);
    QCOMPARE(numberIn(watched.listener.last("mouse.down"), "left"), 1);
    QVERIFY(host.types.contains(QEvent::MouseButtonPress) && host.types.contains(QEvent::MouseMove));
    host.types.clear();
    watched.drag(QPoint(100, 100), QPoint(140, 70));
    QVERIFY(watched.centre() != before);
    QVERIFY(!host.types.contains(QEvent::MouseButtonPress) && !host.types.contains(QEvent::MouseMove));
}

void TestViewerInput::otherButtonsDoNotPan()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(places());
    shown.setScale(2.0);
    const QPointF before = shown.centre();
    QTest::mousePress(shown.surface(), Qt::MiddleButton, Qt::NoModifier, QPoint(100, 100));
    shown.move(QPoint(140, 70), Qt::MiddleButton);
    QTest::mouseRelease(shown.surface(), Qt::MiddleButton, Qt::NoModifier, QPoint(140, 70));
    QCOMPARE(shown.centre(), before);
    QCOMPARE(numberIn(shown.listener.last("mouse.down"), "left"), 0);
}

void TestViewerInput::doubleClickTogglesFitAndOneToOne()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(places());
    const double fitted = shown.scale();
    QTest::mouseDClick(shown.surface(), Qt::LeftButton, Qt::NoModifier, QPoint(160, 120));
    QCOMPARE(shown.scale(), 1.0);
    QTest::mouseDClick(shown.surface(), Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
    QCOMPARE(shown.scale(), fitted);
    shown.setScale(3.0);
    QTest::mouseDClick(shown.surface(), Qt::LeftButton, Qt::NoModifier, QPoint(30, 30));
    QCOMPARE(shown.scale(), fitted);
    // The fit holds again.
    shown.view.resize(shown.view.size() + QSize(320, 240));
    QCOMPARE(shown.scale(), fitted * 2.0);
}

void TestViewerInput::keysMoveTheView_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QPointF>("moved");
    QTest::newRow("plus") << int(Qt::Key_Plus) << std::sqrt(2.0) << QPointF();
    QTest::newRow("minus") << int(Qt::Key_Minus) << std::sqrt(0.5) << QPointF();
    QTest::newRow("one is 1:1") << int(Qt::Key_1) << 0.0 << QPointF();
    QTest::newRow("right looks further right") << int(Qt::Key_Right) << 1.0 << QPointF(8.0, 0.0);
    QTest::newRow("left") << int(Qt::Key_Left) << 1.0 << QPointF(-8.0, 0.0);
    QTest::newRow("down") << int(Qt::Key_Down) << 1.0 << QPointF(0.0, 6.0);
    QTest::newRow("up") << int(Qt::Key_Up) << 1.0 << QPointF(0.0, -6.0);
    QTest::newRow("zero fits") << int(Qt::Key_0) << 0.125 << QPointF();
    QTest::newRow("F fits") << int(Qt::Key_F) << 0.125 << QPointF();
}

void TestViewerInput::keysMoveTheView()
{
    QFETCH(int, key);
    QFETCH(double, factor);
    QFETCH(QPointF, moved);
    ShownViewer shown(QSize(320, 240));
    const double ratio = shown.view.devicePixelRatioF();
    shown.show(places());
    shown.setScale(4.0 * ratio);
    shown.lookAt(0.5, 0.5);
    shown.listener.heard.clear();
    QTest::keyClick(&shown.view, static_cast<Qt::Key>(key));
    const double expected = key == Qt::Key_1 ? 1.0 : 4.0 * ratio * factor;
    QVERIFY2(std::abs(shown.scale() - expected) < 1e-9, qPrintable(QString::number(shown.scale())));
    QCOMPARE(shown.centre(), QPointF(320.0, 240.0) + moved);
    QCOMPARE(shown.listener.count("view.changed"), 1);
}

void TestViewerInput::keysForTheHostPassOn_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("passes");
    QTest::newRow("Escape") << int(Qt::Key_Escape) << 0 << true;
    QTest::newRow("Enter") << int(Qt::Key_Enter) << 0 << true;
    QTest::newRow("Return") << int(Qt::Key_Return) << 0 << true;
    QTest::newRow("a letter") << int(Qt::Key_Q) << 0 << true;
    QTest::newRow("Ctrl and plus") << int(Qt::Key_Plus) << int(Qt::ControlModifier) << true;
    QTest::newRow("plus with Shift, as keyboards have it")
        << int(Qt::Key_Plus) << int(Qt::ShiftModifier) << false;
    QTest::newRow("plus of the keypad") << int(Qt::Key_Plus) << int(Qt::KeypadModifier) << false;
    QTest::newRow("F") << int(Qt::Key_F) << 0 << false;
}

void TestViewerInput::keysForTheHostPassOn()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, passes);
    class View : public QWidget
    {
    public:
        QList<int> keys;

    protected:
        void keyPressEvent(QKeyEvent* event) override { keys.append(event->key()); }
    };
    View parent;
    parent.resize(400, 300);
    ShownViewer shown(QSize(320, 240));
    shown.view.setParent(&parent);
    shown.show(places());
    const double before = shown.scale();
    QTest::keyClick(&shown.view, static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(parent.keys.contains(key), passes);
    if (passes)
        QCOMPARE(shown.scale(), before);
}

void TestViewerInput::notificationsCarryBothPositions_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {0.73, 1.0, 1.5, 3.37, 8.0, 48.0})
        QTest::addRow("scale %.2f", scale) << scale;
}

// The reported pixel is the painted one, over the whole view and beyond the image's edges.
void TestViewerInput::notificationsCarryBothPositions()
{
    QFETCH(double, scale);
    ShownViewer shown(QSize(301, 203));
    shown.show(places());
    const double ratio = shown.view.devicePixelRatioF();
    shown.setScale(scale);
    for (const QPointF& place : {QPointF(0.52, 0.48), QPointF(0.0, 0.0), QPointF(1.0, 1.0)}) {
        shown.lookAt(place.x(), place.y());
        const QImage picture = shown.grab();
        for (int i = 0; i <= 100; ++i) {
            const QPoint at(i * 3, i == 100 ? 202 : (i * 67) % 203);
            shown.move(at, Qt::NoButton);
            const ParameterMap heard = shown.listener.last("mouse.move");
            QCOMPARE(QPoint(numberIn(heard, "win.x"), numberIn(heard, "win.y")), at + QPoint(3, 3));
            const QPoint image(numberIn(heard, "img.x"), numberIn(heard, "img.y"));
            const QRgb painted =
                picture.pixel(static_cast<int>(at.x() * ratio), static_cast<int>(at.y() * ratio));
            if (!QRect(0, 0, 640, 480).contains(image))
                QCOMPARE(painted, QRgb(0xFF303030));
            else if (scale >= 1.0 && scale < 40.0)
                QCOMPARE(QPoint(qRed(painted), qGreen(painted)), QPoint(image.x() & 255, image.y() & 255));
            else
                QVERIFY(painted != QRgb(0xFF303030) || image == QPoint(48, 48));
        }
    }
}

// The mouse meets each device pixel, of which a widget's pixel may have several.
void TestViewerInput::everyDevicePixelIsMet()
{
    ShownViewer shown(QSize(100, 80));
    shown.show(places());
    const double ratio = shown.view.devicePixelRatioF();
    shown.setScale(1.0);
    const QImage picture = shown.grab();
    for (int i = 0; i < 60; ++i) {
        const QPoint device(20 + i, 50 - i / 2);
        shown.move(QPointF(device) / ratio, Qt::NoButton);
        const ParameterMap heard = shown.listener.last("mouse.move");
        const QRgb painted = picture.pixel(device);
        QCOMPARE(QPoint(numberIn(heard, "img.x") & 255, numberIn(heard, "img.y") & 255),
                 QPoint(qRed(painted), qGreen(painted)));
        QCOMPARE(numberIn(heard, "win.x"), static_cast<int>(std::floor(device.x() / ratio)) + 3);
    }
}

void TestViewerInput::dragsAndWheelsAreExactToTheDevicePixel()
{
    ShownViewer shown(QSize(200, 160));
    shown.show(places());
    const double ratio = shown.view.devicePixelRatioF();
    shown.setScale(1.0);
    shown.lookAt(0.5, 0.5);
    const QPointF before = shown.centre();
    shown.press(QPointF(31.0, 40.0) / ratio);
    shown.move(QPointF(32.0, 43.0) / ratio, Qt::LeftButton);
    shown.release(QPointF(32.0, 43.0) / ratio);
    QCOMPARE(shown.centre(), before - QPointF(1.0, 3.0));
    const QPoint held(33, 45);
    const QRgb below = shown.pixel(held.x(), held.y());
    for (int i = 0; i < 4; ++i)
        shown.wheel(QPointF(held) / ratio, 480);
    QCOMPARE(shown.pixel(held.x(), held.y()), below);
}

void TestViewerInput::aDoubleClickReportsWhatWasSeen()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(places());
    shown.setScale(8.0);
    shown.lookAt(0.1, 0.2);
    shown.move(QPoint(30, 40), Qt::NoButton);
    const ParameterMap seen = shown.listener.last("mouse.move");
    shown.press(QPoint(30, 40), QEvent::MouseButtonDblClick);
    const ParameterMap reported = shown.listener.last("mouse.down");
    QVERIFY(shown.scale() < 8.0);
    QCOMPARE(numberIn(reported, "img.x"), numberIn(seen, "img.x"));
    QCOMPARE(numberIn(reported, "img.y"), numberIn(seen, "img.y"));
}

void TestViewerInput::buttonsAreReported()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(places());
    shown.listener.heard.clear();
    QTest::mousePress(shown.surface(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 20));
    QTest::mouseRelease(shown.surface(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 20));
    QTest::mousePress(shown.surface(), Qt::RightButton, Qt::NoModifier, QPoint(30, 20));
    QTest::mouseRelease(shown.surface(), Qt::RightButton, Qt::NoModifier, QPoint(30, 20));
    QStringList reported;
    for (const Listener::Heard& one : shown.listener.heard)
        reported << QString::fromStdString(one.parameters.at("code") + " " + one.parameters.at("left"));
    QCOMPARE(reported, (QStringList{"mouse.down 1", "mouse.up 1", "mouse.down 0", "mouse.up 0"}));
}

// What the surface does not take comes a second time, for the view.
void TestViewerInput::aMoveIsReportedOnce()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(places());
    shown.listener.heard.clear();
    QTest::mouseMove(shown.surface(), QPoint(11, 12));
    QTest::mousePress(shown.surface(), Qt::RightButton, Qt::NoModifier, QPoint(11, 12));
    QTRY_COMPARE(shown.listener.count("mouse.down"), 1);
    QTRY_COMPARE(shown.listener.count("mouse.move"), 1);
    // Straight to the view, as a test or a host may do, it counts too.
    shown.listener.heard.clear();
    QTest::mousePress(&shown.view, Qt::LeftButton, Qt::NoModifier, QPoint(53, 43));
    QTest::mouseRelease(&shown.view, Qt::LeftButton, Qt::NoModifier, QPoint(53, 43));
    QCOMPARE(shown.listener.count("mouse.down"), 1);
    QCOMPARE(numberIn(shown.listener.last("mouse.down"), "win.x"), 53);
}

void TestViewerInput::whatAScrollAreaPassesOnIsReportedOnce()
{
    HostFilter host;
    QAbstractScrollArea view;
    view.installEventFilter(&host);
    view.resize(200, 160);
    view.show();
    ZorDisplayProcessor* viewer = ZorDisplayCPU::CreateComponent(&view);
    Listener listener;
    QCOMPARE(addListener(viewer, &listener), 1);
    QCOMPARE(viewer->display(places().record()), 0);
    QTest::mousePress(view.viewport(), Qt::RightButton, Qt::NoModifier, QPoint(30, 20));
    QCOMPARE(listener.count("mouse.down"), 1);
    QCOMPARE(host.types.count(QEvent::MouseButtonPress), 1);
    ZorDisplayCPU::DeleteComponent(viewer);
}

QTEST_MAIN(TestViewerInput)
#include "tst_viewer_input.moc"
