#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QMenu>
#include <QTest>

Q_DECLARE_METATYPE(std::function<void(ShownViewer&)>)

/// Whoever changes what is seen sees it without asking for a paint.
class TestViewerRepainting : public QObject
{
    Q_OBJECT

private slots:
    void changesArePainted_data();
    void changesArePainted();
};

namespace {
using Deed = std::function<void(ShownViewer&)>;

const QPoint Border(40, 84); ///< of the overlay

class Paints : public QObject
{
public:
    int count = 0;

    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

void show(ShownViewer& shown)
{
    shown.show(TestImage(zor::Mono8, 640, 480, [](int, int, int) { return 99; }));
}

/// Adds one, or replaces it.
void addOverlay(ShownViewer& shown)
{
    shown.run("cmd.display.overlay.rect.add", {{"objectID", "@dump"},
                                               {"rect.x", "20"},
                                               {"rect.y", "30"},
                                               {"rect.w", "40"},
                                               {"rect.h", "24"},
                                               {"adjust", "1"}});
}

void chooseColoration(ShownViewer& shown)
{
    for (QAction* action : shown.view.findChild<QMenu*>()->actions())
        if (action->text() == "Coloration")
            action->trigger();
}
} // namespace

void TestViewerRepainting::changesArePainted_data()
{
    QTest::addColumn<Deed>("deed");
    QTest::newRow("another image of the same size") << Deed(show);
    QTest::newRow("the image again") << Deed([](ShownViewer& shown) { shown.run("cmd.image.rebuild"); });
    QTest::newRow("another scale") << Deed([](ShownViewer& shown) { shown.run("cmd.display.view.zoom.in"); });
    QTest::newRow("another place") << Deed([](ShownViewer& shown) { shown.lookAt(0.3, 0.4); });
    QTest::newRow("an overlay more") << Deed(addOverlay);
    QTest::newRow("an overlay less") << Deed([](ShownViewer& shown) {
        shown.run("cmd.display.overlay.del", {{"objectID", "@dump"}});
    });
    QTest::newRow("an overlay that is dragged")
        << Deed([](ShownViewer& shown) { shown.move(Border + QPoint(20, 10), Qt::LeftButton); });
    QTest::newRow("coloration chosen in the menu") << Deed(chooseColoration);
}

void TestViewerRepainting::changesArePainted()
{
    QFETCH(Deed, deed);
    ShownViewer shown(QSize(320, 240));
    show(shown);
    shown.setScale(2.0 * shown.view.devicePixelRatioF());
    shown.lookAt(80.0 / 640.0, 60.0 / 480.0);
    addOverlay(shown);
    shown.run("cmd.system.menu.create");
    shown.press(Border);
    QVERIFY(QTest::qWaitForWindowExposed(&shown.view));
    Paints paints;
    for (QWidget* child : shown.surface()->findChildren<QWidget*>())
        child->installEventFilter(&paints);
    QTRY_VERIFY(paints.count > 0);
    QCoreApplication::processEvents();
    paints.count = 0;
    deed(shown);
    QTRY_VERIFY(paints.count > 0);
}

QTEST_MAIN(TestViewerRepainting)
#include "tst_viewer_repainting.moc"
