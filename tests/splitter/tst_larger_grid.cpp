#include "splitter/CCrossSplitterHandle.h"
#include "splitter/CGridSplitter.h"
#include "splitter/CSplitterHandle.h"

#include <QtTest>

namespace {

constexpr int Side = 3;

/// A shown grid of 3 x 3 panes. Gaps begin at x 35 and 75 and at y 30 and 65; panes are 35 x 30.
struct LargerGrid
{
    LargerGrid()
        : grid(nullptr)
    {
        for (int i = 0; i < Side * Side; ++i)
            panes << new QWidget;
        grid.resize(115, 100);
        result = grid.setWidgets(panes, Side, Side);
        grid.show();
        for (auto* bar : grid.findChildren<CSplitterHandle*>())
            (bar->barOrientation() == Qt::Vertical ? verticals : horizontals) << bar;
        crosses = grid.findChildren<CCrossSplitterHandle*>();
    }

    /// Left edges of the vertical bars, then upper edges of the horizontal ones.
    QList<int> gaps() const
    {
        QList<int> places;
        for (const CSplitterHandle* bar : verticals)
            places << bar->x();
        for (const CSplitterHandle* bar : horizontals)
            places << bar->y();
        return places;
    }

    QList<QPoint> crossings() const
    {
        QList<QPoint> places;
        for (const CCrossSplitterHandle* cross : crosses)
            places << cross->pos();
        return places;
    }

    CGridSplitter grid;
    QList<QWidget*> panes;
    QList<CSplitterHandle*> verticals;
    QList<CSplitterHandle*> horizontals;
    QList<CCrossSplitterHandle*> crosses;
    int result = -3;
};

/// Presses a handle near its corner and moves by a way in pixels.
void drag(QWidget* handle, QPoint way)
{
    QEvent enter(QEvent::Enter);
    QCoreApplication::sendEvent(handle, &enter);
    const QPoint start(1, 1);
    QTest::mousePress(handle, Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, start + way, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, {}, start);
}

} // namespace

/// Grids of more than one gap each way, where numbers of gaps and crossings can be told apart.
class TestLargerGrid : public QObject
{
    Q_OBJECT

private slots:
    void panesAndGapsAreEqual();
    void childrenAreInTheirStackingOrder();
    void eachBarMovesItsOwnGap_data();
    void eachBarMovesItsOwnGap();
    void aBarGoesOverItsNeighbour();
    void limitsAreTheOuterEdges_data();
    void limitsAreTheOuterEdges();
    void crossingNumbersHaveHoles_data();
    void crossingNumbersHaveHoles();
    void eachCrossMovesItsOwnGaps_data();
    void eachCrossMovesItsOwnGaps();
};

void TestLargerGrid::panesAndGapsAreEqual()
{
    const LargerGrid g;
    QCOMPARE(g.result, 0);
    for (int i = 0; i < g.panes.size(); ++i)
        QCOMPARE(g.panes.at(i)->geometry(), QRect(40 * (i % Side), 35 * (i / Side), 35, 30));
    QCOMPARE(g.gaps(), (QList<int>{35, 75, 30, 65}));
    QCOMPARE(g.crossings(), (QList<QPoint>{{35, 30}, {75, 30}, {35, 65}, {75, 65}}));
    for (const CSplitterHandle* bar : g.verticals)
        QCOMPARE(bar->size(), QSize(5, 100));
    for (const CSplitterHandle* bar : g.horizontals)
        QCOMPARE(bar->size(), QSize(115, 5));
}

// Later children lie above earlier ones.
void TestLargerGrid::childrenAreInTheirStackingOrder()
{
    const LargerGrid g;
    QObjectList expected;
    for (CSplitterHandle* bar : g.verticals + g.horizontals)
        expected << bar;
    for (CCrossSplitterHandle* cross : g.crosses)
        expected << cross;
    for (QWidget* pane : g.panes)
        expected << pane;
    QCOMPARE(g.grid.children(), expected);
}

void TestLargerGrid::eachBarMovesItsOwnGap_data()
{
    QTest::addColumn<int>("bar");
    QTest::addColumn<QList<int>>("gaps");
    QTest::addColumn<QList<QPoint>>("crossings");
    QTest::newRow("left bar") << 0 << QList<int>{43, 75, 30, 65}
                              << QList<QPoint>{{43, 30}, {75, 30}, {43, 65}, {75, 65}};
    QTest::newRow("right bar") << 1 << QList<int>{35, 83, 30, 65}
                               << QList<QPoint>{{35, 30}, {83, 30}, {35, 65}, {83, 65}};
    QTest::newRow("upper bar") << 2 << QList<int>{35, 75, 36, 65}
                               << QList<QPoint>{{35, 36}, {75, 36}, {35, 65}, {75, 65}};
    QTest::newRow("lower bar") << 3 << QList<int>{35, 75, 30, 71}
                               << QList<QPoint>{{35, 30}, {75, 30}, {35, 71}, {75, 71}};
}

