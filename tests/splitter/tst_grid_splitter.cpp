#include "tests/splitter/MouseEvents.h"
#include "tests/splitter/ShownGrid.h"
#include "tests/support/PropertyDifferences.h"

#include <QPointer>
#include <QtTest>

#include <memory>

namespace {

// What no operation gives: rows and columns of all successful fills, and the numbers of the panes.
QPair<int, int> filledCounts(const CGridSplitter& grid);
QList<int> paneNumbers(const CGridSplitter& grid);

template <auto rows, auto columns, auto panes> struct GridFields
{
    friend QPair<int, int> filledCounts(const CGridSplitter& grid) { return {grid.*rows, grid.*columns}; }
    friend QList<int> paneNumbers(const CGridSplitter& grid) { return (grid.*panes).keys(); }
};
template struct GridFields<&CGridSplitter::rowCount, &CGridSplitter::columnCount, &CGridSplitter::panes>;

/// A pane that notes the sizes it is given.
struct SizeNotes : QWidget
{
    QList<QSize> sizes;
    void resizeEvent(QResizeEvent* event) override { sizes << event->size(); }
};

} // namespace

class TestGridSplitter : public QObject
{
    Q_OBJECT

private slots:
    void refusedListsLeaveTheGridAsItWas_data();
    void refusedListsLeaveTheGridAsItWas();
    void limitsOfADrag_data();
    void limitsOfADrag();
    void aDragMovesTheGapThroughAllRows();
    void aDragMovesTheGapThroughAllColumns();
    void theCrossMovesBothGaps();
    void theCrossMovesItsColumnFirst();
    void aBarThatIsAsideComesBack();
    void aRefusedWayDoesNotStopTheOther_data();
    void aRefusedWayDoesNotStopTheOther();
    void anUnknownCrossingIsIgnored();
    void aSecondFillDeletesTheFirst();
    void everyFillIsCounted();
    void panesAreNumberedFromZero();
    void theGridOwnsItsPanes();
    void theCrossLiesAboveTheBars();
    void mouseEventsOnTheGapsEndInTheGrid();
    void theGridIsAPlainFrame();
    void anyOtherDirectionMovesNothing();
    void aGapWithoutAHandleMovesItsPanesAlone_data();
    void aGapWithoutAHandleMovesItsPanesAlone();
    void aFillDoesNotShowHiddenPanes();
    void slotsAreInTheirOrder();
};

void TestGridSplitter::refusedListsLeaveTheGridAsItWas_data()
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

void TestGridSplitter::refusedListsLeaveTheGridAsItWas()
{
    QFETCH(int, count);
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(int, result);
    ShownGrid g;
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

void TestGridSplitter::limitsOfADrag_data()
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

void TestGridSplitter::limitsOfADrag()
{
    QFETCH(bool, vertical);
    QFETCH(int, target);
    QFETCH(bool, accepted);
    ShownGrid g(100, 80);
    const QList<QRect> before = g.paneRects();
    QWidget* handle = vertical ? g.vertical : g.horizontal;
    const int start = vertical ? handle->x() : handle->y();
    drag(handle, vertical ? QPoint(target - start, 0) : QPoint(0, target - start));
    QCOMPARE(vertical ? handle->x() : handle->y(), accepted ? target : start);
    QCOMPARE(g.paneRects() == before, !accepted);
}

void TestGridSplitter::aDragMovesTheGapThroughAllRows()
{
    ShownGrid g(100, 80);
    drag(g.vertical, {10, 4});
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 57, 37}, {62, 0, 37, 37}, {0, 42, 57, 37}, {62, 42, 37, 37}}));
    QCOMPARE(g.vertical->geometry(), QRect(57, 0, 5, 80));
    QCOMPARE(g.horizontal->geometry(), QRect(0, 37, 100, 5));
    QCOMPARE(g.cross->pos(), QPoint(57, 37));
}

