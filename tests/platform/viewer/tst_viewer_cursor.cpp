#include "display/ZorDisplayQt.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

/// The cursor over an overlay that can be adjusted, and the host's own one beside it.
class TestViewerCursor : public QObject
{
    Q_OBJECT

private slots:
    void partsOfAnOverlayHaveTheirCursors_data();
    void partsOfAnOverlayHaveTheirCursors();
    void theHostsCursorComesBack();
    void withoutAHostsCursorNoneIsLeft();
    void theViewerTakesItsCursorAlong();
};

namespace {
const QPoint Border(40, 84);
const QPoint Beside(200, 84);

Qt::CursorShape shapeAt(ShownViewer& shown, const QPoint& place)
{
    shown.move(place, Qt::NoButton);
    return shown.surface()->cursor().shape();
}
} // namespace

void TestViewerCursor::partsOfAnOverlayHaveTheirCursors_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<int>("shape");
    QTest::newRow("the border") << Border << int(Qt::SizeAllCursor);
    QTest::newRow("the upper left corner") << QPoint(40, 60) << int(Qt::SizeFDiagCursor);
    QTest::newRow("the lower right corner") << QPoint(119, 107) << int(Qt::SizeFDiagCursor);
    QTest::newRow("the upper right corner") << QPoint(119, 60) << int(Qt::SizeBDiagCursor);
    QTest::newRow("the lower left corner") << QPoint(40, 107) << int(Qt::SizeBDiagCursor);
}

void TestViewerCursor::partsOfAnOverlayHaveTheirCursors()
{
    QFETCH(QPoint, place);
    QFETCH(int, shape);
    ShownViewer shown(QSize(320, 240));
    shown.showDumpOverlay();
    QCOMPARE(int(shapeAt(shown, place)), shape);
}

void TestViewerCursor::theHostsCursorComesBack()
{
    ShownViewer shown(QSize(320, 240));
    shown.showDumpOverlay();
    for (const Qt::CursorShape own : {Qt::CrossCursor, Qt::WaitCursor}) {
        shown.surface()->setCursor(own);
        QCOMPARE(shapeAt(shown, Beside), own);
        QCOMPARE(shapeAt(shown, Border), Qt::SizeAllCursor);
        QCOMPARE(shapeAt(shown, QPoint(40, 60)), Qt::SizeFDiagCursor);
        QCOMPARE(shapeAt(shown, Beside), own);
        QCOMPARE(shapeAt(shown, Beside + QPoint(1, 0)), own);
    }
}

void TestViewerCursor::withoutAHostsCursorNoneIsLeft()
{
    ShownViewer shown(QSize(320, 240));
    shown.showDumpOverlay();
    QCOMPARE(shapeAt(shown, Border), Qt::SizeAllCursor);
    shown.move(Beside, Qt::NoButton);
    QVERIFY(!shown.surface()->testAttribute(Qt::WA_SetCursor));
}

void TestViewerCursor::theViewerTakesItsCursorAlong()
{
    ShownViewer shown(QSize(320, 240));
    shown.showDumpOverlay();
    shown.surface()->setCursor(Qt::CrossCursor);
    QCOMPARE(shapeAt(shown, Border), Qt::SizeAllCursor);
    ZorDisplayCPU::DeleteComponent(shown.viewer);
    shown.viewer = nullptr;
    QCOMPARE(shown.surface()->cursor().shape(), Qt::CrossCursor);
}

QTEST_MAIN(TestViewerCursor)
#include "tst_viewer_cursor.moc"
