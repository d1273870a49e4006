#include "tests/reference/RunReference.h"
#include "tests/support/DialogProbe.h"

#include <QCheckBox>
#include <QTest>

#include <cstring>
#include <random>

namespace {

/// Empty when equal, else the first difference with both values.
QString gainDifference(const char* what, const std::list<double>& actual, const std::vector<double>& expected)
{
    if (actual.size() != expected.size())
        return QStringLiteral("%1: %2 entries, expected %3")
            .arg(what)
            .arg(actual.size())
            .arg(expected.size());
    int place = 0;
    for (const double gain : actual) {
        const double wanted = expected[static_cast<std::size_t>(place)];
        const bool bothNoNumber = gain != gain && wanted != wanted;
        if (!bothNoNumber && gain != wanted)
            return QStringLiteral("%1[%2]: %3, expected %4").arg(what).arg(place).arg(gain).arg(wanted);
        ++place;
    }
    return QString();
}

/// Of an array that the dialog holds.
template <typename Item>
QString lineDifference(const char* what, const Item* actual, const std::vector<Item>& expected)
{
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (actual[i] != expected[i])
            return QStringLiteral("%1[%2]: %3, expected %4").arg(what).arg(i).arg(actual[i]).arg(expected[i]);
    }
    return QString();
}

QString difference(const char* what, const QVector<int>& actual, const QVector<int>& expected)
{
    for (int i = 0; i < expected.size(); ++i) {
        if (actual[i] != expected[i])
            return QStringLiteral("%1[%2]: %3, expected %4").arg(what).arg(i).arg(actual[i]).arg(expected[i]);
    }
    return QString();
}

QString cellDifference(const char* what, const std::uint16_t* cells, std::int32_t step,
                       const reference::Image& expected)
{
    if (step != expected.step)
        return QStringLiteral("%1: step %2, expected %3").arg(what).arg(step).arg(expected.step);
    reference::Image asCells = expected;
    asCells.depth = 16;
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const unsigned actual = cells[y * step / 2 + x];
            if (actual != asCells.pixel(x, y))
                return QStringLiteral("%1(%2, %3): %4, expected %5")
                    .arg(what)
                    .arg(x)
                    .arg(y)
                    .arg(actual)
                    .arg(asCells.pixel(x, y));
        }
    }
    return QString();
}

TestFrame randomFrame(std::mt19937& random, int width, int height, int depth, int step)
{
    const int kind = static_cast<int>(random() % 4);
    const unsigned top = (1U << depth) - 1;
    return TestFrame(
        width, height, depth,
        [&](int x, int) -> unsigned {
            if (kind == 0)
                return static_cast<unsigned>(random()) & top; // anything
            if (kind == 1)
                return x % 3 == 1 ? 0U : top; // black columns and saturated ones
            if (kind == 2)
                return top - static_cast<unsigned>(random() % 3);         // around the limit
            return top / 2 + static_cast<unsigned>(random() % (top / 8)); // a flat
        },
        step);
}

} // namespace

/// Whole runs against the reference, on records of every shape that a converter may deliver.
class TestPipeline : public QObject
{
    Q_OBJECT

private slots:
    void membersEqualTheReference_data();
    void membersEqualTheReference();
    void unpaddedOddWidthSkewsTheRows();
};

void TestPipeline::membersEqualTheReference_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("spare");
    for (const int depth : {8, 10, 12, 16}) {
        QTest::addRow("%d bits, rows padded to 4 bytes", depth) << depth << -1;
        QTest::addRow("%d bits, rows without padding", depth) << depth << 0;
        QTest::addRow("%d bits, one spare byte a row", depth) << depth << 1;
        QTest::addRow("%d bits, six spare bytes a row", depth) << depth << 6;
        QTest::addRow("%d bits, rows twice as long", depth) << depth << -2;
    }
}

