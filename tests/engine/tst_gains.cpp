#include "engine/Gains.h"
#include "tests/engine/EngineTesting.h"

#include <QtTest>

#include <cmath>

using Pixels = QVector<int>;
using Gains = QVector<double>;

namespace {

/// The pixels as a block of the depth, rows padded by three bytes.
enginetest::Block blockOf(const Pixels& pixels, int width, int depth)
{
    const int bytesPerPixel = depth == 8 ? 1 : 2;
    enginetest::Block block(width, pixels.size() / width, width * bytesPerPixel + 3, bytesPerPixel, 1, 0xA5);
    for (int i = 0; i < pixels.size(); ++i) {
        const int x = i % width;
        const int y = i / width;
        if (depth == 8)
            block.storage[block.at(x, y, 1)] = static_cast<std::uint8_t>(pixels[i]);
        else
            block.setWord(x, y, pixels[i]);
    }
    return block;
}

QString describe(const std::list<double>& actual, const Gains& expected)
{
    if (static_cast<int>(actual.size()) != expected.size())
        return QString("%1 gains instead of %2").arg(actual.size()).arg(expected.size());
    int place = 0;
    for (const double gain : actual) {
        const double wanted = expected[place];
        if (!(gain == wanted || (std::isnan(gain) && std::isnan(wanted))))
            return QString("gain %1: expected %2, actual %3").arg(place).arg(wanted).arg(gain);
        ++place;
    }
    return QString();
}

void addRules()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<Pixels>("pixels");
    QTest::addColumn<bool>("normalize");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("pairs");
    QTest::addColumn<Gains>("gains");
}

} // namespace

class TestGains : public QObject
{
    Q_OBJECT

private slots:
    void columnGainsFollowTheRule_data();
    void columnGainsFollowTheRule();
    void rowGainsFollowTheRule_data();
    void rowGainsFollowTheRule();
    void meansAreStoredTruncated();
    void otherDepthsHaveNoGainsAndNoMeans_data();
    void otherDepthsHaveNoGainsAndNoMeans();
    void rowGainsReadCellsWhateverTheDepth();
    void emptyFramesGiveNoNumbers_data();
    void emptyFramesGiveNoNumbers();
};

void TestGains::columnGainsFollowTheRule_data()
{
    addRules();
    const double nan = qQNaN();
    QTest::newRow("each column is lifted to the brightest")
        << 3 << Pixels{100, 200, 50, 100, 200, 50} << true << 1.0 << false << Gains{2.0, 1.0, 4.0};
    QTest::newRow("a value of 0.5 aims at half the peak")
        << 3 << Pixels{100, 200, 50} << true << 0.5 << false << Gains{1.0, 0.5, 2.0};
    QTest::newRow("without normalising the mean of the means is the target")
        << 2 << Pixels{50, 150} << false << 7.0 << false << Gains{2.0, 100.0 / 150.0};
    QTest::newRow("one row: each column mean is the pixel")
        << 2 << Pixels{10, 40} << true << 1.0 << false << Gains{4.0, 1.0};
    QTest::newRow("one column without normalising is 1.0")
        << 1 << Pixels{3, 9, 77} << false << 1.0 << false << Gains{1.0};
    QTest::newRow("a black column is infinite")
        << 2 << Pixels{0, 8, 0, 8} << true << 1.0 << false << Gains{qInf(), 1.0};
    QTest::newRow("a black column without normalising is infinite too")
        << 2 << Pixels{0, 8} << false << 1.0 << false << Gains{qInf(), 0.5};
    QTest::newRow("an all-black frame gives no numbers")
        << 2 << Pixels{0, 0, 0, 0} << true << 1.0 << false << Gains{nan, nan};
    QTest::newRow("an all-black frame without normalising likewise")
        << 2 << Pixels{0, 0} << false << 1.0 << false << Gains{nan, nan};
    QTest::newRow("a value of 0 gives 0, and no number in a black column")
        << 2 << Pixels{0, 8} << true << 0.0 << false << Gains{nan, 0.0};
    QTest::newRow("a negative value gives negative gains")
        << 2 << Pixels{4, 8} << true << -1.0 << false << Gains{-2.0, -1.0};
    QTest::newRow("a negative value over a black column")
        << 2 << Pixels{0, 8} << true << -1.0 << false << Gains{-qInf(), -1.0};
    QTest::newRow("pairs share their average, the peak is theirs")
        << 4 << Pixels{10, 30, 40, 40} << true << 1.0 << true << Gains{2.0, 2.0, 1.0, 1.0};
    QTest::newRow("with an odd width the last column keeps its own value")
        << 3 << Pixels{10, 30, 80} << true << 1.0 << true << Gains{4.0, 4.0, 1.0};
    QTest::newRow("a last column alone does not share the peak")
        << 3 << Pixels{10, 30, 5} << true << 1.0 << true << Gains{1.0, 1.0, 4.0};
    QTest::newRow("pairs leave the mean of the means")
        << 2 << Pixels{10, 30} << false << 1.0 << true << Gains{1.0, 1.0};
    QTest::newRow("pairs of one column") << 1 << Pixels{9} << true << 1.0 << true << Gains{1.0};
    // (peak x value) / mean: 3 x 0.1 is 0.30000000000000004, and that over 3 is not 0.1.
    QTest::newRow("multiplies first and divides last")
        << 1 << Pixels{3} << true << 0.1 << false << Gains{0.30000000000000004 / 3.0};
}

