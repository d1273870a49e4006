#include "tests/host/zorbench/Bench.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/ModalWatch.h"

#include "display/DisplayAdapter.h"
#include "display/DisplayView.h"

#include <QApplication>
#include <QScreen>
#include <QToolButton>
#include <QWindow>
#include <QtTest>

/// The frame on the screen, under the operator's mouse and keys.
class TestFrameView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void anEmptyViewIsDarkToItsEdge();
    void positionAndValueFollowTheCursor();
    void valueFollowsTheFrame();
    void theZoomFollowsTheView();
    void theMenuMovesTheView();
    void theFullScreenIsLeft_data();
    void theFullScreenIsLeft();
    void theFullScreenButtonHasItsPicture();
    void keysWorkOnTheFullScreen();
    void theViewerCanBeExchanged();
    void aFrameThatComesInWhileTheViewerStartsIsShown();
    void hiddenColoursAreShownUnlessSwitchedOff_data();
    void hiddenColoursAreShownUnlessSwitchedOff();

private:
    /// Moves the mouse to a place of the view, from its middle on.
    static void moveTo(Bench& bench, const QPoint& fromMiddle);
};

void TestFrameView::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestFrameView::moveTo(Bench& bench, const QPoint& fromMiddle)
{
    const QWidget* surface = bench.view().view().viewport();
    QTest::mouseMove(bench.window().windowHandle(),
                     surface->mapTo(&bench.window(), surface->rect().center() + fromMiddle));
    QCoreApplication::processEvents();
}

void TestFrameView::anEmptyViewIsDarkToItsEdge()
{
    Bench bench;
    const QImage empty = bench.view().grab().toImage();
    bench.open(bench.write("flat.pgm", countedPgm(2, 2)));
    const QImage besideAFrame = bench.view().grab().toImage();
    QVERIFY(qGray(empty.pixel(0, 0)) < 80);
    QCOMPARE(empty.pixelColor(0, 0), besideAFrame.pixelColor(0, 0));
    QCOMPARE(empty.pixelColor(empty.rect().center()), empty.pixelColor(0, 0));
}

void TestFrameView::positionAndValueFollowTheCursor()
{
    Bench bench;
    moveTo(bench, {5, 5});
    QCOMPARE(bench.status("Position"), QString());
    // The four pixels meet in the middle of the view.
    bench.open(bench.write("flat.pgm", countedPgm(2, 2)));
    moveTo(bench, {10, 20});
    QCOMPARE(bench.status("Position"), QString("1, 1"));
    QCOMPARE(bench.status("Value"), QString("11"));
    moveTo(bench, {-10, 20});
    QCOMPARE(bench.status("Position"), QString("0, 1"));
    QCOMPARE(bench.status("Value"), QString("10"));
    // Beside the image.
    const int beside = bench.view().view().viewport()->width() / 2 - 2;
    moveTo(bench, {beside, 0});
    QCOMPARE(bench.status("Position"), QString());
    QCOMPARE(bench.status("Value"), QString());
    moveTo(bench, {10, -10});
    QCOMPARE(bench.status("Position"), QString("1, 0"));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&bench.view().view(), &leave);
    QCOMPARE(bench.status("Position"), QString());
    QCOMPARE(bench.status("Value"), QString());
}

void TestFrameView::valueFollowsTheFrame()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(2, 2)));
    moveTo(bench, {10, 10});
    QCOMPARE(bench.status("Value"), QString("11"));
    bench.open(bench.write("other.pgm", "P2 2 2 4095 1 2 3 4000"));
    QCOMPARE(bench.status("Value"), QString("4000"));
}

