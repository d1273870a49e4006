#include "display/DisplayStage.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

#include <cstdlib>

/// What is seen: pixels grabbed from the widget.
class TestViewerPainting : public QObject
{
    Q_OBJECT

private slots:
    void oneImagePixelIsOneDevicePixel();
    void hardPixelsWhenZoomedIn();
    void theFitFillsTheView();
    void fitHoldsThroughResizesAndImages();
    void sameSizeKeepsScaleAndCentre();
    void gridAndValuesFromScaleForty();
    void theGridIsSeenOnEveryTone_data();
    void theGridIsSeenOnEveryTone();
    void valuesAreNativeCodes();
    void overlaysAreDrawnAroundTheirPixels();
    void theCanvasStaysBelowOtherChildren();
    void theCanvasMovesToAnotherWindow();
    void withoutAnImageTheViewIsPlain();
    void aViewOfOnePixelShowsOnePixel();
};

namespace {
QRgb grey(int level)
{
    return qRgb(level, level, level);
}

int differing(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y);
    return count;
}
} // namespace

// On a screen of any ratio.
void TestViewerPainting::oneImagePixelIsOneDevicePixel()
{
    ShownViewer shown(QSize(100, 80));
    const QSize size = shown.surface()->size() * shown.view.devicePixelRatioF();
    shown.show(TestImage(zor::Mono8, size.width(), size.height(),
                         [](int x, int y, int) { return (x + y) % 2 * 255; }));
    shown.setScale(1.0);
    shown.lookAt(0.5, 0.5);
    const QImage picture = shown.grab();
    QCOMPARE(picture.size(), size);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            QCOMPARE(picture.pixel(x, y), grey((x + y) % 2 * 255));
}

void TestViewerPainting::hardPixelsWhenZoomedIn()
{
    ShownViewer shown(QSize(120, 90));
    shown.show(TestImage(zor::Mono8, 64, 64, [](int x, int y, int) { return (x ^ y) & 1 ? 250 : 5; }));
    for (const double scale : {2.0, 3.37, 11.0, 39.0}) {
        shown.setScale(scale);
        const QImage picture = shown.grab();
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                QVERIFY(picture.pixel(x, y) == grey(250) || picture.pixel(x, y) == grey(5) ||
                        picture.pixel(x, y) == grey(0x30));
    }
}

void TestViewerPainting::theFitFillsTheView()
{
    ShownViewer shown(QSize(120, 60));
    shown.show(TestImage(zor::Mono8, 300, 300, [](int, int, int) { return 99; }));
    const QImage picture = shown.grab();
    const int side = picture.height();
    const int left = (picture.width() - side) / 2;
    for (int x = 0; x < picture.width(); ++x)
        for (const int y : {0, side / 2, side - 1})
            QCOMPARE(picture.pixel(x, y), x >= left && x < left + side ? grey(99) : grey(0x30));
}

void TestViewerPainting::fitHoldsThroughResizesAndImages()
{
    ShownViewer shown(QSize(200, 100));
    const double ratio = shown.view.devicePixelRatioF();
    const auto flat = [](int width, int height) {
        return TestImage(zor::Mono8, width, height, [](int, int, int) { return 7; });
    };
    shown.show(flat(100, 100));
    QCOMPARE(shown.scale(), ratio);
    shown.listener.heard.clear();
    shown.view.resize(406, 306);
    QCoreApplication::processEvents();
    QCOMPARE(shown.scale(), 3.0 * ratio);
    QCOMPARE(shown.listener.count("view.changed"), 1);
    shown.show(flat(200, 600));
    QCOMPARE(shown.scale(), 0.5 * ratio);
    shown.run("cmd.display.view.fit", {{"mode", "2"}});
    shown.show(flat(800, 100));
    QCOMPARE(shown.scale(), 0.5 * ratio);
    shown.run("cmd.display.view.zoom.in");
    const double zoomed = shown.scale();
    shown.view.resize(206, 206);
    shown.show(flat(50, 50));
    QCOMPARE(shown.scale(), zoomed);
}

