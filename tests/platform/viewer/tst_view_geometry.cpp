#include "platform/viewer/view/ViewGeometry.h"

#include <QTest>

#include <cmath>
#include <random>

using zor::viewer::ViewGeometry;

class TestViewGeometry : public QObject
{
    Q_OBJECT

private slots:
    void fitsWholeWidthOrHeight_data();
    void fitsWholeWidthOrHeight();
    void fitHoldsUntilZoomOrPan();
    void anotherImageKeepsTheCentreAsAFraction();
    void zoomKeepsTheAnchor();
    void visibleRectHasTheNearestMiddle_data();
    void visibleRectHasTheNearestMiddle();
    void visibleRectIsCentredInEveryView();
    void limitsScaleAndCentre();
    void elsewhereMeansHalfADevicePixel_data();
    void elsewhereMeansHalfADevicePixel();
};

namespace {
ViewGeometry geometry(const QSize& image, const QSize& view)
{
    ViewGeometry made;
    made.setViewSize(view);
    made.setImageSize(image);
    return made;
}
} // namespace

void TestViewGeometry::fitsWholeWidthOrHeight_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<QSize>("view");
    QTest::addColumn<int>("mode");
    QTest::addColumn<double>("scale");
    QTest::newRow("whole, the width is short") << QSize(200, 50) << QSize(100, 100) << 1 << 0.5;
    QTest::newRow("whole, the height is short") << QSize(50, 400) << QSize(100, 100) << 1 << 0.25;
    QTest::newRow("whole, a small image grows") << QSize(10, 10) << QSize(100, 80) << 1 << 8.0;
    QTest::newRow("width") << QSize(50, 400) << QSize(100, 100) << 2 << 2.0;
    QTest::newRow("height") << QSize(200, 50) << QSize(100, 100) << 3 << 2.0;
    QTest::newRow("a single pixel stops at the largest scale")
        << QSize(1, 1) << QSize(900, 900) << 1 << 256.0;
}

void TestViewGeometry::fitsWholeWidthOrHeight()
{
    QFETCH(QSize, image);
    QFETCH(QSize, view);
    QFETCH(int, mode);
    QFETCH(double, scale);
    ViewGeometry made = geometry(image, view);
    made.setScale(3.0, QPointF(1.0, 2.0));
    made.fit(mode);
    QCOMPARE(made.scale(), scale);
    QCOMPARE(made.centre(), QPointF(image.width() * 0.5, image.height() * 0.5));
}

void TestViewGeometry::fitHoldsUntilZoomOrPan()
{
    ViewGeometry made = geometry(QSize(100, 100), QSize(200, 300));
    QCOMPARE(made.scale(), 2.0);
    made.setViewSize(QSize(400, 300));
    QCOMPARE(made.scale(), 3.0);
    made.setImageSize(QSize(50, 300));
    QCOMPARE(made.scale(), 1.0);
    made.setCentre(QPointF(10.0, 20.0));
    made.setViewSize(QSize(900, 900));
    QCOMPARE(made.scale(), 1.0);
    QCOMPARE(made.centre(), QPointF(10.0, 20.0));
    made.fit(1);
    QCOMPARE(made.scale(), 3.0);
    made.setScale(1.5, made.middle());
    made.setViewSize(QSize(100, 100));
    QCOMPARE(made.scale(), 1.5);
}

void TestViewGeometry::anotherImageKeepsTheCentreAsAFraction()
{
    ViewGeometry made = geometry(QSize(100, 200), QSize(100, 100));
    made.setScale(2.0, made.middle());
    made.setCentre(QPointF(25.0, 150.0));
    made.setImageSize(QSize(400, 40));
    QCOMPARE(made.centre(), QPointF(100.0, 30.0));
    QCOMPARE(made.scale(), 2.0);
}

void TestViewGeometry::zoomKeepsTheAnchor()
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(100.0, 500.0);
    std::uniform_real_distribution<double> power(-2.0, 5.0);
    ViewGeometry made = geometry(QSize(5000, 4000), QSize(600, 600));
    made.setScale(1.0, made.middle());
    for (int i = 0; i < 200; ++i) {
        made.setCentre(QPointF(2500.0, 2000.0));
        const QPointF anchor(place(random), place(random));
        const QPointF before = made.toImage(anchor);
        made.setScale(std::exp2(power(random)), anchor);
        const QPointF off = made.toDevice(before) - anchor;
        QVERIFY2(std::abs(off.x()) < 1e-6 && std::abs(off.y()) < 1e-6,
                 qPrintable(QString("scale %1, anchor %2 %3, off by %4 %5")
                                .arg(made.scale())
                                .arg(anchor.x())
                                .arg(anchor.y())
                                .arg(off.x())
                                .arg(off.y())));
    }
}