void TestFrameView::theZoomFollowsTheView()
{
    Bench bench;
    QCOMPARE(bench.status("Zoom"), QString());
    const QSize room = bench.view().view().viewport()->size();
    bench.open(bench.write("large.pgm", "P5 4000 100 255\n" + QByteArray(400000, 'x')));
    QTRY_COMPARE(bench.status("Zoom"), QString::number(100.0 * room.width() / 4000.0, 'f', 0) + " %");
    bench.action("1:1")->trigger();
    QTRY_COMPARE(bench.status("Zoom"), QString("100 %"));
    bench.open(bench.write("small.pgm", "P5 10000 10 255\n" + QByteArray(100000, 'x')));
    bench.action("Fit")->trigger();
    QTRY_COMPARE(bench.status("Zoom"), QString::number(100.0 * room.width() / 10000.0, 'f', 1) + " %");
    const QString before = bench.status("Zoom");
    bench.window().resize(bench.window().width() - 200, bench.window().height());
    QTRY_VERIFY(bench.status("Zoom") != before);
}

void TestFrameView::theMenuMovesTheView()
{
    Bench bench;
    // Nothing happens without a frame.
    for (const char* text : {"Fit", "1:1", "Zoom in", "Zoom out"})
        bench.action(text)->trigger();
    bench.open(bench.write("flat.pgm", countedPgm(4, 4)));
    const auto scale = [&bench] {
        double value = 0.0;
        bench.view().adapter().viewerSettings()->getDouble("display.view.scale", &value);
        return value;
    };
    const double fitted = scale();
    bench.action("1:1")->trigger();
    QCOMPARE(scale(), 1.0);
    bench.action("Zoom in")->trigger();
    const double larger = scale();
    QVERIFY(larger > 1.0);
    bench.action("Zoom out")->trigger();
    QCOMPARE(scale(), 1.0);
    bench.action("Fit")->trigger();
    QCOMPARE(scale(), fitted);
}

void TestFrameView::theFullScreenIsLeft_data()
{
    QTest::addColumn<QString>("by");
    QTest::newRow("by the button") << "button";
    QTest::newRow("by the escape key") << "key";
    QTest::newRow("by the menu") << "menu";
    QTest::newRow("by closing it") << "close";
}

void TestFrameView::theFullScreenIsLeft()
{
    QFETCH(QString, by);
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    DisplayView& view = bench.view().view();
    auto* button = view.findChild<QToolButton*>();
    QVERIFY(!button->isVisible());
    QAction* action = bench.action("Full screen");
    // A second time as well as the first.
    for (int i = 0; i < 2; ++i) {
        action->trigger();
        QTRY_COMPARE(QApplication::activeWindow(), &view);
        QVERIFY(action->isChecked() && view.isWindow() && button->isVisible());
        QCOMPARE(view.windowState() & Qt::WindowFullScreen, Qt::WindowFullScreen);
        QCOMPARE(view.geometry(), bench.window().windowHandle()->screen()->geometry());
        QCOMPARE(view.windowTitle(), bench.window().windowTitle());
        if (by == "button")
            QTest::mouseClick(button, Qt::LeftButton);
        else if (by == "key")
            QTest::keyClick(&view, Qt::Key_Escape);
        else if (by == "menu")
            action->trigger();
        else
            view.close();
        QTRY_VERIFY(!view.isWindow());
        QVERIFY(!action->isChecked() && view.isVisible() && !button->isVisible());
        QCOMPARE(view.window(), &bench.window());
        QTRY_COMPARE(QApplication::activeWindow(), &bench.window());
        QTRY_COMPARE(QApplication::focusWidget(), &view);
        QCoreApplication::processEvents();
        QCOMPARE(view.size(), bench.view().size());
        QCOMPARE(bench.shownSize(), QSize(6, 4));
    }
}

void TestFrameView::theFullScreenButtonHasItsPicture()
{
    Bench bench;
    auto* button = bench.view().view().findChild<QToolButton*>();
    QCOMPARE(button->icon().availableSizes(), QList<QSize>{QSize(32, 32)});
    QCOMPARE(button->accessibleName(), QString("Leave full screen"));
}

void TestFrameView::keysWorkOnTheFullScreen()
{
    Bench bench;
    DisplayView& view = bench.view().view();
    bench.action("Full screen")->trigger();
    QTRY_COMPARE(QApplication::activeWindow(), &view);
    QTest::keyClick(&view, Qt::Key_F11);
    QTRY_VERIFY(!view.isWindow());
    // The escape key is nobody's outside the full screen.
    QTest::keyClick(&view, Qt::Key_Escape);
    QVERIFY(bench.window().isVisible());
}