void TestViewerPainting::sameSizeKeepsScaleAndCentre()
{
    ShownViewer shown(QSize(200, 100));
    const auto flat = [](int value) {
        return TestImage(zor::Mono8, 300, 200, [value](int, int, int) { return value; });
    };
    shown.show(flat(7));
    shown.setScale(2.5);
    shown.lookAt(0.3, 0.8);
    const QPointF centre = shown.centre();
    shown.listener.heard.clear();
    shown.show(flat(9));
    QCOMPARE(shown.scale(), 2.5);
    QCOMPARE(shown.centre(), centre);
    QCOMPARE(shown.listener.count("view.changed"), 0);
    QCOMPARE(shown.pixel(50, 50), grey(9));
}

void TestViewerPainting::gridAndValuesFromScaleForty()
{
    ShownViewer shown(QSize(240, 160));
    shown.show(TestImage(zor::Mono8, 16, 16, [](int, int, int) { return 200; }));
    shown.setScale(39.9);
    shown.lookAt(0.5, 0.5);
    QImage picture = shown.grab();
    QImage plain = picture;
    plain.fill(grey(200));
    QCOMPARE(differing(picture, plain), 0);
    shown.setScale(40.5);
    picture = shown.grab();
    const int covered = picture.width() * picture.height();
    QVERIFY(differing(picture, plain) > covered / 20);
    QVERIFY(differing(picture, plain) < covered / 2);
    // Between the lines and the digits the pixel's own colour stays.
    shown.setScale(64.0);
    shown.lookAt(0.5, 0.5);
    picture = shown.grab();
    const QPoint middle(picture.width() / 2, picture.height() / 2);
    QVERIFY2(picture.pixel(middle) != grey(200), "a grid line runs between pixels 7 and 8");
    QCOMPARE(picture.pixel(middle + QPoint(5, 5)), grey(200));
}

void TestViewerPainting::theGridIsSeenOnEveryTone_data()
{
    QTest::addColumn<int>("level");
    for (const int level : {0, 64, 127, 128, 192, 255})
        QTest::addRow("grey %d", level) << level;
}

void TestViewerPainting::theGridIsSeenOnEveryTone()
{
    QFETCH(int, level);
    ShownViewer shown(QSize(240, 160));
    shown.show(TestImage(zor::Mono8, 16, 16, [level](int, int, int) { return level; }));
    shown.setScale(64.0);
    shown.lookAt(0.5, 0.5);
    const QImage picture = shown.grab();
    const QPoint middle(picture.width() / 2, picture.height() / 2);
    for (const QPoint& off : {QPoint(0, 0), QPoint(5, 0), QPoint(0, 5), QPoint(-5, 0), QPoint(0, -5)}) {
        const int line = qRed(picture.pixel(middle + off));
        QVERIFY2(std::abs(line - level) >= 40, qPrintable(QString("%1 on %2").arg(line).arg(level)));
    }
    QCOMPARE(picture.pixel(middle + QPoint(5, 5)), grey(level));
}

// Digits differ where the native values do, although both are the same on the screen.
void TestViewerPainting::valuesAreNativeCodes()
{
    ShownViewer shown(QSize(200, 100));
    const auto picture = [&](int left, int right) {
        shown.show(TestImage(zor::Mono12, 2, 1, [=](int x, int, int) { return x == 0 ? left : right; }));
        shown.setScale(96.0);
        shown.lookAt(0.5, 0.5);
        return shown.grab();
    };
    const QImage same = picture(2049, 2049);
    const QPoint middle(same.width() / 2, same.height() / 2);
    const QImage left = same.copy(QRect(middle - QPoint(90, 40), QSize(84, 80)));
    const QImage right = same.copy(QRect(middle + QPoint(6, -40), QSize(84, 80)));
    QCOMPARE(left.pixel(0, 0), grey(128));
    QCOMPARE(left, right);
    const QImage other = picture(2049, 2055).copy(QRect(middle + QPoint(6, -40), QSize(84, 80)));
    QCOMPARE(other.pixel(0, 0), grey(128));
    QVERIFY(other != right);
}

