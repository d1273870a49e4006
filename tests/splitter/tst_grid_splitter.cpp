#include "splitter/CCrossSplitterHandle.h"
#include "splitter/CGridSplitter.h"
#include "splitter/CSplitterHandle.h"

#include <QPointer>
#include <QtTest>

#include <memory>

namespace {

/// A shown 2 x 2 grid and its parts.
struct Grid
{
    explicit Grid(int width = 100, int height = 80)
        : grid(nullptr)
    {
        for (int i = 0; i < 4; ++i)
            panes << new QWidget;
        result = grid.setWidgets(panes, 2, 2);
        grid.resize(width, height);
        grid.show();
        for (auto* handle : grid.findChildren<CSplitterHandle*>())
            (handle->barOrientation() == Qt::Vertical ? vertical : horizontal) = handle;
        cross = grid.findChild<CCrossSplitterHandle*>();
    }

    QList<QRect> paneRects() const
    {
        QList<QRect> rects;
        for (QWidget* pane : panes)
            rects << pane->geometry();
        return rects;
    }

    CGridSplitter grid;
    QList<QWidget*> panes;
    CSplitterHandle* vertical = nullptr;
    CSplitterHandle* horizontal = nullptr;
    CCrossSplitterHandle* cross = nullptr;
    int result = -3;
};

/// Drags a handle from its middle by a way in pixels, as a mouse does.
void drag(QWidget* handle, QPoint way)
{
    QEvent enter(QEvent::Enter);
    QCoreApplication::sendEvent(handle, &enter);
    const QPoint start = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, start + way, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, {}, start);
}

} // namespace

class tst_grid_splitter : public QObject
{
    Q_OBJECT

private slots:
    void refusedListsLeaveTheGridAsItWas_data();
    void refusedListsLeaveTheGridAsItWas();
    void panesAreEqualWithTheRestUncovered();
    void handlesFillTheGaps();
    void limitsOfADrag_data();
    void limitsOfADrag();
    void aDragMovesTheGapThroughAllRows();
    void aDragMovesTheGapThroughAllColumns();
    void theCrossMovesBothGaps();
    void aRefusedWayDoesNotStopTheOther_data();
    void aRefusedWayDoesNotStopTheOther();
    void aResizeMakesThePanesEqualAgain();
    void anUnknownCrossingIsIgnored();
    void anEmptyGridSnapsToNothing();
    void aSecondFillDeletesTheFirst();
    void theGridOwnsItsPanes();
    void theCrossLiesAboveTheBars();
    void mouseEventsOnTheGapsEndInTheGrid();
    void anyOtherDirectionMovesNothing();
    void aGapWithoutAHandleMovesItsPanesAlone_data();
    void aGapWithoutAHandleMovesItsPanesAlone();
    void aGridThatIsNotSquareSkipsTheMissingHandle();
    void aFillDoesNotShowHiddenPanes();
    void slotsStandInTheirOrder();
};

void tst_grid_splitter::refusedListsLeaveTheGridAsItWas_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("result");
    QTest::newRow("an empty list") << 0 << 2 << 2 << -2;
    QTest::newRow("an empty list for no rows") << 0 << 0 << 2 << -2;
    QTest::newRow("an empty list for no columns") << 0 << 2 << 0 << -2;
    QTest::newRow("three widgets for two by two") << 3 << 2 << 2 << -1;
    QTest::newRow("five widgets for two by two") << 5 << 2 << 2 << -1;
}

void tst_grid_splitter::refusedListsLeaveTheGridAsItWas()
{
    QFETCH(int, count);
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(int, result);
    Grid g;
    QCOMPARE(g.result, 0);
    const QList<QRect> before = g.paneRects();
    std::vector<std::unique_ptr<QWidget>> owned;
    QList<QWidget*> list;
    for (int i = 0; i < count; ++i) {
        owned.push_back(std::make_unique<QWidget>());
        list << owned.back().get();
    }
    QCOMPARE(g.grid.setWidgets(list, rows, columns), result);
    QCOMPARE(g.paneRects(), before);
    QCOMPARE(g.panes.at(3)->parentWidget(), &g.grid);
    for (QWidget* widget : qAsConst(list))
        QVERIFY(!widget->parentWidget());
}

void tst_grid_splitter::panesAreEqualWithTheRestUncovered()
{
    const Grid g(100, 80);
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 47, 37}, {52, 0, 47, 37}, {0, 42, 47, 37}, {52, 42, 47, 37}}));
}

void tst_grid_splitter::handlesFillTheGaps()
{
    const Grid g(100, 80);
    QCOMPARE(g.vertical->geometry(), QRect(47, 0, 5, 80));
    QCOMPARE(g.horizontal->geometry(), QRect(0, 37, 100, 5));
    QCOMPARE(g.cross->geometry(), QRect(47, 37, 5, 5));
}