void TestGains::columnGainsFollowTheRule()
{
    QFETCH(int, width);
    QFETCH(Pixels, pixels);
    QFETCH(bool, normalize);
    QFETCH(double, value);
    QFETCH(bool, pairs);
    QFETCH(Gains, gains);
    for (const int depth : {8, 12, 16}) {
        enginetest::Block block = blockOf(pixels, width, depth);
        std::list<double> actual;
        std::vector<std::uint16_t> columns(static_cast<std::size_t>(width));
        std::vector<std::uint16_t> rows(static_cast<std::size_t>(block.height));
        zor::computeColumnGains({block.data(), block.step, width, block.height, depth},
                                {normalize, value, pairs}, actual, columns.data(), rows.data());
        VERIFY_SAME(describe(actual, gains));
    }
}

void TestGains::rowGainsFollowTheRule_data()
{
    addRules();
    const double nan = qQNaN();
    QTest::newRow("each row is lifted to the brightest")
        << 2 << Pixels{100, 300, 50, 50} << true << 1.0 << false << Gains{1.0, 4.0};
    QTest::newRow("a value of 0.5 aims at half the peak")
        << 1 << Pixels{100, 200} << true << 0.5 << false << Gains{1.0, 0.5};
    QTest::newRow("without normalising the mean of the means is the target")
        << 1 << Pixels{50, 150} << false << 7.0 << false << Gains{2.0, 100.0 / 150.0};
    QTest::newRow("one row without normalising is 1.0")
        << 3 << Pixels{3, 9, 77} << false << 1.0 << false << Gains{1.0};
    QTest::newRow("a black row is infinite")
        << 2 << Pixels{0, 0, 8, 8} << true << 1.0 << false << Gains{qInf(), 1.0};
    QTest::newRow("an all-black image gives no numbers")
        << 2 << Pixels{0, 0, 0, 0} << true << 1.0 << false << Gains{nan, nan};
    QTest::newRow("a negative value gives negative gains")
        << 1 << Pixels{4, 8} << true << -1.0 << false << Gains{-2.0, -1.0};
    QTest::newRow("pairs of rows, the last alone")
        << 1 << Pixels{10, 30, 80} << true << 1.0 << true << Gains{4.0, 4.0, 1.0};
    QTest::newRow("cells from bit 15 on are unsigned")
        << 1 << Pixels{65535, 13107} << true << 1.0 << false << Gains{1.0, 5.0};
}