void TestLargerGrid::eachBarMovesItsOwnGap()
{
    QFETCH(int, bar);
    QFETCH(QList<int>, gaps);
    QFETCH(QList<QPoint>, crossings);
    const LargerGrid g;
    drag((g.verticals + g.horizontals).at(bar), {8, 6});
    QCOMPARE(g.gaps(), gaps);
    QCOMPARE(g.crossings(), crossings);
    for (int i = 0; i < g.panes.size(); ++i) {
        const int column = i % Side, row = i / Side;
        const int left = column == 0 ? 0 : gaps.at(column - 1) + 5;
        const int top = row == 0 ? 0 : gaps.at(row + 1) + 5;
        const int right = column == 2 ? 115 : gaps.at(column);
        const int bottom = row == 2 ? 100 : gaps.at(row + 2);
        QCOMPARE(g.panes.at(i)->geometry(), QRect(left, top, right - left, bottom - top));
    }
}

void TestLargerGrid::aBarGoesOverItsNeighbour()
{
    const LargerGrid g;
    drag(g.verticals.at(0), {60, 0});
    QCOMPARE(g.gaps(), (QList<int>{95, 75, 30, 65}));
    QCOMPARE(g.panes.at(0)->geometry(), QRect(0, 0, 95, 30));
    // Nothing is left of the pane between the bars, and the one after its neighbour stays.
    QCOMPARE(g.panes.at(1)->pos(), QPoint(100, 0));
    QVERIFY(g.panes.at(1)->width() <= 0);
    QCOMPARE(g.panes.at(2)->geometry(), QRect(80, 0, 35, 30));

    drag(g.horizontals.at(1), {0, -50});
    QCOMPARE(g.gaps(), (QList<int>{95, 75, 30, 15}));
}

void TestLargerGrid::limitsAreTheOuterEdges_data()
{
    QTest::addColumn<int>("bar");
    QTest::addColumn<int>("target");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("left bar to x 108") << 0 << 108 << true;
    QTest::newRow("left bar to x 109") << 0 << 109 << false;
    QTest::newRow("right bar to x 2") << 1 << 2 << true;
    QTest::newRow("right bar to x 1") << 1 << 1 << false;
    QTest::newRow("upper bar to y 93") << 2 << 93 << true;
    QTest::newRow("upper bar to y 94") << 2 << 94 << false;
    QTest::newRow("lower bar to y 2") << 3 << 2 << true;
    QTest::newRow("lower bar to y 1") << 3 << 1 << false;
}

void TestLargerGrid::limitsAreTheOuterEdges()
{
    QFETCH(int, bar);
    QFETCH(int, target);
    QFETCH(bool, accepted);
    const LargerGrid g;
    const QList<int> before = g.gaps();
    QList<int> after = before;
    if (accepted)
        after[bar] = target;
    const int way = target - before.at(bar);
    drag((g.verticals + g.horizontals).at(bar), {way, way});
    QCOMPARE(g.gaps(), after);
}

void TestLargerGrid::crossingNumbersHaveHoles_data()
{
    QTest::addColumn<int>("num");
    QTest::addColumn<QList<int>>("gaps");
    const QList<int> still{35, 75, 30, 65};
    QTest::newRow("0: left, above") << 0 << QList<int>{38, 75, 34, 65};
    QTest::newRow("1: right, above") << 1 << QList<int>{35, 78, 34, 65};
    QTest::newRow("2: a hole") << 2 << still;
    QTest::newRow("3: left, below") << 3 << QList<int>{38, 75, 30, 69};
    QTest::newRow("4: right, below") << 4 << QList<int>{35, 78, 30, 69};
    QTest::newRow("5: none") << 5 << still;
    QTest::newRow("-1: none") << -1 << still;
}

void TestLargerGrid::crossingNumbersHaveHoles()
{
    QFETCH(int, num);
    QFETCH(QList<int>, gaps);
    LargerGrid g;
    g.grid.moveCrossSplitter(num, 3, 4);
    QCOMPARE(g.gaps(), gaps);
}

void TestLargerGrid::eachCrossMovesItsOwnGaps_data()
{
    QTest::addColumn<int>("cross");
    QTest::addColumn<int>("num");
    QTest::addColumn<QList<int>>("gaps");
    QTest::newRow("left, above") << 0 << 0 << QList<int>{38, 75, 34, 65};
    QTest::newRow("right, above") << 1 << 1 << QList<int>{35, 78, 34, 65};
    QTest::newRow("left, below") << 2 << 3 << QList<int>{38, 75, 30, 69};
    QTest::newRow("right, below") << 3 << 4 << QList<int>{35, 78, 30, 69};
}

void TestLargerGrid::eachCrossMovesItsOwnGaps()
{
    QFETCH(int, cross);
    QFETCH(int, num);
    QFETCH(QList<int>, gaps);
    const LargerGrid g;
    QSignalSpy moved(g.crosses.at(cross), SIGNAL(handleMoved(int, int, int)));
    drag(g.crosses.at(cross), {3, 4});
    QCOMPARE(moved.count(), 1);
    QCOMPARE(moved.at(0), (QVariantList{num, 3, 4}));
    QCOMPARE(g.gaps(), gaps);
}

QTEST_MAIN(TestLargerGrid)
#include "tst_larger_grid.moc"