void TestViewGeometry::visibleRectHasTheNearestMiddle_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("centre");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("length");
    // A view of 128 device pixels.
    QTest::newRow("on an edge between pixels, as many to both sides") << 1.0 << 100.0 << 36 << 128;
    QTest::newRow("less than a quarter after the edge") << 1.0 << 100.24 << 36 << 128;
    QTest::newRow("more than a quarter after the edge: a pixel's middle") << 1.0 << 100.26 << 36 << 129;
    QTest::newRow("in a pixel's middle") << 1.0 << 100.5 << 36 << 129;
    QTest::newRow("less than a quarter before the edge") << 1.0 << 99.76 << 36 << 128;
    QTest::newRow("more than a quarter before the edge") << 1.0 << 99.74 << 35 << 129;
    QTest::newRow("the nearest even length, down") << 8.0 << 100.0 << 92 << 16;
    QTest::newRow("the nearest odd length, up") << 8.0 << 100.5 << 92 << 17;
    QTest::newRow("5.12 pixels on an edge") << 25.0 << 100.0 << 97 << 6;
    QTest::newRow("4.92 pixels on an edge") << 26.0 << 100.0 << 98 << 4;
    QTest::newRow("6.1 pixels around a middle") << 21.0 << 100.5 << 97 << 7;
    QTest::newRow("5.8 pixels around a middle") << 22.0 << 100.5 << 98 << 5;
    QTest::newRow("half a pixel on an edge: both beside it") << 256.0 << 100.0 << 99 << 2;
    QTest::newRow("half a pixel around a middle: this one") << 256.0 << 100.5 << 100 << 1;
    QTest::newRow("at the image's beginning") << 16.0 << 0.0 << -4 << 8;
}

void TestViewGeometry::visibleRectHasTheNearestMiddle()
{
    QFETCH(double, scale);
    QFETCH(double, centre);
    QFETCH(int, first);
    QFETCH(int, length);
    ViewGeometry made = geometry(QSize(1000, 1000), QSize(128, 1000));
    made.setScale(scale, made.middle());
    made.setCentre({centre, 500.0});
    QCOMPARE(made.visibleRect().x(), first);
    QCOMPARE(made.visibleRect().width(), length);
    ViewGeometry turned = geometry(QSize(1000, 1000), QSize(1000, 128));
    turned.setScale(scale, turned.middle());
    turned.setCentre({500.0, centre});
    QCOMPARE(turned.visibleRect().y(), first);
    QCOMPARE(turned.visibleRect().height(), length);
}

void TestViewGeometry::visibleRectIsCentredInEveryView()
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> fraction(0.0, 1.0);
    std::uniform_int_distribution<int> side(1, 1500);
    for (int i = 0; i < 2000; ++i) {
        const QSize image(side(random), side(random));
        ViewGeometry made = geometry(image, QSize(side(random), side(random)));
        made.setScale(std::exp2(fraction(random) * 12.0 - 4.0), made.middle());
        made.setCentre({fraction(random) * image.width(), fraction(random) * image.height()});
        const QRect rect = made.visibleRect();
        const QPointF off =
            QPointF(rect.x() + rect.width() * 0.5, rect.y() + rect.height() * 0.5) - made.centre();
        QVERIFY2(std::abs(off.x()) <= 0.25 && std::abs(off.y()) <= 0.25,
                 qPrintable(QString("%1, %2 pixels off").arg(off.x()).arg(off.y())));
        const double across = made.viewSize().width() / made.scale();
        QVERIFY2(rect.width() == 2 || std::abs(rect.width() - across) <= 1.0,
                 qPrintable(QString("width %1 for %2").arg(rect.width()).arg(across)));
    }
}

void TestViewGeometry::limitsScaleAndCentre()
{
    ViewGeometry made = geometry(QSize(1600, 100), QSize(320, 320));
    made.setScale(1e9, made.middle());
    QCOMPARE(made.scale(), 256.0);
    made.setScale(1e-9, made.middle());
    QCOMPARE(made.scale(), 16.0 / 1600.0);
    made.setCentre(QPointF(-5.0, 1e9));
    QCOMPARE(made.centre(), QPointF(0.0, 100.0));
    ViewGeometry tiny = geometry(QSize(4000, 4000), QSize(4, 4));
    QCOMPARE(tiny.scale(), 0.001);
    tiny.setScale(1e-9, tiny.middle());
    QCOMPARE(tiny.scale(), 0.001);
}

void TestViewGeometry::elsewhereMeansHalfADevicePixel_data()
{
    QTest::addColumn<double>("moved");
    QTest::addColumn<double>("grown");
    QTest::addColumn<bool>("isElsewhere");
    QTest::newRow("nothing") << 0.0 << 1.0 << false;
    QTest::newRow("0.4 device pixels to the right") << 0.4 << 1.0 << false;
    QTest::newRow("0.6 device pixels to the left") << -0.6 << 1.0 << true;
    QTest::newRow("an edge of the view moves by 0.4 device pixels") << 0.0 << 1.002 << false;
    QTest::newRow("an edge of the view moves by 0.6 device pixels") << 0.0 << 1.003 << true;
}

void TestViewGeometry::elsewhereMeansHalfADevicePixel()
{
    QFETCH(double, moved);
    QFETCH(double, grown);
    QFETCH(bool, isElsewhere);
    ViewGeometry made = geometry(QSize(1000, 1000), QSize(400, 300));
    made.setScale(8.0, made.middle());
    ViewGeometry other = made;
    other.setScale(8.0 * grown, other.middle());
    other.setCentre(other.centre() + QPointF(moved / 8.0, 0.0));
    QCOMPARE(other.isElsewhere(made), isElsewhere);
}

QTEST_GUILESS_MAIN(TestViewGeometry)
#include "tst_view_geometry.moc"
