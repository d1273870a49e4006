#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"
#include "tests/support/FormatCodes.h"

#include <QTest>

#include <cmath>

/// The same view on both canvases: at most one grey level apart on 99.9 % of the pixels.
class TestCanvasAgreement : public QObject
{
    Q_OBJECT

private slots:
    void bothPaintTheSame_data();
    void bothPaintTheSame();
};

void TestCanvasAgreement::bothPaintTheSame_data()
{
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("tileEdge");
    const std::pair<const char*, quint32> types[] = {{"Mono8", zor::Mono8},   {"Mono12", zor::Mono12},
                                                     {"Mono16", zor::Mono16}, {"RGB8", Rgb8Code},
                                                     {"BGR16", Bgr16Code},    {"RGBa8", codeOf("RGBa8")}};
    for (const auto& [name, type] : types)
        for (const double scale : {0.0, 0.27, 0.52, 0.73, 1.0, 3.37, 8.0, 48.0})
            for (const int edge : {4096, 64})
                QTest::addRow("%s, scale %.2f (0 is the fit), tiles of %d", name, scale, edge)
                    << type << scale << edge;
}

void TestCanvasAgreement::bothPaintTheSame()
{
    QFETCH(quint32, pixelType);
    QFETCH(double, scale);
    QFETCH(int, tileEdge);
    ShownViewer software(QSize(417, 311), false);
    ShownViewer gpu(QSize(417, 311), true);
    const auto depth = static_cast<int>(zor::pixelTypeSampleBits(pixelType));
    // Rings that grow finer to the outside, over a ramp.
    const TestImage image(
        pixelType, 731, 553,
        [depth](int x, int y, int c) {
            const double r = std::hypot(x - 365, y - 276);
            const double level = 0.4 + 0.3 * std::cos(r * r * 0.004 + c) + x * 0.0004;
            return static_cast<int>(level * ((1 << depth) - 1));
        },
        6);
    for (ShownViewer* shown : {&software, &gpu}) {
        QCOMPARE(shown->run("cmd.parameter.set",
                            {{"name", "canvas.tile.edge"}, {"value", std::to_string(tileEdge)}}),
                 1);
        QCOMPARE(shown->show(image), 0);
        if (scale > 0.0) {
            shown->setScale(scale);
            shown->lookAt(0.43, 0.61);
        }
        shown->run("cmd.display.overlay.rect.add", {{"objectID", "@dump"},
                                                    {"rect.x", "300"},
                                                    {"rect.y", "320"},
                                                    {"rect.w", "30"},
                                                    {"rect.h", "20"}});
    }
    const QImage a = software.grab();
    const QImage b = gpu.grab();
    QCOMPARE(a.size(), b.size());
    int far = 0;
    QString where;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            if (std::abs(qRed(p) - qRed(q)) > 1 || std::abs(qGreen(p) - qGreen(q)) > 1 ||
                std::abs(qBlue(p) - qBlue(q)) > 1) {
                if (far == 0)
                    where = QString("first at %1, %2: software %3, OpenGL %4")
                                .arg(x)
                                .arg(y)
                                .arg(p, 8, 16)
                                .arg(q, 8, 16);
                ++far;
            }
        }
    QVERIFY2(far * 1000 <= a.width() * a.height(),
             qPrintable(QString("%1 pixels differ, %2").arg(far).arg(where)));
}

QTEST_MAIN(TestCanvasAgreement)
#include "tst_canvas_agreement.moc"
