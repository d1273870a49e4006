#include "engine/Profiles.h"
#include "tests/engine/EngineTesting.h"

#include <QtTest>

using enginetest::Block;
using enginetest::Poisons;
using enginetest::Random;

namespace {

zor::ConstImageView viewOf(Block& block, int depth)
{
    return {block.data(), block.step, block.width, block.height, depth};
}

} // namespace

class TestProfiles : public QObject
{
    Q_OBJECT

private slots:
    void sumsEqualTheDefinition_data();
    void sumsEqualTheDefinition();
    void sumsAddToWhatIsThere();
    void columnsComeFromLeftToRight();
    void sumsStayExactBeyond32Bits_data();
    void sumsStayExactBeyond32Bits();
    void meansAreTruncated();
    void emptyImagesHaveNoSums_data();
    void emptyImagesHaveNoSums();
};

void TestProfiles::sumsEqualTheDefinition_data()
{
    QTest::addColumn<int>("seed");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("width");
    for (const int depth : {8, 10, 16}) {
        QTest::addRow("depth %d, one column", depth) << 1 << depth << 1;
        QTest::addRow("depth %d, an odd width", depth) << 2 << depth << 37;
        QTest::addRow("depth %d, one less than a strip", depth) << 3 << depth << zor::ColumnStrip - 1;
        QTest::addRow("depth %d, a strip", depth) << 4 << depth << zor::ColumnStrip;
        QTest::addRow("depth %d, one more than a strip", depth) << 5 << depth << zor::ColumnStrip + 1;
        QTest::addRow("depth %d, beyond two strips", depth) << 6 << depth << 2 * zor::ColumnStrip + 7;
    }
}

void TestProfiles::sumsEqualTheDefinition()
{
    QFETCH(int, seed);
    QFETCH(int, depth);
    QFETCH(int, width);
    Random random(static_cast<unsigned>(seed));
    const int bytesPerPixel = depth == 8 ? 1 : 2;
    Block block = enginetest::randomBlock(random, width, random.between(1, 9), bytesPerPixel, 0);
    block.randomize(random);
    const auto pixel = [&](int x, int y) {
        return depth == 8 ? block.storage[block.at(x, y, 1)] : block.word(x, y);
    };
    const zor::ConstImageView image = viewOf(block, depth);
    std::vector<std::uint64_t> sums(static_cast<std::size_t>(width), 0);
    zor::addColumnSums(image, 0, width, sums.data());
    std::vector<std::uint16_t> columnMeans(sums.size() + 1, 0xA5A5);
    zor::storeColumnMeans(image, columnMeans.data());
    for (int x = 0; x < width; ++x) {
        std::uint64_t sum = 0;
        for (int y = 0; y < block.height; ++y)
            sum += pixel(x, y);
        const auto at = static_cast<std::size_t>(x);
        QCOMPARE(sums[at], sum);
        QCOMPARE(std::uint64_t{columnMeans[at]}, sum / static_cast<unsigned>(block.height));
    }
    QCOMPARE(int{columnMeans.back()}, 0xA5A5);
    std::vector<std::uint16_t> rowMeans(static_cast<std::size_t>(block.height) + 1, 0x5A5A);
    zor::storeRowMeans(image, rowMeans.data());
    for (int y = 0; y < block.height; ++y) {
        std::uint64_t sum = 0;
        for (int x = 0; x < width; ++x)
            sum += pixel(x, y);
        QCOMPARE(zor::rowSum(image, y), sum);
        QCOMPARE(std::uint64_t{rowMeans[static_cast<std::size_t>(y)]}, sum / static_cast<unsigned>(width));
    }
    QCOMPARE(int{rowMeans.back()}, 0x5A5A);
}

void TestProfiles::sumsAddToWhatIsThere()
{
    Block block(3, 2, 3, 1, 0, 7);
    std::uint64_t sums[] = {100, 200, 300};
    zor::addColumnSums(viewOf(block, 8), 1, 2, sums);
    QCOMPARE(sums[0], std::uint64_t{114});
    QCOMPARE(sums[1], std::uint64_t{214});
    QCOMPARE(sums[2], std::uint64_t{300});
}

void TestProfiles::columnsComeFromLeftToRight()
{
    const int width = zor::ColumnStrip + 3;
    Block block(width, 1, 2 * width, 2, 0, 0);
    for (int x = 0; x < width; ++x)
        block.setWord(x, 0, x);
    int next = 0;
    zor::forEachColumnSum(viewOf(block, 12), [&](std::int32_t column, std::uint64_t sum) {
        QCOMPARE(column, next);
        QCOMPARE(sum, static_cast<std::uint64_t>(next));
        ++next;
    });
    QCOMPARE(next, width);
}

void TestProfiles::sumsStayExactBeyond32Bits_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("65536 full pixels") << 65536;
    QTest::newRow("65537 full pixels just fill 32 bits") << 65537;
    QTest::newRow("65538 full pixels need more") << 65538;
    QTest::newRow("200000 full pixels") << 200000;
}

void TestProfiles::sumsStayExactBeyond32Bits()
{
    QFETCH(int, count);
    const std::uint64_t expected = std::uint64_t{65535} * static_cast<unsigned>(count);
    Block tall(2, count, 4, 2, 0, 0xFF);
    std::uint64_t sums[] = {0, 0};
    zor::addColumnSums(viewOf(tall, 16), 0, 2, sums);
    QCOMPARE(sums[0], expected);
    QCOMPARE(sums[1], expected);
    Block wide(count, 1, 2 * count, 2, 1, 0xFF);
    QCOMPARE(zor::rowSum(viewOf(wide, 16), 0), expected);
}

void TestProfiles::meansAreTruncated()
{
    Block block(2, 2, 2, 1, 0, 0);
    block.storage = {1, 255, 2, 255};
    std::uint16_t columns[2];
    std::uint16_t rows[2];
    zor::storeColumnMeans(viewOf(block, 8), columns);
    zor::storeRowMeans(viewOf(block, 8), rows);
    QCOMPARE(int{columns[0]}, 1);
    QCOMPARE(int{columns[1]}, 255);
    QCOMPARE(int{rows[0]}, 128);
    QCOMPARE(int{rows[1]}, 128);
}

void TestProfiles::emptyImagesHaveNoSums_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("columnMean");
    QTest::addColumn<int>("rowMean");
    QTest::newRow("no columns: the row's mean is no number, stored as 0") << 0 << 1 << 0xA5A5 << 0;
    QTest::newRow("no rows: the column's mean is no number, stored as 0") << 1 << 0 << 0 << 0xA5A5;
    QTest::newRow("neither") << 0 << 0 << 0xA5A5 << 0xA5A5;
}

void TestProfiles::emptyImagesHaveNoSums()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, columnMean);
    QFETCH(int, rowMean);
    const std::uint8_t nothing = 0;
    const zor::ConstImageView image{&nothing, 0, width, height, 8};
    std::uint16_t column = 0xA5A5;
    std::uint16_t row = 0xA5A5;
    zor::storeColumnMeans(image, &column);
    zor::storeRowMeans(image, &row);
    QCOMPARE(int{column}, columnMean);
    QCOMPARE(int{row}, rowMean);
}

QTEST_APPLESS_MAIN(TestProfiles)
#include "tst_profiles.moc"