void tst_grid_splitter::limitsOfADrag_data()
{
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<int>("target");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("vertical handle to x 94") << true << 94 << false;
    QTest::newRow("vertical handle beyond x 94") << true << 120 << false;
    QTest::newRow("vertical handle to x 93") << true << 93 << true;
    QTest::newRow("vertical handle to x 1") << true << 1 << false;
    QTest::newRow("vertical handle to x 2") << true << 2 << true;
    QTest::newRow("horizontal handle to y 74") << false << 74 << false;
    QTest::newRow("horizontal handle to y 73") << false << 73 << true;
    QTest::newRow("horizontal handle to y 1") << false << 1 << false;
    QTest::newRow("horizontal handle to y 2") << false << 2 << true;
}

void tst_grid_splitter::limitsOfADrag()
{
    QFETCH(bool, vertical);
    QFETCH(int, target);
    QFETCH(bool, accepted);
    Grid g(100, 80);
    const QList<QRect> before = g.paneRects();
    QWidget* handle = vertical ? g.vertical : g.horizontal;
    const int start = vertical ? handle->x() : handle->y();
    drag(handle, vertical ? QPoint(target - start, 0) : QPoint(0, target - start));
    QCOMPARE(vertical ? handle->x() : handle->y(), accepted ? target : start);
    QCOMPARE(g.paneRects() == before, !accepted);
}

void tst_grid_splitter::aDragMovesTheGapThroughAllRows()
{
    Grid g(100, 80);
    drag(g.vertical, {10, 4});
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 57, 37}, {62, 0, 37, 37}, {0, 42, 57, 37}, {62, 42, 37, 37}}));
    QCOMPARE(g.vertical->geometry(), QRect(57, 0, 5, 80));
    QCOMPARE(g.horizontal->geometry(), QRect(0, 37, 100, 5));
    QCOMPARE(g.cross->pos(), QPoint(57, 37));
}

void tst_grid_splitter::aDragMovesTheGapThroughAllColumns()
{
    Grid g(100, 80);
    drag(g.horizontal, {4, -10});
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 47, 27}, {52, 0, 47, 27}, {0, 32, 47, 47}, {52, 32, 47, 47}}));
    QCOMPARE(g.horizontal->geometry(), QRect(0, 27, 100, 5));
    QCOMPARE(g.vertical->geometry(), QRect(47, 0, 5, 80));
    QCOMPARE(g.cross->pos(), QPoint(47, 27));
}

void tst_grid_splitter::theCrossMovesBothGaps()
{
    Grid g(100, 80);
    drag(g.cross, {5, 6});
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 52, 43}, {57, 0, 42, 43}, {0, 48, 52, 31}, {57, 48, 42, 31}}));
    QCOMPARE(g.cross->pos(), QPoint(52, 43));
    QCOMPARE(g.vertical->x(), 52);
    QCOMPARE(g.horizontal->y(), 43);
}

void tst_grid_splitter::aRefusedWayDoesNotStopTheOther_data()
{
    QTest::addColumn<QPoint>("way");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("x refused, y moves") << QPoint(60, 6) << QPoint(47, 43);
    QTest::newRow("y refused, x moves") << QPoint(6, -60) << QPoint(53, 37);
    QTest::newRow("both refused") << QPoint(-60, 60) << QPoint(47, 37);
}

void tst_grid_splitter::aRefusedWayDoesNotStopTheOther()
{
    QFETCH(QPoint, way);
    QFETCH(QPoint, place);
    Grid g(100, 80);
    drag(g.cross, way);
    QCOMPARE(g.cross->pos(), place);
    QCOMPARE(QPoint(g.vertical->x(), g.horizontal->y()), place);
}

void tst_grid_splitter::aResizeMakesThePanesEqualAgain()
{
    Grid g(100, 80);
    drag(g.cross, {5, 6});
    g.grid.resize(101, 80);
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 48, 37}, {53, 0, 48, 37}, {0, 42, 48, 37}, {53, 42, 48, 37}}));
    QCOMPARE(g.vertical->x(), 48);
    QCOMPARE(g.horizontal->y(), 37);
    QCOMPARE(g.cross->pos(), QPoint(48, 37));
}

void tst_grid_splitter::anUnknownCrossingIsIgnored()
{
    Grid g(100, 80);
    const QList<QRect> before = g.paneRects();
    g.grid.moveCrossSplitter(7, 5, 5);
    QCOMPARE(g.paneRects(), before);
    QCOMPARE(g.vertical->x(), 47);
}

void tst_grid_splitter::anEmptyGridSnapsToNothing()
{
    CGridSplitter grid(nullptr);
    grid.resize(50, 50);
    grid.snapToGrid();
    QVERIFY(grid.findChildren<QWidget*>().isEmpty());
}

void tst_grid_splitter::aSecondFillDeletesTheFirst()
{
    Grid g;
    const QPointer<QWidget> oldPane(g.panes.at(0));
    const QPointer<QWidget> oldHandle(g.vertical);
    const QPointer<QWidget> oldCross(g.cross);
    QList<QWidget*> fresh;
    for (int i = 0; i < 4; ++i)
        fresh << new QWidget;
    QCOMPARE(g.grid.setWidgets(fresh, 2, 2), 0);
    QVERIFY(!oldPane && !oldHandle && !oldCross);
    QCOMPARE(fresh.at(3)->geometry(), QRect(52, 42, 47, 37));
    QCOMPARE(g.grid.findChildren<CSplitterHandle*>().size(), 2);
    QCOMPARE(g.grid.findChildren<CCrossSplitterHandle*>().size(), 1);
}

