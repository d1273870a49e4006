#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

#include <cstdlib>

/// Where grid and overlays are drawn, to the device pixel.
class TestViewerDecorations : public QObject
{
    Q_OBJECT

private slots:
    void theGridBeginsAtScaleForty();
    void gridLinesAreOneDevicePixelWide();
    void overlaysOfAPairStayInTheirPane_data();
    void overlaysOfAPairStayInTheirPane();
};

namespace {
constexpr int Grey = 0x30; ///< of the background
} // namespace

void TestViewerDecorations::theGridBeginsAtScaleForty()
{
    ShownViewer shown(QSize(240, 160));
    shown.show(flat(200, 16, 16));
    shown.setScale(40.0);
    shown.lookAt(0.5, 0.5);
    const QImage picture = shown.grab();
    const QRgb line = picture.pixel(picture.width() / 2, picture.height() / 2);
    QVERIFY2(line != qRgb(200, 200, 200), "a grid line runs between pixels 7 and 8");
}

// Around all pixels, and nothing beside it up to the numbers.
void TestViewerDecorations::gridLinesAreOneDevicePixelWide()
{
    constexpr int Side = 64;
    constexpr int Near = 5;
    ShownViewer shown(QSize(240, 160));
    shown.show(flat(200, 3, 2));
    shown.setScale(Side);
    shown.lookAt(0.5, 0.5);
    const QImage picture = shown.grab();
    const QSize size(3 * Side, 2 * Side);
    const QPoint corner((picture.width() - size.width()) / 2, (picture.height() - size.height()) / 2);
    const QRect image(corner, size);
    const QRect lines(corner, size + QSize(1, 1));
    const auto isBlackOver = [](int level, int under) { return std::abs(level - under * 145 / 255) <= 1; };
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QPoint at(x, y);
            const QPoint off = at - corner;
            if (at == lines.bottomRight())
                continue;
            const int under = image.contains(at) ? 200 : Grey;
            const int level = qRed(picture.pixel(at));
            const bool isLine = lines.contains(at) && (off.x() % Side == 0 || off.y() % Side == 0);
            const auto isNear = [](int place) { return place % Side <= Near || place % Side >= Side - Near; };
            if (isLine)
                QVERIFY2(isBlackOver(level, under),
                         qPrintable(QString("%1, %2: %3").arg(x).arg(y).arg(level)));
            else if (!image.contains(at) || isNear(off.x()) || isNear(off.y()))
                QVERIFY2(level == under, qPrintable(QString("%1, %2: %3").arg(x).arg(y).arg(level)));
        }
}

void TestViewerDecorations::overlaysOfAPairStayInTheirPane_data()
{
    QTest::addColumn<int>("x");
    QTest::newRow("beyond the right edge of both") << 50;
    QTest::newRow("beyond the left edge of both") << -50;
}

// Each pane shows 100 x 100 pixels; between them lie 2 device pixels.
void TestViewerDecorations::overlaysOfAPairStayInTheirPane()
{
    QFETCH(int, x);
    ShownViewer shown(QSize(202, 100));
    QCOMPARE(shown.viewer->displayPair(flat(50, 100, 100).record(), flat(200, 100, 100).record()), 1);
    const double ratio = shown.view.devicePixelRatioF();
    const QImage before = shown.grab();
    shown.run("cmd.display.overlay.rect.add", {{"objectID", "@dump"},
                                               {"rect.x", std::to_string(x)},
                                               {"rect.y", "20"},
                                               {"rect.w", "100"},
                                               {"rect.h", "60"}});
    const QImage picture = shown.grab();
    const int pane = (picture.width() - 2) / 2;
    const int border = static_cast<int>(20 * ratio) - 1;
    const auto isDrawn = [&](int column) {
        return picture.pixel(column, border) != before.pixel(column, border);
    };
    for (int column = 0; column < picture.width(); ++column) {
        const bool isGap = column >= pane && column < pane + 2;
        const int inPane = column < pane ? column : column - pane - 2;
        const bool isMeant = !isGap && (x > 0 ? inPane >= pane / 2 - 1 : inPane <= pane / 2);
        QVERIFY2(isDrawn(column) == isMeant, qPrintable(QString("column %1").arg(column)));
    }
}

QTEST_MAIN(TestViewerDecorations)
#include "tst_viewer_decorations.moc"
