#include "tests/splitter/ShownGrid.h"

#include <QtTest>

#include <functional>

// Calls of QWidget::resizeEvent, which does nothing itself, arrive here at link time.
extern "C" void __real__ZN7QWidget11resizeEventEP12QResizeEvent(QWidget* self, QResizeEvent* event);
extern "C" void __wrap__ZN7QWidget11resizeEventEP12QResizeEvent(QWidget* self, QResizeEvent* event);

namespace {

/// Hears of each call of QWidget::resizeEvent.
std::function<void(const QWidget*, const QResizeEvent*)> noteBaseResize;

} // namespace

void __wrap__ZN7QWidget11resizeEventEP12QResizeEvent(QWidget* self, QResizeEvent* event)
{
    if (noteBaseResize)
        noteBaseResize(self, event);
    __real__ZN7QWidget11resizeEventEP12QResizeEvent(self, event);
}

/// Where panes and handles lie in a grid of a given size.
class TestGridLayout : public QObject
{
    Q_OBJECT

private slots:
    void panesAreEqualWithTheRestUncovered();
    void handlesFillTheGaps();
    void sizesAreTruncatedTowardZero_data();
    void sizesAreTruncatedTowardZero();
    void aResizeMakesThePanesEqualAgain();
    void theBaseHandlerComesBeforeTheLayout();
    void anEmptyGridSnapsToNothing();
    void aGridThatIsNotSquareSkipsTheMissingHandle();
};

void TestGridLayout::panesAreEqualWithTheRestUncovered()
{
    const ShownGrid g(100, 80);
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 47, 37}, {52, 0, 47, 37}, {0, 42, 47, 37}, {52, 42, 47, 37}}));
}

void TestGridLayout::handlesFillTheGaps()
{
    const ShownGrid g(100, 80);
    QCOMPARE(g.vertical->geometry(), QRect(47, 0, 5, 80));
    QCOMPARE(g.horizontal->geometry(), QRect(0, 37, 100, 5));
    QCOMPARE(g.cross->geometry(), QRect(47, 37, 5, 5));
}

void TestGridLayout::sizesAreTruncatedTowardZero_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("gaps");
    QTest::newRow("no width: -5 / 2 is -2") << QSize(0, 80) << QPoint(-2, 37);
    QTest::newRow("no height") << QSize(100, 0) << QPoint(47, -2);
    QTest::newRow("less than a gap: -1 / 2 is 0") << QSize(4, 4) << QPoint(0, 0);
}

void TestGridLayout::sizesAreTruncatedTowardZero()
{
    QFETCH(QSize, size);
    QFETCH(QPoint, gaps);
    QWidget parent;
    auto* grid = new CGridSplitter(&parent);
    QList<QWidget*> panes;
    for (int i = 0; i < 4; ++i)
        panes << new QWidget;
    QCOMPARE(grid->setWidgets(panes, 2, 2), 0);
    grid->resize(size);
    grid->snapToGrid();
    QCOMPARE(grid->findChild<CCrossSplitterHandle*>()->pos(), gaps);
    QCOMPARE(panes.at(3)->pos(), gaps + QPoint(5, 5));
    for (const auto* handle : grid->findChildren<CSplitterHandle*>()) {
        const bool vertical = handle->barOrientation() == Qt::Vertical;
        QCOMPARE(handle->pos(), vertical ? QPoint(gaps.x(), 0) : QPoint(0, gaps.y()));
    }
}

void TestGridLayout::aResizeMakesThePanesEqualAgain()
{
    ShownGrid g(100, 80);
    drag(g.cross, {5, 6});
    g.grid.resize(101, 80);
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 48, 37}, {53, 0, 48, 37}, {0, 42, 48, 37}, {53, 42, 48, 37}}));
    QCOMPARE(g.vertical->x(), 48);
    QCOMPARE(g.horizontal->y(), 37);
    QCOMPARE(g.cross->pos(), QPoint(48, 37));
}

void TestGridLayout::theBaseHandlerComesBeforeTheLayout()
{
    ShownGrid g(100, 80);
    QList<QSize> sizes;
    QList<int> gaps;
    noteBaseResize = [&](const QWidget* self, const QResizeEvent* event) {
        if (self != &g.grid)
            return;
        sizes << event->size();
        gaps << g.vertical->x();
    };
    g.grid.resize(200, 80);
    noteBaseResize = nullptr;
    QCOMPARE(sizes, QList<QSize>{QSize(200, 80)});
    QCOMPARE(gaps, QList<int>{47});
    QCOMPARE(g.vertical->x(), 97);
}

void TestGridLayout::anEmptyGridSnapsToNothing()
{
    CGridSplitter grid(nullptr);
    grid.resize(50, 50);
    grid.snapToGrid();
    QVERIFY(grid.findChildren<QWidget*>().isEmpty());
}

void TestGridLayout::aGridThatIsNotSquareSkipsTheMissingHandle()
{
    CGridSplitter grid(nullptr);
    grid.resize(100, 80);
    QList<QWidget*> panes;
    for (int i = 0; i < 3; ++i)
        panes << new QWidget;
    QCOMPARE(grid.setWidgets(panes, 1, 3), 0);
    QCOMPARE(panes.at(2)->geometry(), QRect(70, 0, 30, 80));
    // A vertical bar is looked for after a horizontal one, so that these stay where they were made.
    const auto bars = grid.findChildren<CSplitterHandle*>();
    QCOMPARE(bars.size(), 2);
    for (const CSplitterHandle* bar : bars)
        QCOMPARE(bar->pos(), QPoint(0, 0));
}

QTEST_MAIN(TestGridLayout)
#include "tst_grid_layout.moc"