void tst_grid_splitter::theGridOwnsItsPanes()
{
    QPointer<QWidget> pane;
    {
        const Grid g;
        pane = g.panes.at(2);
        QCOMPARE(pane->parentWidget(), &g.grid);
    }
    QVERIFY(!pane);
}

void tst_grid_splitter::theCrossLiesAboveTheBars()
{
    const Grid g(100, 80);
    QCOMPARE(g.grid.childAt(49, 39), static_cast<QWidget*>(g.cross));
    QCOMPARE(g.grid.childAt(49, 10), static_cast<QWidget*>(g.vertical));
    QCOMPARE(g.grid.childAt(10, 39), static_cast<QWidget*>(g.horizontal));
}

void tst_grid_splitter::mouseEventsOnTheGapsEndInTheGrid()
{
    struct Parent : QWidget
    {
        int presses = 0;
        void mousePressEvent(QMouseEvent*) override { ++presses; }
    } parent;
    auto* grid = new CGridSplitter(&parent);
    parent.resize(60, 60);
    grid->resize(50, 50);
    parent.show();
    QTest::mousePress(grid, Qt::LeftButton, {}, {10, 10});
    QTest::mouseRelease(grid, Qt::LeftButton, {}, {10, 10});
    QCOMPARE(parent.presses, 0);
    QTest::mousePress(&parent, Qt::LeftButton, {}, {55, 55});
    QCOMPARE(parent.presses, 1);
}

void tst_grid_splitter::anyOtherDirectionMovesNothing()
{
    Grid g(100, 80);
    const QList<QRect> before = g.paneRects();
    for (const int direction : {0, 3}) {
        g.grid.moveSplitter(0, Qt::Orientation(direction), 5);
        QCOMPARE(g.paneRects(), before);
        QCOMPARE(QPoint(g.vertical->x(), g.horizontal->y()), QPoint(47, 37));
        QCOMPARE(g.cross->pos(), QPoint(47, 37));
    }
}

void tst_grid_splitter::aGapWithoutAHandleMovesItsPanesAlone_data()
{
    QTest::addColumn<int>("gap");
    QTest::addColumn<QList<QRect>>("panes");
    QTest::newRow("behind the last column")
        << 1 << QList<QRect>{{0, 0, 47, 37}, {52, 0, 87, 37}, {0, 42, 47, 37}, {52, 42, 87, 37}};
    QTest::newRow("before the first column")
        << -1 << QList<QRect>{{40, 0, 7, 37}, {52, 0, 47, 37}, {40, 42, 7, 37}, {52, 42, 47, 37}};
    QTest::newRow("nowhere") << 7 << Grid().paneRects();
}

// Only a handle's place is limited, so that a gap without one takes any way.
void tst_grid_splitter::aGapWithoutAHandleMovesItsPanesAlone()
{
    QFETCH(int, gap);
    QFETCH(QList<QRect>, panes);
    Grid g(100, 80);
    g.grid.moveSplitter(gap, Qt::Vertical, 40);
    QCOMPARE(g.paneRects(), panes);
    QCOMPARE(g.vertical->x(), 47);
    QCOMPARE(g.cross->pos(), QPoint(47, 37));
}

void tst_grid_splitter::aGridThatIsNotSquareSkipsTheMissingHandle()
{
    CGridSplitter grid(nullptr);
    grid.resize(100, 80);
    QList<QWidget*> panes;
    for (int i = 0; i < 3; ++i)
        panes << new QWidget;
    QCOMPARE(grid.setWidgets(panes, 1, 3), 0);
    QCOMPARE(panes.at(2)->geometry(), QRect(70, 0, 30, 80));
    // A vertical bar is looked for behind a horizontal one, so that these stay where they were made.
    const auto bars = grid.findChildren<CSplitterHandle*>();
    QCOMPARE(bars.size(), 2);
    for (const CSplitterHandle* bar : bars)
        QCOMPARE(bar->pos(), QPoint(0, 0));
}

void tst_grid_splitter::aFillDoesNotShowHiddenPanes()
{
    CGridSplitter grid(nullptr);
    grid.show();
    QList<QWidget*> panes;
    for (int i = 0; i < 4; ++i)
        panes << new QWidget;
    QCOMPARE(grid.setWidgets(panes, 2, 2), 0);
    for (QWidget* pane : qAsConst(panes))
        QVERIFY(!pane->isVisible());
}

void tst_grid_splitter::slotsStandInTheirOrder()
{
    const QMetaObject& meta = CGridSplitter::staticMetaObject;
    QByteArrayList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found << meta.method(i).methodSignature();
    QCOMPARE(found, (QByteArrayList{"snapToGrid()", "moveSplitter(int,Qt::Orientation,int)",
                                    "moveCrossSplitter(int,int,int)"}));
}

QTEST_MAIN(tst_grid_splitter)
#include "tst_grid_splitter.moc"
