#include "engine/pix/PixArithmetic.h"
#include "tests/engine/EngineTesting.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

using enginetest::Block;
using enginetest::difference;
using enginetest::Random;

namespace {

void addSeeds()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 60; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

} // namespace

class TestPixArithmetic : public QObject
{
    Q_OBJECT

private slots:
    void checksComeInOrderAndLeaveTheOutputAlone_data();
    void checksComeInOrderAndLeaveTheOutputAlone();
    void multiplyRoundsToNearestAndSaturates_data();
    void multiplyRoundsToNearestAndSaturates();
    void subtractStopsAtZero_data();
    void subtractStopsAtZero();
    void anyStepIsWalked();
    void multiplyEqualsTheReference_data() { addSeeds(); }
    void multiplyEqualsTheReference();
    void subtractEqualsTheReference_data() { addSeeds(); }
    void subtractEqualsTheReference();
};

void TestPixArithmetic::checksComeInOrderAndLeaveTheOutputAlone_data()
{
    QTest::addColumn<bool>("haveSource");
    QTest::addColumn<bool>("haveDestination");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("status");
    QTest::newRow("a null source") << false << true << 2 << 2 << -8;
    QTest::newRow("a null destination") << true << false << 2 << 2 << -8;
    QTest::newRow("a null source goes before an empty region") << false << true << 0 << 0 << -8;
    QTest::newRow("a null destination goes before an empty region") << true << false << -1 << 2 << -8;
    QTest::newRow("width 0") << true << true << 0 << 2 << -6;
    QTest::newRow("height 0") << true << true << 2 << 0 << -6;
    QTest::newRow("width negative") << true << true << -3 << 2 << -6;
    QTest::newRow("height negative") << true << true << 2 << -3 << -6;
}

void TestPixArithmetic::checksComeInOrderAndLeaveTheOutputAlone()
{
    QFETCH(bool, haveSource);
    QFETCH(bool, haveDestination);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, status);
    for (const int scale : {0, 8}) {
        Block source(2, 2, 4, 2, 0, 0x33);
        Block destination(2, 2, 4, 2, 0, 0x77);
        const std::vector<std::uint8_t> before = destination.storage;
        QCOMPARE(zor::pixSubtractInPlace16u(haveSource ? source.pixels<std::uint16_t>() : nullptr, 4,
                                            haveDestination ? destination.pixels<std::uint16_t>() : nullptr,
                                            4, {width, height}, scale),
                 status);
        QCOMPARE(zor::pixMultiplyInPlace16s(haveSource ? source.pixels<std::int16_t>() : nullptr, 4,
                                            haveDestination ? destination.pixels<std::int16_t>() : nullptr, 4,
                                            {width, height}, scale),
                 status);
        VERIFY_SAME(difference(destination, before, "after a failed check"));
    }
}

void TestPixArithmetic::multiplyRoundsToNearestAndSaturates_data()
{
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<int>("scale");
    QTest::addColumn<int>("result");
    QTest::newRow("a half below an even number goes down to it") << 128 << 1 << 8 << 0;
    QTest::newRow("a half above an odd number goes up") << 384 << 1 << 8 << 2;
    QTest::newRow("a half above an even number goes down") << 640 << 1 << 8 << 2;
    QTest::newRow("a negative half goes to zero") << -128 << 1 << 8 << 0;
    QTest::newRow("minus one and a half goes to minus two") << -384 << 1 << 8 << -2;
    QTest::newRow("just under a half") << 127 << 1 << 8 << 0;
    QTest::newRow("just over a half") << 129 << 1 << 8 << 1;
    QTest::newRow("a gain of 1.0 leaves a pixel") << 300 << 256 << 8 << 300;
    QTest::newRow("the largest cell and code saturate") << 32767 << 4095 << 8 << 32767;
    QTest::newRow("the lowest cell saturates below") << -32768 << 4095 << 8 << -32768;
    QTest::newRow("scale 0 keeps a product that fits") << 100 << -327 << 0 << -32700;
    QTest::newRow("scale 0 limits above") << 1000 << 1000 << 0 << 32767;
    QTest::newRow("scale 0 limits below") << 1000 << -1000 << 0 << -32768;
    QTest::newRow("scale 1: one half goes to 0") << 1 << 1 << 1 << 0;
    QTest::newRow("scale 1: three halves go to 2") << 3 << 1 << 1 << 2;
    QTest::newRow("the largest product at scale 15 is limited") << -32768 << -32768 << 15 << 32767;
    QTest::newRow("the largest product at scale 30 is 1") << -32768 << -32768 << 30 << 1;
    QTest::newRow("the largest product at scale 31 is half, to even") << -32768 << -32768 << 31 << 0;
    QTest::newRow("nothing is left at scale 40") << -32768 << 32767 << 40 << 0;
}

