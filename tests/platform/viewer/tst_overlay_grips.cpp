#include "platform/viewer/view/OverlayDrag.h"

#include <QTest>

using namespace zor::viewer;

/// Which part of an overlay lies under a device point.
class TestOverlayGrips : public QObject
{
    Q_OBJECT

private slots:
    void cornersReachAsFarOnEverySide_data();
    void cornersReachAsFarOnEverySide();
};

void TestOverlayGrips::cornersReachAsFarOnEverySide_data()
{
    QTest::addColumn<QPointF>("device");
    QTest::addColumn<int>("part");
    const auto row = [](const char* name, double x, double y, int part) {
        QTest::newRow(name) << QPointF(x, y) << part;
    };
    const int border = OverlayDrag::Border;
    row("the lower right corner", 120.0, 108.0, OverlayDrag::Right | OverlayDrag::Bottom);
    row("nearly the reach left of it", 116.5, 108.0, OverlayDrag::Right | OverlayDrag::Bottom);
    row("the reach left of it", 116.0, 108.0, border);
    row("nearly the reach above it", 120.0, 104.5, OverlayDrag::Right | OverlayDrag::Bottom);
    row("the reach above it", 120.0, 104.0, border);
    row("the upper left corner", 40.0, 60.0, OverlayDrag::Left | OverlayDrag::Top);
    row("nearly the reach right of it", 43.5, 60.0, OverlayDrag::Left | OverlayDrag::Top);
    row("the reach right of it", 44.0, 60.0, border);
    row("nearly the reach below it", 40.0, 63.5, OverlayDrag::Left | OverlayDrag::Top);
    row("the reach below it", 40.0, 64.0, border);
}

// The rectangle lies from 40, 60 to 120, 108; the reach is 4.
void TestOverlayGrips::cornersReachAsFarOnEverySide()
{
    QFETCH(QPointF, device);
    QFETCH(int, part);
    ViewGeometry geometry;
    geometry.setViewSize(QSize(320, 240));
    geometry.setImageSize(QSize(640, 480));
    geometry.setScale(2.0, geometry.middle());
    geometry.setCentre(QPointF(80.0, 60.0));
    Overlays overlays;
    overlays.add({"@dump", QRect(20, 30, 40, 24), Qt::yellow, 1, true});
    std::string id;
    QCOMPARE(OverlayDrag::partAt(overlays, geometry, device, 4.0, &id), part);
    QCOMPARE(id, std::string("@dump"));
}

QTEST_GUILESS_MAIN(TestOverlayGrips)
#include "tst_overlay_grips.moc"
