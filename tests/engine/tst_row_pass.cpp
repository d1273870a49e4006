#include "engine/RowPass.h"
#include "tests/engine/EngineTesting.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

using enginetest::Block;

class TestRowPass : public QObject
{
    Q_OBJECT

private slots:
    void cellsAreMultiplied_data();
    void cellsAreMultiplied();
    void eachRowHasItsCode();
    void oddStepsAreUsedWithoutTheirLowestBit();
    void emptyImagesAreLeftAlone_data();
    void emptyImagesAreLeftAlone();
};

void TestRowPass::cellsAreMultiplied_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("cell");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("result");
    QTest::newRow("depth 8: 300 from the column pass is limited") << 8 << 300 << 0x0100 << 255;
    QTest::newRow("depth 8: exactly 255 passes") << 8 << 255 << 0x0080 << 255;
    QTest::newRow("depth 8: truncates") << 8 << 3 << 0x0080 << 1;
    QTest::newRow("depth 8: a large cell under a small gain is not exempt") << 8 << 300 << 0x0080 << 150;
    QTest::newRow("depth 10: what the column pass drove to the limit is exempt")
        << 10 << 1023 << 0x0080 << 1023;
    QTest::newRow("depth 12: 4095 passes whatever the gain") << 12 << 4095 << 0x0FFF << 4095;
    QTest::newRow("depth 12: 4095 passes a gain under 1") << 12 << 4095 << 0x0080 << 4095;
    QTest::newRow("depth 12: 3000 under 1.5 is limited") << 12 << 3000 << 0x0180 << 4095;
    QTest::newRow("depth 12: a result with bit 15 set is stored unlimited") << 12 << 4094 << 0x0FFF << 65488;
    QTest::newRow("depth 12: what the column pass left with bit 15 set is negative")
        << 12 << 65488 << 0x0080 << 65512;
    QTest::newRow("depth 12: black stays black") << 12 << 0 << 0x00FF << 0;
    QTest::newRow("depth 16: bit 15 clear becomes white") << 16 << 100 << 0x0100 << 65535;
    QTest::newRow("depth 16: black becomes white") << 16 << 0 << 0x0100 << 65535;
    QTest::newRow("depth 16: a gain of 0 makes white") << 16 << 0x9000 << 0x0000 << 65535;
    QTest::newRow("depth 16: bit 15 set stays") << 16 << 0x9000 << 0x0100 << 0x9000;
    QTest::newRow("depth 16: 65535 is not exempt") << 16 << 65535 << 0x0200 << 65534;
    QTest::newRow("depth 16: a product that wraps into bit 15 stays") << 16 << 20000 << 0x0200 << 40000;
    QTest::newRow("depth 16: a product that wraps out of bit 15 becomes white")
        << 16 << 0x8000 << 0x0200 << 65535;
}

void TestRowPass::cellsAreMultiplied()
{
    QFETCH(int, depth);
    QFETCH(int, cell);
    QFETCH(int, code);
    QFETCH(int, result);
    const auto word = static_cast<std::uint16_t>(code);
    for (const std::uint8_t poison : enginetest::Poisons) {
        Block source(1, 1, 4, 2, 0, 0);
        source.setWord(0, 0, cell);
        Block destination(1, 1, 4, 2, 0, poison);
        zor::applyRowCodes({source.data(), 4, 1, 1, depth}, {destination.data(), 4, 1, 1, depth}, &word);
        QCOMPARE(int{destination.word(0, 0)}, result);
        QCOMPARE(int{source.word(0, 0)}, cell);
        reference::Image copy{destination.storage, 4, 1, 1, depth};
        reference::rowPass({source.storage, 4, 1, 1, depth}, copy, {word});
        QCOMPARE(static_cast<int>(copy.bytes[0] + 256 * copy.bytes[1]), result);
    }
}

void TestRowPass::eachRowHasItsCode()
{
    Block source(2, 3, 4, 2, 0, 0);
    for (int y = 0; y < 3; ++y) {
        source.setWord(0, y, 10);
        source.setWord(1, y, 20);
    }
    Block destination(2, 3, 8, 2, 1, 0xA5);
    const std::uint16_t codes[] = {0x100, 0x180, 0x200};
    zor::applyRowCodes({source.data(), 4, 2, 3, 12}, {destination.data(), 8, 2, 3, 12}, codes);
    const int expected[] = {10, 20, 15, 30, 20, 40};
    for (int i = 0; i < 6; ++i)
        QCOMPARE(int{destination.word(i % 2, i / 2)}, expected[i]);
    // The padding is nobody's.
    QCOMPARE(int{destination.word(2, 0)}, 0xA5A5);
}

void TestRowPass::oddStepsAreUsedWithoutTheirLowestBit()
{
    Block source(1, 2, 4, 2, 0, 0);
    source.setWord(0, 0, 10);
    source.setWord(0, 1, 20);
    Block destination(1, 2, 4, 2, 0, 0xA5);
    const std::uint16_t codes[] = {0x100, 0x100};
    zor::applyRowCodes({source.data(), 5, 1, 2, 12}, {destination.data(), 5, 1, 2, 12}, codes);
    QCOMPARE(int{destination.word(0, 0)}, 10);
    QCOMPARE(int{destination.word(0, 1)}, 20);
}

void TestRowPass::emptyImagesAreLeftAlone_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("no columns") << 0 << 1;
    QTest::newRow("no rows") << 1 << 0;
    QTest::newRow("negative") << -1 << -1;
}

void TestRowPass::emptyImagesAreLeftAlone()
{
    QFETCH(int, width);
    QFETCH(int, height);
    Block source(1, 1, 4, 2, 0, 0x11);
    Block destination(1, 1, 4, 2, 0, 0xA5);
    const std::uint16_t code = 0x200;
    zor::applyRowCodes({source.data(), 4, width, height, 12}, {destination.data(), 4, width, height, 12},
                       &code);
    QCOMPARE(int{destination.word(0, 0)}, 0xA5A5);
}

QTEST_APPLESS_MAIN(TestRowPass)
#include "tst_row_pass.moc"
