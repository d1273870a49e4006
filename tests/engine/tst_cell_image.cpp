#include "engine/CellImage.h"
#include "tests/engine/EngineTesting.h"
#include "tests/engine/Words.h"

#include <QtTest>

class TestCellImage : public QObject
{
    Q_OBJECT

private slots:
    void workingImagesHaveOneRowMore_data();
    void workingImagesHaveOneRowMore();
    void saturationLimitsFollowTheDepth_data();
    void saturationLimitsFollowTheDepth();
    void eightBitFramesAreWidened();
    void eightBitFramesThatCannotBeWidenedAreBlack_data();
    void eightBitFramesThatCannotBeWidenedAreBlack();
    void widerFramesAreCopiedFlat_data();
    void widerFramesAreCopiedFlat();
    void otherDepthsAreBlack_data();
    void otherDepthsAreBlack();
    void spareCellsAreCleared_data();
    void spareCellsAreCleared();
};

void TestCellImage::workingImagesHaveOneRowMore_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("bytes");
    QTest::newRow("one pixel is padded to 4 bytes") << 1 << 1 << 4 << 8;
    QTest::newRow("an even width needs no padding") << 6 << 4 << 12 << 60;
    QTest::newRow("an odd width is padded by 2 bytes") << 7 << 4 << 16 << 80;
    QTest::newRow("a camera frame") << 1392 << 1040 << 2784 << 2784 * 1041;
    QTest::newRow("no columns") << 0 << 5 << 0 << 0;
    QTest::newRow("no rows leave the spare one") << 5 << 0 << 12 << 12;
}

void TestCellImage::workingImagesHaveOneRowMore()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, step);
    QFETCH(int, bytes);
    QCOMPARE(zor::cellStep(width), step);
    QCOMPARE(zor::cellBlockBytes(width, height), static_cast<std::size_t>(bytes));
    // A block beyond 2 GiB keeps its size.
    QCOMPARE(zor::cellBlockBytes(40000, 40000), std::size_t{80000} * 40001);
}

void TestCellImage::saturationLimitsFollowTheDepth_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("limit");
    QTest::newRow("depth 8") << 8 << 255;
    QTest::newRow("depth 10") << 10 << 1023;
    QTest::newRow("depth 12") << 12 << 4095;
    QTest::newRow("depth 16") << 16 << 65535;
}

void TestCellImage::saturationLimitsFollowTheDepth()
{
    QFETCH(int, depth);
    QFETCH(int, limit);
    QCOMPARE(zor::saturationLimit(depth), limit);
}

void TestCellImage::eightBitFramesAreWidened()
{
    const std::uint8_t frame[] = {1, 2, 255, 0xEE, 4, 5, 6};
    for (const std::uint8_t poison : enginetest::Poisons) {
        std::vector<std::uint8_t> cells(zor::cellBlockBytes(3, 2), poison);
        zor::fillCells({frame, 4, 3, 2, 8}, sizeof frame, {cells.data(), 8, 3, 2, 8});
        QCOMPARE(wordsOf(cells), (Words{1, 2, 255, 0, 4, 5, 6, 0, 0, 0, 0, 0}));
    }
}

void TestCellImage::eightBitFramesThatCannotBeWidenedAreBlack_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("width");
    QTest::newRow("a step of 0") << 0 << 3;
    QTest::newRow("a negative step") << -4 << 3;
}

void TestCellImage::eightBitFramesThatCannotBeWidenedAreBlack()
{
    QFETCH(int, step);
    QFETCH(int, width);
    const std::uint8_t frame[] = {1, 2, 3, 4, 5, 6, 7, 8};
    for (const std::uint8_t poison : enginetest::Poisons) {
        std::vector<std::uint8_t> cells(zor::cellBlockBytes(width, 2), poison);
        zor::fillCells({frame, step, width, 2, 8}, sizeof frame,
                       {cells.data(), zor::cellStep(width), width, 2, 8});
        QCOMPARE(cells, std::vector<std::uint8_t>(cells.size(), 0));
    }
}

