#include "engine/pix/PixConvert.h"
#include "tests/engine/EngineTesting.h"

#include <QtTest>

using enginetest::Block;
using enginetest::difference;
using enginetest::Poisons;
using enginetest::Random;

class TestPixConvert : public QObject
{
    Q_OBJECT

private slots:
    void checksComeInOrderAndLeaveTheOutputAlone_data();
    void checksComeInOrderAndLeaveTheOutputAlone();
    void narrowingLimitsTo255_data();
    void narrowingLimitsTo255();
    void wideningKeepsEveryByte();
    void copyGathersAColumn();
    void copySpreadsAColumn();
    void copyTakesAnyStep();
    void randomShapesEqualTheDefinition_data();
    void randomShapesEqualTheDefinition();
};

void TestPixConvert::checksComeInOrderAndLeaveTheOutputAlone_data()
{
    QTest::addColumn<bool>("haveSource");
    QTest::addColumn<bool>("haveDestination");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("sourceStep");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("copyStatus");
    QTest::newRow("a null source") << false << true << 2 << 2 << 4 << 4 << -8 << -8;
    QTest::newRow("a null destination") << true << false << 2 << 2 << 4 << 4 << -8 << -8;
    QTest::newRow("null goes before the region") << false << true << 0 << 2 << 0 << 4 << -8 << -8;
    QTest::newRow("width 0") << true << true << 0 << 2 << 4 << 4 << -6 << -6;
    QTest::newRow("height 0") << true << true << 2 << 0 << 4 << 4 << -6 << -6;
    QTest::newRow("width negative") << true << true << -1 << 2 << 4 << 4 << -6 << -6;
    QTest::newRow("height negative") << true << true << 2 << -1 << 4 << 4 << -6 << -6;
    QTest::newRow("the region goes before the steps") << true << true << 0 << 2 << 0 << 0 << -6 << -6;
    QTest::newRow("a source step of 0") << true << true << 2 << 1 << 0 << 4 << -14 << 0;
    QTest::newRow("a destination step of 0") << true << true << 2 << 1 << 4 << 0 << -14 << 0;
    QTest::newRow("a negative source step") << true << true << 2 << 1 << -4 << 4 << -14 << 0;
    QTest::newRow("a negative destination step") << true << true << 2 << 1 << 4 << -4 << -14 << 0;
}

void TestPixConvert::checksComeInOrderAndLeaveTheOutputAlone()
{
    QFETCH(bool, haveSource);
    QFETCH(bool, haveDestination);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, sourceStep);
    QFETCH(int, step);
    QFETCH(int, status);
    QFETCH(int, copyStatus);
    Block source(2, 2, 4, 2, 0, 0x33);
    Block destination(2, 2, 4, 2, 0, 0x77);
    const std::vector<std::uint8_t> before = destination.storage;
    QCOMPARE(zor::pixWiden8uTo16u(haveSource ? source.data() : nullptr, sourceStep,
                                  haveDestination ? destination.pixels<std::uint16_t>() : nullptr, step,
                                  {width, height}),
             status);
    QCOMPARE(zor::pixNarrow16uTo8u(haveSource ? source.pixels<std::uint16_t>() : nullptr, sourceStep,
                                   haveDestination ? destination.data() : nullptr, step, {width, height}),
             status);
    VERIFY_SAME(difference(destination, before, "after a failed conversion"));
    QCOMPARE(zor::pixCopy16(haveSource ? source.data() : nullptr, sourceStep,
                            haveDestination ? destination.data() : nullptr, step, {width, height}),
             copyStatus);
    if (copyStatus != 0)
        VERIFY_SAME(difference(destination, before, "after a failed copy"));
}

void TestPixConvert::narrowingLimitsTo255_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("result");
    QTest::newRow("0 gives 0") << 0 << 0;
    QTest::newRow("254 gives 254") << 254 << 254;
    QTest::newRow("255 gives 255") << 255 << 255;
    QTest::newRow("256 gives 255") << 256 << 255;
    QTest::newRow("300 gives 255") << 300 << 255;
    QTest::newRow("32768 gives 255") << 32768 << 255;
    QTest::newRow("65535 gives 255") << 65535 << 255;
}