void TestPipeline::membersEqualTheReference()
{
    QFETCH(int, depth);
    QFETCH(int, spare);
    std::mt19937 random(static_cast<unsigned>(depth * 100 + spare));
    const reference::Setting settings[] = {{true, 1.0, false, false, 0},   {true, 1.0, true, false, 500},
                                           {false, 1.0, true, true, 3},    {true, 0.5, false, false, 20},
                                           {true, -1.25, true, false, 40}, {true, 0.0, false, true, 0},
                                           {true, 20.0, false, true, 100}, {false, 3.0, false, false, 10}};
    DialogProbe d;
    for (int round = 0; round < 200; ++round) {
        const int width = 1 + static_cast<int>(random() % 19);
        const int height = 1 + static_cast<int>(random() % 13);
        const int tight = width * (depth == 8 ? 1 : 2);
        const int step = spare == -1 ? (tight + 3) / 4 * 4 : spare == -2 ? 2 * tight : tight + spare;
        const TestFrame taken = randomFrame(random, width, height, depth, step);
        const reference::Image frame{taken.bytes, step, width, height, depth};
        const reference::Setting& setting = settings[round % 8];

        d.ui.chBShowY->setChecked(setting.showRows);
        d.take(taken);
        d.m_normalize = setting.normalize;
        d.m_normalizeValue = setting.value;
        d.m_pairSmoothing = setting.pairs;
        d.m_histogramPeak = setting.peak;
        QVERIFY(d.RunCorrection());
        const reference::Run expected(frame, setting);

        QStringList differences{
            gainDifference("column gain", d.m_columnGains, expected.columns.gains),
            lineDifference("column mean", d.m_columnMean, expected.columns.means),
            lineDifference("row mean", d.m_rowMean, expected.rowsOfFrame.means),
            cellDifference("flatX", d.m_flatX, d.m_flatXStep, expected.flatX),
            gainDifference("row gain", d.m_rowGains, expected.rows.gains),
            cellDifference("flatY", d.m_flatY, d.m_flatYStep, expected.flatY),
            lineDifference("flat column mean", d.m_flatColumnMean, expected.flatColumnMeans),
            lineDifference("flat row mean", d.m_flatRowMean, expected.flatRowMeans),
            lineDifference("column line", d.m_columnLine, expected.columns.means),
            lineDifference("row line", d.m_rowLine, expected.rowsOfFrame.means),
            lineDifference("flat column line", d.m_flatColumnLine, expected.flatColumnMeans),
            lineDifference("flat row line", d.m_flatRowLine, expected.flatRowMeans),
            lineDifference("bin", d.m_histogram, expected.bins),
            difference("levels, peak", {d.m_histogramLevels, d.m_histogramPeak},
                       {static_cast<int>(expected.bins.size()), expected.peak}),
            difference("extremes", {d.m_imageMin, d.m_imageMax, d.m_flatMin, d.m_flatMax},
                       {expected.ofImage.least, expected.ofImage.greatest, expected.ofFlat.least,
                        expected.ofFlat.greatest}),
            difference("ranges", {d.m_rangeXMin, d.m_rangeXMax, d.m_rangeYMin, d.m_rangeYMax},
                       {0, width, expected.range.least, expected.range.greatest})};
        differences.removeAll(QString());
        QVERIFY2(differences.isEmpty(), qPrintable(QStringLiteral("%1x%2, step %3, round %4: %5")
                                                       .arg(width)
                                                       .arg(height)
                                                       .arg(step)
                                                       .arg(round)
                                                       .arg(differences.join(QStringLiteral("; ")))));
    }
}

void TestPipeline::unpaddedOddWidthSkewsTheRows()
{
    // Three pixels a row in 6 bytes, while the working image has rows of 8: each later row starts one cell
    // further on, and the last cells are those that the frame does not fill.
    TestFrame delivered(3, 3, 12, [](int x, int y) { return static_cast<unsigned>(100 * (y + 1) + x); });
    DialogProbe d;
    d.take(delivered);
    d.m_columnGains = {1.0, 1.0, 1.0};
    QVERIFY(d.ApplyColumnGains(true));
    QCOMPARE(d.m_flatXStep, 8);
    const QVector<int> cells(d.m_flatX, d.m_flatX + 12);
    QCOMPARE(cells, QVector<int>({100, 101, 102, 200, 201, 202, 300, 301, 302, 0, 0, 0}));
}

QTEST_MAIN(TestPipeline)
#include "tst_pipeline.moc"