void TestGridSplitter::aDragMovesTheGapThroughAllColumns()
{
    ShownGrid g(100, 80);
    drag(g.horizontal, {4, -10});
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 47, 27}, {52, 0, 47, 27}, {0, 32, 47, 47}, {52, 32, 47, 47}}));
    QCOMPARE(g.horizontal->geometry(), QRect(0, 27, 100, 5));
    QCOMPARE(g.vertical->geometry(), QRect(47, 0, 5, 80));
    QCOMPARE(g.cross->pos(), QPoint(47, 27));
}

void TestGridSplitter::theCrossMovesBothGaps()
{
    ShownGrid g(100, 80);
    drag(g.cross, {5, 6});
    QCOMPARE(g.paneRects(),
             (QList<QRect>{{0, 0, 52, 43}, {57, 0, 42, 43}, {0, 48, 52, 31}, {57, 48, 42, 31}}));
    QCOMPARE(g.cross->pos(), QPoint(52, 43));
    QCOMPARE(g.vertical->x(), 52);
    QCOMPARE(g.horizontal->y(), 43);
}

void TestGridSplitter::theCrossMovesItsColumnFirst()
{
    CGridSplitter grid(nullptr);
    auto* pane = new SizeNotes;
    grid.resize(100, 80);
    QCOMPARE(grid.setWidgets({pane, new QWidget, new QWidget, new QWidget}, 2, 2), 0);
    pane->show();
    grid.show();
    pane->sizes.clear();
    grid.moveCrossSplitter(0, 5, 6);
    QCOMPARE(pane->sizes, (QList<QSize>{{52, 37}, {52, 43}}));
}

void TestGridSplitter::aBarThatIsAsideComesBack()
{
    ShownGrid g(100, 80);
    g.vertical->move(47, 3);
    g.horizontal->move(4, 37);
    g.grid.moveCrossSplitter(0, 5, 6);
    QCOMPARE(g.vertical->pos(), QPoint(52, 0));
    QCOMPARE(g.horizontal->pos(), QPoint(0, 43));
}

void TestGridSplitter::aRefusedWayDoesNotStopTheOther_data()
{
    QTest::addColumn<QPoint>("way");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("x refused, y moves") << QPoint(60, 6) << QPoint(47, 43);
    QTest::newRow("y refused, x moves") << QPoint(6, -60) << QPoint(53, 37);
    QTest::newRow("both refused") << QPoint(-60, 60) << QPoint(47, 37);
}

void TestGridSplitter::aRefusedWayDoesNotStopTheOther()
{
    QFETCH(QPoint, way);
    QFETCH(QPoint, place);
    ShownGrid g(100, 80);
    drag(g.cross, way);
    QCOMPARE(g.cross->pos(), place);
    QCOMPARE(QPoint(g.vertical->x(), g.horizontal->y()), place);
}

void TestGridSplitter::anUnknownCrossingIsIgnored()
{
    ShownGrid g(100, 80);
    const QList<QRect> before = g.paneRects();
    g.grid.moveCrossSplitter(7, 5, 5);
    QCOMPARE(g.paneRects(), before);
    QCOMPARE(g.vertical->x(), 47);
}

