#include "engine/TableCorrection.h"
#include "tests/engine/EngineTesting.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

#include <limits>

using enginetest::Block;
using enginetest::difference;
using enginetest::Random;

namespace {

constexpr int Lowest = std::numeric_limits<int>::min();
constexpr int Highest = std::numeric_limits<int>::max();

/// Entries as files hold them, and any others.
std::int32_t entry(Random& random, int fractionBits)
{
    switch (random.between(0, 5)) {
    case 0:
        return random.between(Lowest, Highest);
    case 1:
        return random.oneIn(2) ? Lowest : Highest;
    case 2:
        return random.between(-3, 3);
    default:
        return reference::coefficient(random.gain(), fractionBits);
    }
}

} // namespace

class TestTableCorrection : public QObject
{
    Q_OBJECT

private slots:
    void pixelsAreMultipliedInUnlimitedIntegers_data();
    void pixelsAreMultipliedInUnlimitedIntegers();
    void randomPixelsEqualTheReference();
    void framesEqualTheReference_data();
    void framesEqualTheReference();
    void aFrameCanBeCorrectedInPlace();
};

void TestTableCorrection::pixelsAreMultipliedInUnlimitedIntegers_data()
{
    QTest::addColumn<int>("pixel");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("result");
    QTest::newRow("1.0 and 1.0 leave a pixel at 8 bits") << 1000 << 256 << 256 << 8 << 12 << 1000;
    QTest::newRow("1.0 and 1.0 leave a pixel at 12 bits") << 1000 << 4096 << 4096 << 12 << 12 << 1000;
    QTest::newRow("the product is truncated once, at the end") << 3 << 128 << 512 << 8 << 12 << 3;
    QTest::newRow("three quarters are cut off") << 3 << 128 << 128 << 8 << 12 << 0;
    QTest::newRow("full scale is the limit at depth 8") << 200 << 512 << 256 << 8 << 8 << 255;
    QTest::newRow("full scale is the limit at depth 10") << 1000 << 512 << 256 << 8 << 10 << 1023;
    QTest::newRow("full scale is the limit at depth 16") << 65535 << Highest << Highest << 8 << 16 << 65535;
    QTest::newRow("the lowest entries make a positive product")
        << 65535 << Lowest << Lowest << 8 << 16 << 65535;
    QTest::newRow("one negative entry gives 0") << 65535 << Lowest << Highest << 12 << 16 << 0;
    QTest::newRow("a small negative product gives 0") << 1 << -1 << 1 << 12 << 16 << 0;
    QTest::newRow("two negative entries give a positive pixel") << 100 << -256 << -512 << 8 << 12 << 200;
    QTest::newRow("an entry of 0 gives 0") << 4095 << 0 << 4096 << 12 << 12 << 0;
    QTest::newRow("a black pixel stays black") << 0 << Highest << Highest << 8 << 12 << 0;
    QTest::newRow("a large entry against a small one") << 1000 << 16777216 << 1 << 12 << 12 << 1000;
}

void TestTableCorrection::pixelsAreMultipliedInUnlimitedIntegers()
{
    QFETCH(int, pixel);
    QFETCH(int, column);
    QFETCH(int, row);
    QFETCH(int, bits);
    QFETCH(int, depth);
    QFETCH(int, result);
    QCOMPARE(zor::correctedPixel(static_cast<std::uint16_t>(pixel), column, row,
                                 static_cast<std::uint8_t>(bits), depth),
             static_cast<unsigned>(result));
    QCOMPARE(reference::corrected(static_cast<unsigned>(pixel), column, row, bits, depth),
             static_cast<unsigned>(result));
}

void TestTableCorrection::randomPixelsEqualTheReference()
{
    Random random(5);
    const int depths[] = {8, 10, 12, 16};
    for (int i = 0; i < 20000; ++i) {
        const int bits = random.oneIn(2) ? 8 : 12;
        const int depth = depths[random.between(0, 3)];
        const int pixel = random.between(0, 65535);
        const std::int32_t column = entry(random, bits);
        const std::int32_t row = entry(random, bits);
        const unsigned expected =
            reference::corrected(static_cast<unsigned>(pixel), column, row, bits, depth);
        const unsigned actual = zor::correctedPixel(static_cast<std::uint16_t>(pixel), column, row,
                                                    static_cast<std::uint8_t>(bits), depth);
        QVERIFY2(actual == expected, qPrintable(QString("pixel %1, column %2, row %3, %4 bits, depth %5: "
                                                        "expected %6, actual %7")
                                                    .arg(pixel)
                                                    .arg(column)
                                                    .arg(row)
                                                    .arg(bits)
                                                    .arg(depth)
                                                    .arg(expected)
                                                    .arg(actual)));
    }
}

void TestTableCorrection::framesEqualTheReference_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("seed");
    for (const int depth : {8, 10, 12, 16}) {
        for (int seed = 1; seed <= 10; ++seed)
            QTest::addRow("depth %d, seed %d", depth, seed) << depth << seed;
    }
}

void TestTableCorrection::framesEqualTheReference()
{
    QFETCH(int, depth);
    QFETCH(int, seed);
    Random random(static_cast<unsigned>(seed * 100 + depth));
    const int width = random.between(1, 40);
    const int height = random.between(1, 9);
    const int bytesPerPixel = depth == 8 ? 1 : 2;
    const std::uint8_t bits = random.oneIn(2) ? 8 : 12;
    Block frame = enginetest::randomBlock(random, width, height, bytesPerPixel, 0);
    frame.randomize(random);
    std::vector<std::int32_t> columns(static_cast<std::size_t>(width));
    std::vector<std::int32_t> rows(static_cast<std::size_t>(height));
    for (std::int32_t& value : columns)
        value = entry(random, bits);
    for (std::int32_t& value : rows)
        value = entry(random, bits);
    for (const std::uint8_t poison : enginetest::Poisons) {
        Block actual = enginetest::randomBlock(random, width, height, bytesPerPixel, poison);
        Block expected = actual;
        for (int x = 0; x < width; ++x) {
            for (int y = 0; y < height; ++y) {
                const unsigned pixel = depth == 8 ? frame.storage[frame.at(x, y, 1)] : frame.word(x, y);
                const unsigned value = reference::corrected(pixel, columns[static_cast<std::size_t>(x)],
                                                            rows[static_cast<std::size_t>(y)], bits, depth);
                if (depth == 8)
                    expected.storage[expected.at(x, y, 1)] = static_cast<std::uint8_t>(value);
                else
                    expected.setWord(x, y, static_cast<int>(value));
            }
        }
        zor::applyTables({frame.data(), frame.step, width, height, depth}, columns.data(), rows.data(), bits,
                         {actual.data(), actual.step, width, height, depth});
        VERIFY_SAME(difference(actual, expected.storage, QString("depth %1, seed %2").arg(depth).arg(seed)));
    }
}

void TestTableCorrection::aFrameCanBeCorrectedInPlace()
{
    Block frame(2, 2, 4, 2, 0, 0);
    for (int i = 0; i < 4; ++i)
        frame.setWord(i % 2, i / 2, 100);
    const std::int32_t columns[] = {256, 512};
    const std::int32_t rows[] = {256, 128};
    const zor::ImageView view{frame.data(), 4, 2, 2, 12};
    zor::applyTables(zor::readOnly(view), columns, rows, 8, view);
    const int expected[] = {100, 200, 50, 100};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(int{frame.word(i % 2, i / 2)}, expected[i]);
}

QTEST_APPLESS_MAIN(TestTableCorrection)
#include "tst_table_correction.moc"