void TestCellImage::widerFramesAreCopiedFlat_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("step");
    QTest::addColumn<Words>("frame");
    QTest::addColumn<Words>("cells");
    QTest::newRow("even width, unpadded") << 2 << 4 << Words{1, 2, 3, 4} << Words{1, 2, 3, 4, 0, 0};
    QTest::newRow("odd width, padded") << 1 << 4 << Words{1, 9, 2, 8} << Words{1, 9, 2, 8, 0, 0};
    QTest::newRow("odd width, unpadded: rows are skewed and the frame ends early")
        << 3 << 6 << Words{1, 2, 3, 4, 5, 6} << Words{1, 2, 3, 4, 5, 6, 0, 0, 0, 0, 0, 0};
    QTest::newRow("a larger step: the padding comes along, the last row does not")
        << 2 << 8 << Words{1, 2, 7, 7, 3, 4, 7, 7} << Words{1, 2, 7, 7, 0, 0};
    QTest::newRow("the last row without its padding") << 1 << 4 << Words{1, 9, 2} << Words{1, 9, 2, 0, 0, 0};
}

void TestCellImage::widerFramesAreCopiedFlat()
{
    QFETCH(int, width);
    QFETCH(int, step);
    QFETCH(Words, frame);
    QFETCH(Words, cells);
    const std::vector<std::uint8_t> bytes = bytesOf(frame);
    for (const int depth : {9, 10, 12, 16}) {
        for (const std::uint8_t poison : enginetest::Poisons) {
            std::vector<std::uint8_t> actual(zor::cellBlockBytes(width, 2), poison);
            zor::fillCells({bytes.data(), step, width, 2, depth}, bytes.size(),
                           {actual.data(), zor::cellStep(width), width, 2, depth});
            QCOMPARE(wordsOf(actual), cells);
        }
    }
}

void TestCellImage::otherDepthsAreBlack_data()
{
    QTest::addColumn<int>("depth");
    for (const int depth : {0, 1, 2, 5, 7, 17, 24, 32})
        QTest::addRow("depth %d", depth) << depth;
}

void TestCellImage::otherDepthsAreBlack()
{
    QFETCH(int, depth);
    const std::uint8_t frame[] = {1, 2, 3, 4};
    for (const std::uint8_t poison : enginetest::Poisons) {
        std::vector<std::uint8_t> cells(zor::cellBlockBytes(2, 1), poison);
        zor::fillCells({frame, 4, 2, 1, depth}, sizeof frame, {cells.data(), 4, 2, 1, depth});
        QCOMPARE(cells, std::vector<std::uint8_t>(8, 0));
    }
}

void TestCellImage::spareCellsAreCleared_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("an odd width: one cell a row, and a row") << 3 << 2;
    QTest::newRow("an even width: a row alone") << 4 << 3;
    QTest::newRow("one pixel") << 1 << 1;
    QTest::newRow("no rows leave the spare one") << 5 << 0;
    QTest::newRow("no columns leave nothing") << 0 << 3;
}

void TestCellImage::spareCellsAreCleared()
{
    QFETCH(int, width);
    QFETCH(int, height);
    const int perRow = zor::cellStep(width) / 2;
    for (const int depth : {8, 12, 16}) {
        for (const std::uint8_t poison : enginetest::Poisons) {
            // There is one byte more after the block.
            std::vector<std::uint8_t> cells(zor::cellBlockBytes(width, height) + 1, poison);
            zor::clearSpareCells({cells.data(), 2 * perRow, width, height, depth});
            Words expected;
            for (int y = 0; y <= height; ++y) {
                for (int x = 0; x < perRow; ++x)
                    expected.append(y < height && x < width ? poison + 256 * poison : 0);
            }
            QCOMPARE(wordsOf(cells), expected);
            QCOMPARE(int{cells.back()}, int{poison});
        }
    }
}

QTEST_APPLESS_MAIN(TestCellImage)
#include "tst_cell_image.moc"
