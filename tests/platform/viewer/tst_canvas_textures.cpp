#include "display/ZorDisplayQt.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <QTest>

/// What the OpenGL canvas keeps in the driver, seen by a context that shares its textures.
class TestCanvasTextures : public QObject
{
    Q_OBJECT

public:
    static void initMain() { QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts); }

private slots:
    void theContextIsOfTheKindThatQtWasBuiltFor();
    void nothingIsLeftAfterTheViewer();
    void nothingOfAPairIsLeftAfterItsSecondImage();
    void smallerTilesAreMoreTextures();
    void theTilesFollowTheImagesSize_data();
    void theTilesFollowTheImagesSize();
};

namespace {
/// Names that the driver holds a texture for, of those that are given out first.
int textures()
{
    QOpenGLContext* context = QOpenGLContext::globalShareContext();
    QOffscreenSurface surface;
    surface.setFormat(context->format());
    surface.create();
    if (!context->makeCurrent(&surface))
        qFatal("no shared context");
    int count = 0;
    for (GLuint name = 1; name < 2000; ++name)
        count += context->functions()->glIsTexture(name) == GL_TRUE;
    context->doneCurrent();
    return count;
}
} // namespace

void TestCanvasTextures::theContextIsOfTheKindThatQtWasBuiltFor()
{
    ShownViewer shown(QSize(200, 100), true);
    shown.grab();
    const auto* canvas = shown.surface()->findChild<QOpenGLWidget*>();
    QVERIFY(canvas);
    QCOMPARE(canvas->context()->isOpenGLES(), QOpenGLContext::openGLModuleType() == QOpenGLContext::LibGLES);
}

void TestCanvasTextures::nothingIsLeftAfterTheViewer()
{
    QGraphicsView view;
    view.resize(206, 106);
    view.show();
    const int before = textures();
    ZorDisplayProcessor* viewer = ZorDisplayQGL::CreateComponent(&view);
    QVERIFY(viewer);
    const TestImage image = ramp(100, 80);
    QCOMPARE(viewer->displayPair(image.record(), image.record()), 1);
    view.grab();
    QVERIFY(textures() >= before + 5);
    ZorDisplayQGL::DeleteComponent(viewer);
    QCOMPARE(textures(), before);
}

void TestCanvasTextures::nothingOfAPairIsLeftAfterItsSecondImage()
{
    ShownViewer shown(QSize(202, 100), true);
    const TestImage image = ramp(100, 100);
    shown.show(image);
    shown.setScale(1.0);
    shown.grab();
    const int before = textures();
    shown.viewer->displayPair(image.record(), image.record());
    shown.grab();
    QVERIFY(textures() > before);
    shown.show(image);
    shown.grab();
    QCOMPARE(textures(), before);
}

void TestCanvasTextures::smallerTilesAreMoreTextures()
{
    ShownViewer shown(QSize(200, 160), true);
    shown.show(ramp(200, 160));
    shown.setScale(1.0);
    shown.grab();
    const int before = textures();
    shown.run("cmd.parameter.set", {{"name", "canvas.tile.edge"}, {"value", "64"}});
    shown.grab();
    // Four across and three down in the place of one.
    QCOMPARE(textures(), before + 11);
}

void TestCanvasTextures::theTilesFollowTheImagesSize_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("one row more") << QSize(99, 100);
    QTest::newRow("one row less") << QSize(99, 98);
    QTest::newRow("one column more") << QSize(100, 99);
    QTest::newRow("one column less") << QSize(98, 99);
}

void TestCanvasTextures::theTilesFollowTheImagesSize()
{
    QFETCH(QSize, size);
    ShownViewer shown(QSize(150, 150), true);
    const auto look = [&](const TestImage& image) {
        if (shown.show(image) != 0)
            qFatal("the image is refused");
        shown.setScale(1.0);
        shown.lookAt(0.5, 0.5);
        return shown.grab();
    };
    look(TestImage(zor::Mono8, 99, 99, [](int, int, int) { return 7; }));
    const QImage picture =
        look(TestImage(zor::Mono8, size.width(), size.height(), [](int, int, int) { return 200; }));
    int painted = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            painted += picture.pixel(x, y) == qRgb(200, 200, 200);
    QCOMPARE(painted, size.width() * size.height());
}

QTEST_MAIN(TestCanvasTextures)
#include "tst_canvas_textures.moc"
