#include "engine/CellImage.h"
#include "engine/ColumnPass.h"
#include "tests/engine/EngineTesting.h"
#include "tests/engine/Words.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

using enginetest::Random;

class TestColumnPass : public QObject
{
    Q_OBJECT

private slots:
    void otherDepthsAreLeftAlone_data();
    void otherDepthsAreLeftAlone();
    void capacityCoversTheStep_data();
    void capacityCoversTheStep();
    void cellsAreMultiplied_data();
    void cellsAreMultiplied();
    void byteFramesAreWalkedByTheirPixels();
    void walkIgnoresTheRowsOfTheBlock_data();
    void walkIgnoresTheRowsOfTheBlock();
};

void TestColumnPass::otherDepthsAreLeftAlone_data()
{
    QTest::addColumn<int>("depth");
    for (const int depth : {0, 1, 2, 5, 7, 17, 24, 32})
        QTest::addRow("depth %d", depth) << depth;
}

void TestColumnPass::otherDepthsAreLeftAlone()
{
    QFETCH(int, depth);
    std::vector<std::uint8_t> cells(8, 0xA5);
    const std::uint16_t codes[] = {0x200, 0x200};
    zor::applyColumnCodes({cells.data(), 4, 2, 1, depth}, 4, codes);
    QCOMPARE(cells, std::vector<std::uint8_t>(8, 0xA5));
}

void TestColumnPass::capacityCoversTheStep_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("capacity");
    QTest::newRow("a tight step") << 6 << 12 << 6;
    QTest::newRow("a padded odd width") << 5 << 12 << 6;
    QTest::newRow("a large step") << 5 << 101 << 50;
    QTest::newRow("an 8-bit frame") << 7 << 8 << 7;
    QTest::newRow("no step") << 7 << 0 << 7;
}

void TestColumnPass::capacityCoversTheStep()
{
    QFETCH(int, width);
    QFETCH(int, step);
    QFETCH(int, capacity);
    QCOMPARE(zor::columnCodeCapacity(width, step), capacity);
}

void TestColumnPass::cellsAreMultiplied_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("cell");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("result");
    QTest::newRow("depth 8: 200 under 1.5 exceeds the depth") << 8 << 200 << 0x0180 << 300;
    QTest::newRow("depth 8: 255 has no exemption") << 8 << 255 << 0x0080 << 128;
    QTest::newRow("depth 8: a half goes to the even number below") << 8 << 1 << 0x0080 << 0;
    QTest::newRow("depth 8: one and a half goes to 2") << 8 << 3 << 0x0080 << 2;
    QTest::newRow("depth 8: rounds to nearest") << 8 << 100 << 0x0119 << 110;
    QTest::newRow("depth 8: black under an infinite gain stays black") << 8 << 0 << 0x00FF << 0;
    QTest::newRow("depth 8: the largest code") << 8 << 255 << 0x0FFF << 4079;
    QTest::newRow("depth 10: truncates") << 10 << 100 << 0x0119 << 109;
    QTest::newRow("depth 10: the limit is exempt") << 10 << 1023 << 0x0080 << 1023;
    QTest::newRow("depth 10: a result above the limit is limited") << 10 << 700 << 0x0180 << 1023;
    QTest::newRow("depth 10: one under the limit is not exempt") << 10 << 1022 << 0x0080 << 511;
    QTest::newRow("depth 12: 4095 is exempt from a gain under 1") << 12 << 4095 << 0x0080 << 4095;
    QTest::newRow("depth 12: 4095 is exempt from a gain of 0") << 12 << 4095 << 0x0000 << 4095;
    QTest::newRow("depth 12: 3000 under 1.5 is limited") << 12 << 3000 << 0x0180 << 4095;
    QTest::newRow("depth 12: a result with bit 15 set is stored unlimited") << 12 << 4094 << 0x0FFF << 65488;
    QTest::newRow("depth 12: the last result with bit 15 clear is limited") << 12 << 2048 << 0x0FFF << 4095;
    QTest::newRow("depth 12: the first result with bit 15 set is not") << 12 << 2049 << 0x0FFF << 32775;
    QTest::newRow("depth 12: no gain gives black") << 12 << 3000 << 0x0000 << 0;
    QTest::newRow("depth 12: black under an infinite gain stays black") << 12 << 0 << 0x00FF << 0;
    QTest::newRow("depth 16: never limits, wraps") << 16 << 30000 << 0x0300 << (90000 & 0xFFFF);
    QTest::newRow("depth 16: 65535 reads as -1 and is not exempt") << 16 << 65535 << 0x0200 << 65534;
    QTest::newRow("depth 16: a negative cell is truncated downward") << 16 << 65535 << 0x0080 << 65535;
    QTest::newRow("depth 16: 0x8000 under 2.0 wraps to 0") << 16 << 0x8000 << 0x0200 << 0;
    QTest::newRow("depth 15: the limit is the highest signed number") << 15 << 32767 << 0x0080 << 32767;
}