// Where there is no OpenGL the software goes on and one box says so.
void TestFrameView::theViewerCanBeExchanged()
{
    Bench bench;
    ModalWatch watch;
    const QString file = bench.write("flat.pgm", countedPgm(6, 4));
    bench.open(file);
    QAction* gpu = bench.action("GPU viewer");
    QVERIFY(!gpu->isChecked() && !bench.view().adapter().isGpuViewer());
    gpu->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(bench.shownSize(), QSize(6, 4));
    QCOMPARE(bench.view().adapter().isGpuViewer(), gpu->isChecked());
    if (!gpu->isChecked()) {
        QTRY_COMPARE(watch.texts,
                     QStringList(file + " is drawn by software, because the GPU viewer cannot be started"));
        return;
    }
    bench.restart();
    QVERIFY(bench.action("GPU viewer")->isChecked());
    bench.open(file);
    QVERIFY(bench.view().adapter().isGpuViewer());
    bench.action("GPU viewer")->trigger();
    QVERIFY(!bench.view().adapter().isGpuViewer());
    QCOMPARE(bench.shownSize(), QSize(6, 4));
}

void TestFrameView::aFrameThatComesInWhileTheViewerStartsIsShown()
{
    Bench bench;
    const QString second = bench.write("second.pgm", countedPgm(3, 3));
    bool wasWithin = false;
    // Delivered by the event loop that the start of the viewer runs.
    QTimer::singleShot(0, &bench.window(), [&] {
        wasWithin = true;
        bench.window().openFiles({second});
        bench.view().setGpu(true);
        bench.view().setGpu(false);
    });
    bench.window().openFiles({bench.write("first.pgm", countedPgm(6, 4))});
    QVERIFY(wasWithin);
    QCOMPARE(bench.shownSize(), QSize(3, 3));
}

void TestFrameView::hiddenColoursAreShownUnlessSwitchedOff_data()
{
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QRgb>("colour");
    // Two rows of four pixels each.
    QTest::newRow("Bayer") << codeOf("BayerRG8") << QByteArray("\xC8\x64\xC8\x64\x64\x32\x64\x32", 8)
                           << qRgb(200, 100, 50);
    QTest::newRow("YUV") << codeOf("YUV444_8") << QByteArray("\x50\x80\x9E\0", 4).repeated(8)
                         << qRgb(122, 59, 80);
    QTest::newRow("mono has none") << zor::Mono8 << QByteArray(8, 90) << qRgb(90, 90, 90);
}

void TestFrameView::hiddenColoursAreShownUnlessSwitchedOff()
{
    QFETCH(quint32, pixelType);
    QFETCH(QByteArray, bytes);
    QFETCH(QRgb, colour);
    auto frame = std::make_shared<zor::Frame>();
    frame->width = 4;
    frame->height = 2;
    frame->pitch = quint32(bytes.size()) / 2;
    frame->pixelType = pixelType;
    frame->pixels.assign(bytes.begin(), bytes.end());

    zor::FrameView view;
    view.resize(300, 200);
    view.show();
    view.setFrame(frame);
    const auto middle = [&view] {
        QCoreApplication::processEvents();
        const QImage picture = view.grab().toImage();
        // Beside the digits, the grid and the border of the pixel.
        return picture.pixel(picture.width() / 2 + 6, picture.height() / 2 + 6);
    };
    QCOMPARE(middle(), colour);
    QCOMPARE(view.frame(), std::shared_ptr<const zor::Frame>(frame));
    view.setColour(false);
    const QRgb grey = middle();
    QCOMPARE(qRed(grey), qGreen(grey));
    QCOMPARE(qGreen(grey), qBlue(grey));
    view.setColour(true);
    QCOMPARE(middle(), colour);
}

QTEST_MAIN(TestFrameView)
#include "tst_frame_view.moc"