void TestViewerPainting::overlaysAreDrawnAroundTheirPixels()
{
    ShownViewer shown(QSize(200, 160));
    shown.show(TestImage(zor::Mono8, 50, 40, [](int, int, int) { return 10; }));
    shown.setScale(4.0);
    shown.lookAt(0.5, 0.5);
    const QImage before = shown.grab();
    shown.run("cmd.display.overlay.rect.add", {{"objectID", "@inspect"},
                                               {"rect.x", "20"},
                                               {"rect.y", "10"},
                                               {"rect.w", "5"},
                                               {"rect.h", "6"},
                                               {"line.clr", "16419840"},
                                               {"line.width", "1"},
                                               {"cs", "img"}});
    const QImage picture = shown.grab();
    const QPoint corner = QPoint(picture.width() / 2, picture.height() / 2) + QPoint(-5 * 4, -10 * 4);
    const QRect outer(corner - QPoint(1, 1), QSize(5 * 4 + 2, 6 * 4 + 2));
    const QRect inner = outer.adjusted(1, 1, -1, -1);
    const QRgb azure = qRgb(0, 140, 250);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const bool isLine = outer.contains(x, y) && !inner.contains(x, y);
            QVERIFY2(picture.pixel(x, y) == (isLine ? azure : before.pixel(x, y)),
                     qPrintable(QString("%1, %2: %3").arg(x).arg(y).arg(picture.pixel(x, y), 8, 16)));
        }
    shown.run("cmd.display.overlay.del", {{"objectID", "@inspect"}});
    QCOMPARE(shown.grab(), before);
}

void TestViewerPainting::theCanvasStaysBelowOtherChildren()
{
    ShownViewer shown(QSize(200, 160));
    shown.show(TestImage(zor::Mono8, 50, 40, [](int, int, int) { return 10; }));
    QWidget button(&shown.view);
    button.setStyleSheet("background: rgb(1, 2, 3)");
    button.setAttribute(Qt::WA_StyledBackground);
    button.setGeometry(3, 3, 34, 34);
    button.show();
    QCoreApplication::processEvents();
    QCOMPARE(shown.view.childAt(20, 20), &button);
    QCOMPARE(shown.view.grab().toImage().pixel(20, 20), QRgb(qRgb(1, 2, 3)));
    QCOMPARE(shown.view.childAt(100, 100), shown.surface());
}

// An OpenGL canvas gets another context there.
void TestViewerPainting::theCanvasMovesToAnotherWindow()
{
    QWidget window;
    window.resize(300, 200);
    window.show();
    ShownViewer shown(QSize(200, 100));
    shown.show(TestImage(zor::Mono8, 64, 64, [](int x, int y, int) { return (x * y) & 255; }));
    const QImage before = shown.grab();
    shown.view.setParent(&window);
    shown.view.show();
    QCOMPARE(shown.grab(), before);
}

void TestViewerPainting::withoutAnImageTheViewIsPlain()
{
    ShownViewer shown(QSize(60, 40));
    const QImage picture = shown.grab();
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            QCOMPARE(picture.pixel(x, y), grey(0x30));
}

void TestViewerPainting::aViewOfOnePixelShowsOnePixel()
{
    ShownViewer shown(QSize(1, 1));
    shown.show(TestImage(zor::Mono8, 1, 1, [](int, int, int) { return 99; }));
    const QImage picture = shown.grab();
    QCOMPARE(picture.size(), shown.surface()->size() * shown.view.devicePixelRatioF());
    QCOMPARE(shown.surface()->size(), QSize(1, 1));
    QCOMPARE(picture.pixel(0, 0), grey(99));
    QCOMPARE(shown.visible(), QRect(0, 0, 1, 1));
}

QTEST_MAIN(TestViewerPainting)
#include "tst_viewer_painting.moc"