void TestColumnPass::cellsAreMultiplied()
{
    QFETCH(int, depth);
    QFETCH(int, cell);
    QFETCH(int, code);
    QFETCH(int, result);
    const auto word = static_cast<std::uint16_t>(code);
    const std::uint16_t codes[] = {word, word};
    std::vector<std::uint8_t> cells = bytesOf({cell, 0, 0, 0});
    zor::applyColumnCodes({cells.data(), 4, 1, 1, depth}, 4, codes);
    QCOMPARE(wordsOf(cells)[0], result);

    reference::Image image{bytesOf({cell, 0, 0, 0}), 4, 1, 1, depth};
    reference::columnPass(image, 4, {word, word});
    QCOMPARE(wordsOf(image.bytes)[0], result);
}

/// Padding and the spare row stay, whatever the frame's step is.
void TestColumnPass::byteFramesAreWalkedByTheirPixels()
{
    const std::uint16_t codes[] = {0x200, 0x300, 0x400, 0x500, 0x600};
    for (const int step : {3, 4, 10}) {
        std::vector<std::uint8_t> cells = bytesOf(Words(12, 10));
        zor::applyColumnCodes({cells.data(), 8, 3, 2, 8}, step, codes);
        QCOMPARE(wordsOf(cells), (Words{20, 30, 40, 10, 20, 30, 40, 10, 10, 10, 10, 10}));
    }
}

void TestColumnPass::walkIgnoresTheRowsOfTheBlock_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<Words>("codes");
    QTest::addColumn<Words>("cells");
    // Three columns, two rows, blocks of three rows with four cells of 10 each.
    QTest::newRow("the computed step: the padding cell is multiplied as well")
        << 8 << Words{0x200, 0x300, 0x400, 0x100} << Words{20, 30, 40, 10, 20, 30, 40, 10, 10, 10, 10, 10};
    QTest::newRow("unpadded: the second row starts one cell early")
        << 6 << Words{0x200, 0x300, 0x400} << Words{20, 30, 40, 20, 30, 40, 10, 10, 10, 10, 10, 10};
    QTest::newRow("larger: the surplus is 1.0 and the second row starts late")
        << 10 << Words{0x200, 0x300, 0x400, 0x100, 0x100}
        << Words{20, 30, 40, 10, 10, 20, 30, 40, 10, 10, 10, 10};
    QTest::newRow("much larger: the walk ends with the block")
        << 18 << Words{0x200, 0x300, 0x400, 0x100, 0x100, 0x100, 0x100, 0x100, 0x100}
        << Words{20, 30, 40, 10, 10, 10, 10, 10, 10, 20, 30, 40};
    QTest::newRow("longer than the whole block")
        << 40 << Words(20, 0x200) << Words{20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20, 20};
    QTest::newRow("an odd step counts its whole cells")
        << 9 << Words{0x200, 0x300, 0x400, 0x100} << Words{20, 30, 40, 10, 20, 30, 40, 10, 10, 10, 10, 10};
    QTest::newRow("a step of one cell")
        << 2 << Words{0x200, 0x300, 0x400} << Words{20, 20, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10};
    QTest::newRow("a step below 2 skips every row")
        << 1 << Words{0x200, 0x300, 0x400} << Words{10, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10};
    QTest::newRow("a step of 0 skips every row")
        << 0 << Words{0x200, 0x300, 0x400} << Words{10, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10};
    QTest::newRow("a negative step skips every row")
        << -8 << Words{0x200, 0x300, 0x400} << Words{10, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10};
}

void TestColumnPass::walkIgnoresTheRowsOfTheBlock()
{
    QFETCH(int, step);
    QFETCH(Words, codes);
    QFETCH(Words, cells);
    // Exactly the entries that the pass may read.
    QCOMPARE(codes.size(), zor::columnCodeCapacity(3, step));
    const std::vector<std::uint16_t> entries(codes.begin(), codes.end());
    std::vector<std::uint8_t> actual = bytesOf(Words(12, 10));
    QCOMPARE(actual.size(), zor::cellBlockBytes(3, 2));
    zor::applyColumnCodes({actual.data(), 8, 3, 2, 12}, step, entries.data());
    QCOMPARE(wordsOf(actual), cells);
}

QTEST_APPLESS_MAIN(TestColumnPass)
#include "tst_column_pass.moc"