void TestPixConvert::narrowingLimitsTo255()
{
    QFETCH(int, value);
    QFETCH(int, result);
    const auto source = static_cast<std::uint16_t>(value);
    std::uint8_t narrow = 0x77;
    QCOMPARE(zor::pixNarrow16uTo8u(&source, 2, &narrow, 1, {1, 1}), 0);
    QCOMPARE(int{narrow}, result);
}

void TestPixConvert::wideningKeepsEveryByte()
{
    std::vector<std::uint8_t> bytes(256);
    for (int i = 0; i < 256; ++i)
        bytes[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i);
    std::vector<std::uint16_t> wide(256, 0xA5A5);
    QCOMPARE(zor::pixWiden8uTo16u(bytes.data(), 256, wide.data(), 512, {256, 1}), 0);
    for (int i = 0; i < 256; ++i)
        QCOMPARE(int{wide[static_cast<std::size_t>(i)]}, i);
}

void TestPixConvert::copyGathersAColumn()
{
    const std::uint16_t image[] = {1, 2, 3, 4, 5, 6};
    std::uint16_t column[] = {0, 0};
    QCOMPARE(zor::pixCopy16(image + 1, 6, column, 2, {1, 2}), 0);
    QCOMPARE(int{column[0]}, 2);
    QCOMPARE(int{column[1]}, 5);
}

void TestPixConvert::copySpreadsAColumn()
{
    const std::uint16_t column[] = {7, 8};
    std::uint16_t image[] = {1, 2, 3, 4, 5, 6};
    QCOMPARE(zor::pixCopy16(column, 2, image + 2, 6, {1, 2}), 0);
    const std::uint16_t expected[] = {1, 2, 7, 4, 5, 8};
    for (int i = 0; i < 6; ++i)
        QCOMPARE(image[i], expected[i]);
}

void TestPixConvert::copyTakesAnyStep()
{
    const std::uint16_t rows[] = {1, 2, 3, 4};
    std::uint16_t turned[] = {0, 0, 0, 0};
    QCOMPARE(zor::pixCopy16(rows + 2, -4, turned, 4, {2, 2}), 0);
    const std::uint16_t expected[] = {3, 4, 1, 2};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(turned[i], expected[i]);
}

void TestPixConvert::randomShapesEqualTheDefinition_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 60; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void TestPixConvert::randomShapesEqualTheDefinition()
{
    QFETCH(int, seed);
    Random random(static_cast<unsigned>(seed));
    const int width = random.between(1, 67);
    const int height = random.between(1, 5);
    for (const std::uint8_t poison : Poisons) {
        Block bytes = enginetest::randomBlock(random, width, height, 1, 0);
        Block words = enginetest::randomBlock(random, width, height, 2, 0);
        bytes.randomize(random);
        words.randomize(random);
        Block wide = enginetest::randomBlock(random, width, height, 2, poison);
        Block narrow = enginetest::randomBlock(random, width, height, 1, poison);
        Block copy = enginetest::randomBlock(random, width, height, 2, poison);
        Block expectedWide = wide;
        Block expectedNarrow = narrow;
        Block expectedCopy = copy;
        for (int x = 0; x < width; ++x) {
            for (int y = 0; y < height; ++y) {
                const int word = words.word(x, y);
                expectedWide.setWord(x, y, bytes.storage[bytes.at(x, y, 1)]);
                expectedNarrow.storage[narrow.at(x, y, 1)] =
                    static_cast<std::uint8_t>(word > 255 ? 255 : word);
                expectedCopy.setWord(x, y, word);
            }
        }
        QCOMPARE(zor::pixWiden8uTo16u(bytes.data(), bytes.step, wide.pixels<std::uint16_t>(), wide.step,
                                      {width, height}),
                 0);
        QCOMPARE(zor::pixNarrow16uTo8u(words.pixels<std::uint16_t>(), words.step, narrow.data(), narrow.step,
                                       {width, height}),
                 0);
        QCOMPARE(zor::pixCopy16(words.data(), words.step, copy.data(), copy.step, {width, height}), 0);
        VERIFY_SAME(difference(wide, expectedWide.storage, "widened"));
        VERIFY_SAME(difference(narrow, expectedNarrow.storage, "narrowed"));
        VERIFY_SAME(difference(copy, expectedCopy.storage, "copied"));
    }
}

QTEST_APPLESS_MAIN(TestPixConvert)
#include "tst_pix_convert.moc"
