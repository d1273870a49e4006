#include "tests/dialog/DialogData.h"
#include "tests/support/DialogProbe.h"

#include <QTest>

#include <utility>

/// Where the lines that the plots draw come from.
class TestProfileLines : public QObject
{
    Q_OBJECT

private slots:
    void linesAreCopiesOfTheMeans();
    void linesOfAChosenRowAndColumn();
    void linesOfTheResultWalkRowsAndColumnsByStepsOfTheirOwn();
    void aColumnOfTheResultAloneTakesARowToo();
    void unknownPassIsRefused();
    void secondPassOfLinesNeedsTheResult();
    void eachSelectorOfTheFrameIsIndependent_data();
    void eachSelectorOfTheFrameIsIndependent();
};

void TestProfileLines::linesAreCopiesOfTheMeans()
{
    DialogProbe d;
    d.take(TestFrame(5, 3, 12, [](int x, int y) { return static_cast<unsigned>(100 + 40 * x + 9 * y); }));
    QVERIFY(d.RunCorrection());
    QCOMPARE(items(d.m_columnLine, 5), items(d.m_columnMean, 5));
    QCOMPARE(items(d.m_rowLine, 3), items(d.m_rowMean, 3));
    QCOMPARE(items(d.m_flatColumnLine, 5), items(d.m_flatColumnMean, 5));
    QCOMPARE(items(d.m_flatRowLine, 3), items(d.m_flatRowMean, 3));
    QCOMPARE(d.m_columnLine[0], std::uint16_t(109));
    QVERIFY(d.m_columnLine != d.m_columnMean);
}

void TestProfileLines::linesOfAChosenRowAndColumn()
{
    DialogProbe d;
    d.take(TestFrame(4, 3, 12, [](int x, int y) { return static_cast<unsigned>(100 + 10 * x + y); }));
    QVERIFY(d.RunCorrection());
    QVERIFY(d.TakeProfileLines(0, 2, 3));
    QCOMPARE(items(d.m_columnLine, 4), QVector<int>({102, 112, 122, 132}));
    QCOMPARE(items(d.m_rowLine, 3), QVector<int>({130, 131, 132}));
    QVERIFY(d.TakeProfileLines(1, 1, 2));
    QCOMPARE(items(d.m_flatColumnLine, 4), items(d.m_flatY + 4, 4));
    QCOMPARE(items(d.m_flatRowLine, 3), QVector<int>({d.m_flatY[2], d.m_flatY[6], d.m_flatY[10]}));
}

void TestProfileLines::linesOfTheResultWalkRowsAndColumnsByStepsOfTheirOwn()
{
    DialogProbe d;
    d.take(TestFrame(4, 3, 12, [](int x, int y) { return static_cast<unsigned>(100 + 10 * x + y); }));
    QVERIFY(d.RunCorrection());
    const QVector<int> cells = items(d.m_flatY, 12);
    // A row by the step of the column pass, a column by that of the row pass.
    d.m_flatXStep = 4;
    QVERIFY(d.TakeProfileLines(1, 2, 1));
    QCOMPARE(items(d.m_flatColumnLine, 4), cells.mid(4, 4));
    QCOMPARE(items(d.m_flatRowLine, 3), QVector<int>({cells[1], cells[5], cells[9]}));
    QVERIFY(cells[4] != cells[8] && cells[5] != cells[3]);
}

/// The first line is then the row of that number, and row -1 lies before the image: callers choose both or
/// neither.
void TestProfileLines::aColumnOfTheResultAloneTakesARowToo()
{
    DialogProbe d;
    d.take(TestFrame::even(2, 2, 12, 100));
    QVERIFY(d.RunCorrection());
    QCOMPARE(d.m_flatXStep, 4);
    std::uint16_t rows[] = {11, 12, 21, 22, 31, 32};
    std::uint16_t* const own = std::exchange(d.m_flatY, rows + 2);
    const bool done = d.TakeProfileLines(1, -1, 1);
    d.m_flatY = own;
    QVERIFY(done);
    QCOMPARE(items(d.m_flatColumnLine, 2), QVector<int>({11, 12}));
    QCOMPARE(items(d.m_flatRowLine, 2), QVector<int>({22, 32}));
}

void TestProfileLines::unknownPassIsRefused()
{
    DialogProbe d;
    d.take(TestFrame::even(2, 2, 12, 100));
    QVERIFY(d.RunCorrection());
    QVERIFY(!d.TakeProfileLines(2, -1, -1));
    QVERIFY(!d.TakeProfileLines(-1, -1, -1));
}

void TestProfileLines::secondPassOfLinesNeedsTheResult()
{
    DialogProbe d;
    d.take(TestFrame::even(3, 2, 12, 100));
    QVERIFY(d.ComputeColumnGains());
    QVERIFY(d.ApplyColumnGains(true));
    QVERIFY(d.m_flatX && !d.m_flatY);
    QVERIFY(!d.TakeProfileLines(1, -1, -1));
    QVERIFY(!d.m_flatColumnLine && !d.m_flatRowLine);
    QVERIFY(d.TakeProfileLines(0, -1, -1));
}

void TestProfileLines::eachSelectorOfTheFrameIsIndependent_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QVector<int>>("columnLine");
    QTest::addColumn<QVector<int>>("rowLine");
    QTest::newRow("both means") << -1 << -1 << QVector<int>({101, 111, 121}) << QVector<int>({110, 111, 112});
    QTest::newRow("a row, and the means of the rows")
        << 2 << -1 << QVector<int>({102, 112, 122}) << QVector<int>({110, 111, 112});
    QTest::newRow("a column, and the means of the columns")
        << -1 << 0 << QVector<int>({101, 111, 121}) << QVector<int>({100, 101, 102});
}

void TestProfileLines::eachSelectorOfTheFrameIsIndependent()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QVector<int>, columnLine);
    QFETCH(QVector<int>, rowLine);
    DialogProbe d;
    d.take(TestFrame(3, 3, 12, [](int x, int y) { return static_cast<unsigned>(100 + 10 * x + y); }));
    QVERIFY(d.ComputeColumnGains());
    QVERIFY(d.TakeProfileLines(0, row, column));
    QCOMPARE(items(d.m_columnLine, 3), columnLine);
    QCOMPARE(items(d.m_rowLine, 3), rowLine);
}

QTEST_MAIN(TestProfileLines)
#include "tst_profile_lines.moc"