void TestGridSplitter::aSecondFillDeletesTheFirst()
{
    ShownGrid g;
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

void TestGridSplitter::everyFillIsCounted()
{
    CGridSplitter grid(nullptr);
    QCOMPARE(filledCounts(grid), qMakePair(0, 0));
    const auto fill = [&grid](int rows, int columns) {
        QList<QWidget*> panes;
        for (int i = 0; i < rows * columns; ++i)
            panes << new QWidget;
        QCOMPARE(grid.setWidgets(panes, rows, columns), 0);
    };
    fill(2, 3);
    QCOMPARE(filledCounts(grid), qMakePair(2, 3));
    fill(4, 1);
    QCOMPARE(filledCounts(grid), qMakePair(6, 4));
    QCOMPARE(grid.setWidgets({}, 2, 2), -2);
    QCOMPARE(filledCounts(grid), qMakePair(6, 4));
}

void TestGridSplitter::panesAreNumberedFromZero()
{
    const ShownGrid g;
    QCOMPARE(paneNumbers(g.grid), (QList<int>{0, 1, 2, 3}));
}

void TestGridSplitter::theGridOwnsItsPanes()
{
    QPointer<QWidget> pane;
    {
        const ShownGrid g;
        pane = g.panes.at(2);
        QCOMPARE(pane->parentWidget(), &g.grid);
    }
    QVERIFY(!pane);
}

void TestGridSplitter::theCrossLiesAboveTheBars()
{
    const ShownGrid g(100, 80);
    QCOMPARE(g.grid.childAt(49, 39), static_cast<QWidget*>(g.cross));
    QCOMPARE(g.grid.childAt(49, 10), static_cast<QWidget*>(g.vertical));
    QCOMPARE(g.grid.childAt(10, 39), static_cast<QWidget*>(g.horizontal));
}

void TestGridSplitter::mouseEventsOnTheGapsEndInTheGrid()
{
    MouseNotes parent;
    CGridSplitter grid(&parent);
    for (const QEvent::Type type : MouseTypes)
        sendMouse(grid, type, {10, 10});
    QCOMPARE(parent.seen, std::vector<QEvent::Type>());
    // Without a grid the parent gets all of them.
    for (const QEvent::Type type : MouseTypes)
        sendMouse(parent, type, {10, 10});
    QCOMPARE(parent.seen, std::vector<QEvent::Type>(std::begin(MouseTypes), std::end(MouseTypes)));
}

void TestGridSplitter::theGridIsAPlainFrame()
{
    QWidget parent;
    const CGridSplitter grid(&parent);
    const QFrame plain(&parent);
    QCOMPARE(propertyDifferences(&grid, &plain), QStringList());
    QCOMPARE(grid.windowFlags(), plain.windowFlags());
}

void TestGridSplitter::anyOtherDirectionMovesNothing()
{
    ShownGrid g(100, 80);
    const QList<QRect> before = g.paneRects();
    for (const int direction : {0, 3}) {
        g.grid.moveSplitter(0, Qt::Orientation(direction), 5);
        QCOMPARE(g.paneRects(), before);
        QCOMPARE(QPoint(g.vertical->x(), g.horizontal->y()), QPoint(47, 37));
        QCOMPARE(g.cross->pos(), QPoint(47, 37));
    }
}

void TestGridSplitter::aGapWithoutAHandleMovesItsPanesAlone_data()
{
    QTest::addColumn<int>("gap");
    QTest::addColumn<QList<QRect>>("panes");
    QTest::newRow("after the last column")
        << 1 << QList<QRect>{{0, 0, 47, 37}, {52, 0, 87, 37}, {0, 42, 47, 37}, {52, 42, 87, 37}};
    QTest::newRow("before the first column")
        << -1 << QList<QRect>{{40, 0, 7, 37}, {52, 0, 47, 37}, {40, 42, 7, 37}, {52, 42, 47, 37}};
    QTest::newRow("nowhere") << 7 << ShownGrid().paneRects();
}

// Only a handle's place is limited, so that a gap without one takes any way.
void TestGridSplitter::aGapWithoutAHandleMovesItsPanesAlone()
{
    QFETCH(int, gap);
    QFETCH(QList<QRect>, panes);
    ShownGrid g(100, 80);
    g.grid.moveSplitter(gap, Qt::Vertical, 40);
    QCOMPARE(g.paneRects(), panes);
    QCOMPARE(g.vertical->x(), 47);
    QCOMPARE(g.cross->pos(), QPoint(47, 37));
}

void TestGridSplitter::aFillDoesNotShowHiddenPanes()
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

void TestGridSplitter::slotsAreInTheirOrder()
{
    const QMetaObject& meta = CGridSplitter::staticMetaObject;
    QByteArrayList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found << meta.method(i).methodSignature();
    QCOMPARE(found, (QByteArrayList{"snapToGrid()", "moveSplitter(int,Qt::Orientation,int)",
                                    "moveCrossSplitter(int,int,int)"}));
}

QTEST_MAIN(TestGridSplitter)
#include "tst_grid_splitter.moc"