void TestPixArithmetic::multiplyRoundsToNearestAndSaturates()
{
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(int, scale);
    QFETCH(int, result);
    const auto source = static_cast<std::int16_t>(a);
    auto cell = static_cast<std::int16_t>(b);
    QCOMPARE(zor::pixMultiplyInPlace16s(&source, 2, &cell, 2, {1, 1}, scale), 0);
    QCOMPARE(int{cell}, result);
    QCOMPARE(int{source}, a);
}

void TestPixArithmetic::subtractStopsAtZero_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("subtrahend");
    QTest::addColumn<int>("result");
    QTest::newRow("5 - 7 gives 0") << 5 << 7 << 0;
    QTest::newRow("7 - 5 gives 2") << 7 << 5 << 2;
    QTest::newRow("a zero source leaves the destination") << 40000 << 0 << 40000;
    QTest::newRow("full scale against full scale") << 65535 << 65535 << 0;
    QTest::newRow("full scale against 1") << 65535 << 1 << 65534;
    QTest::newRow("0 against full scale") << 0 << 65535 << 0;
}

void TestPixArithmetic::subtractStopsAtZero()
{
    QFETCH(int, value);
    QFETCH(int, subtrahend);
    QFETCH(int, result);
    const auto source = static_cast<std::uint16_t>(subtrahend);
    auto cell = static_cast<std::uint16_t>(value);
    QCOMPARE(zor::pixSubtractInPlace16u(&source, 2, &cell, 2, {1, 1}, 0), 0);
    QCOMPARE(int{cell}, result);
}

void TestPixArithmetic::anyStepIsWalked()
{
    // The source's one row serves both rows; the destination is walked from its lower row up.
    const std::uint16_t source[] = {1, 2};
    std::uint16_t cells[] = {10, 20, 30, 40};
    QCOMPARE(zor::pixSubtractInPlace16u(source, 0, cells + 2, -4, {2, 2}, 0), 0);
    const std::uint16_t expected[] = {9, 18, 29, 38};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(cells[i], expected[i]);
}

void TestPixArithmetic::multiplyEqualsTheReference()
{
    QFETCH(int, seed);
    Random random(static_cast<unsigned>(seed));
    const int width = random.between(1, 67);
    const int height = random.between(1, 5);
    const int scale = random.oneIn(3) ? random.between(0, 15) : 8;
    Block source = enginetest::randomBlock(random, width, height, 2, 0);
    Block destination = enginetest::randomBlock(random, width, height, 2, 0);
    source.randomize(random);
    destination.randomize(random);
    Block expected = destination;
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y) {
            expected.setWord(x, y,
                             reference::scaledProduct(static_cast<std::int16_t>(source.word(x, y)),
                                                      static_cast<std::int16_t>(destination.word(x, y)),
                                                      scale));
        }
    }
    QCOMPARE(zor::pixMultiplyInPlace16s(source.pixels<std::int16_t>(), source.step,
                                        destination.pixels<std::int16_t>(), destination.step, {width, height},
                                        scale),
             0);
    VERIFY_SAME(difference(destination, expected.storage, QString("scale %1").arg(scale)));
}

void TestPixArithmetic::subtractEqualsTheReference()
{
    QFETCH(int, seed);
    Random random(static_cast<unsigned>(seed));
    const int width = random.between(1, 67);
    const int height = random.between(1, 5);
    Block source = enginetest::randomBlock(random, width, height, 2, 0);
    Block destination = enginetest::randomBlock(random, width, height, 2, 0);
    source.randomize(random);
    destination.randomize(random);
    Block expected = destination;
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y) {
            const int left = destination.word(x, y) - source.word(x, y);
            expected.setWord(x, y, left < 0 ? 0 : left);
        }
    }
    QCOMPARE(zor::pixSubtractInPlace16u(source.pixels<std::uint16_t>(), source.step,
                                        destination.pixels<std::uint16_t>(), destination.step,
                                        {width, height}, 0),
             0);
    VERIFY_SAME(difference(destination, expected.storage, QString("seed %1").arg(seed)));
}

QTEST_APPLESS_MAIN(TestPixArithmetic)
#include "tst_pix_arithmetic.moc"