void TestGains::rowGainsFollowTheRule()
{
    QFETCH(int, width);
    QFETCH(Pixels, pixels);
    QFETCH(bool, normalize);
    QFETCH(double, value);
    QFETCH(bool, pairs);
    QFETCH(Gains, gains);
    enginetest::Block block = blockOf(pixels, width, 16);
    std::list<double> actual;
    zor::computeRowGains({block.data(), block.step, width, block.height, 16}, {normalize, value, pairs},
                         actual);
    VERIFY_SAME(describe(actual, gains));
}

void TestGains::meansAreStoredTruncated()
{
    enginetest::Block block = blockOf({1, 65535, 2, 65535}, 2, 16);
    std::list<double> gains;
    std::uint16_t columns[2];
    std::uint16_t rows[2];
    zor::computeColumnGains({block.data(), block.step, 2, 2, 16}, {}, gains, columns, rows);
    QCOMPARE(int{columns[0]}, 1);
    QCOMPARE(int{columns[1]}, 65535);
    QCOMPARE(int{rows[0]}, 32768);
    QCOMPARE(int{rows[1]}, 32768);
    // The gains come from the exact means.
    QCOMPARE(gains.front(), 65535.0 / 1.5);
}

void TestGains::otherDepthsHaveNoGainsAndNoMeans_data()
{
    QTest::addColumn<int>("depth");
    for (const int depth : {0, 1, 2, 5, 7, 17, 24, 32})
        QTest::addRow("depth %d", depth) << depth;
}

/// Three columns and two rows, so that the two lengths are told apart.
void TestGains::otherDepthsHaveNoGainsAndNoMeans()
{
    QFETCH(int, depth);
    enginetest::Block block = blockOf({1, 2, 3, 4, 5, 6}, 3, 16);
    for (const std::uint16_t poison : {0xA5A5, 0x5A5A}) {
        std::list<double> gains;
        std::vector<std::uint16_t> columns(4, poison);
        std::vector<std::uint16_t> rows(3, poison);
        zor::computeColumnGains({block.data(), block.step, 3, 2, depth}, {}, gains, columns.data(),
                                rows.data());
        QVERIFY(gains.empty());
        QCOMPARE(columns, (std::vector<std::uint16_t>{0, 0, 0, poison}));
        QCOMPARE(rows, (std::vector<std::uint16_t>{0, 0, poison}));
    }
}

void TestGains::rowGainsReadCellsWhateverTheDepth()
{
    enginetest::Block block = blockOf({300, 300, 600, 600}, 2, 16);
    for (const int depth : {8, 10, 16, 24}) {
        std::list<double> gains;
        zor::computeRowGains({block.data(), block.step, 2, 2, depth}, {}, gains);
        VERIFY_SAME(describe(gains, Gains{2.0, 1.0}));
    }
}

void TestGains::emptyFramesGiveNoNumbers_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("normalize");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");
    QTest::newRow("no columns") << 0 << 3 << true << 0 << 3;
    QTest::newRow("no columns, to the mean") << 0 << 3 << false << 0 << 3;
    QTest::newRow("no rows") << 3 << 0 << true << 3 << 0;
    QTest::newRow("no rows, to the mean") << 3 << 0 << false << 3 << 0;
    QTest::newRow("neither") << 0 << 0 << true << 0 << 0;
}

void TestGains::emptyFramesGiveNoNumbers()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, normalize);
    QFETCH(int, columns);
    QFETCH(int, rows);
    const std::uint8_t nothing = 0;
    std::list<double> columnGains;
    std::list<double> rowGains;
    std::uint16_t columnMeans[3];
    std::uint16_t rowMeans[3];
    zor::computeColumnGains({&nothing, 0, width, height, 12}, {normalize, 1.0, false}, columnGains,
                            columnMeans, rowMeans);
    zor::computeRowGains({&nothing, 0, width, height, 12}, {normalize, 1.0, false}, rowGains);
    VERIFY_SAME(describe(columnGains, Gains(columns, qQNaN())));
    VERIFY_SAME(describe(rowGains, Gains(rows, qQNaN())));
}

QTEST_APPLESS_MAIN(TestGains)
#include "tst_gains.moc"
