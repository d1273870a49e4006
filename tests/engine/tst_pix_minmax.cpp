#include "engine/pix/PixMinMax.h"
#include "tests/engine/EngineTesting.h"

#include <QtTest>

#include <algorithm>

#include <limits>

using enginetest::Block;
using enginetest::Poisons;
using enginetest::Random;

class TestPixMinmax : public QObject
{
    Q_OBJECT

private slots:
    void checksComeInOrderAndLeaveTheOutputsAlone_data();
    void checksComeInOrderAndLeaveTheOutputsAlone();
    void locateChecksComeInOrder_data();
    void locateChecksComeInOrder();
    void locateAnswersTheFirstPlace();
    void locateGoesOnAfterOneExtremeOfTheType_data();
    void locateGoesOnAfterOneExtremeOfTheType();
    void locateTakesNullOutputs();
    void sixteenBitPixelsHaveASign();
    void laterRowsCountUntilBothExtremesWereSeen();
    void randomShapesEqualTheDefinition_data();
    void randomShapesEqualTheDefinition();
};

void TestPixMinmax::checksComeInOrderAndLeaveTheOutputsAlone_data()
{
    QTest::addColumn<int>("missing");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("status");
    QTest::newRow("a null source") << 1 << 2 << 2 << -8;
    QTest::newRow("a null minimum") << 2 << 2 << 2 << -8;
    QTest::newRow("a null maximum") << 3 << 2 << 2 << -8;
    QTest::newRow("null goes before the region") << 3 << 0 << 0 << -8;
    QTest::newRow("width 0") << 0 << 0 << 2 << -6;
    QTest::newRow("height 0") << 0 << 2 << 0 << -6;
    QTest::newRow("width negative") << 0 << -2 << 2 << -6;
    QTest::newRow("height negative") << 0 << 2 << -2 << -6;
}

void TestPixMinmax::checksComeInOrderAndLeaveTheOutputsAlone()
{
    QFETCH(int, missing);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, status);
    Block source(2, 2, 4, 2, 0, 0x33);
    std::uint8_t least8 = 0xA5;
    std::uint8_t greatest8 = 0x5A;
    QCOMPARE(zor::pixMinMax8u(missing == 1 ? nullptr : source.data(), 4, {width, height},
                              missing == 2 ? nullptr : &least8, missing == 3 ? nullptr : &greatest8),
             status);
    QCOMPARE(int{least8}, 0xA5);
    QCOMPARE(int{greatest8}, 0x5A);
    std::int16_t least16 = 0x1234;
    std::int16_t greatest16 = 0x4321;
    QCOMPARE(zor::pixMinMax16s(missing == 1 ? nullptr : source.pixels<std::int16_t>(), 4, {width, height},
                               missing == 2 ? nullptr : &least16, missing == 3 ? nullptr : &greatest16),
             status);
    QCOMPARE(int{least16}, 0x1234);
    QCOMPARE(int{greatest16}, 0x4321);
}

void TestPixMinmax::locateChecksComeInOrder_data()
{
    QTest::addColumn<bool>("haveSource");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("status");
    QTest::newRow("a null source") << false << 2 << 2 << 4 << -8;
    QTest::newRow("null goes before the region") << false << 0 << 2 << 3 << -8;
    QTest::newRow("width 0") << true << 0 << 2 << 4 << -6;
    QTest::newRow("height 0") << true << 2 << 0 << 4 << -6;
    QTest::newRow("width negative") << true << -1 << 2 << 4 << -6;
    QTest::newRow("the region goes before the step") << true << 2 << -1 << 1 << -6;
    QTest::newRow("a step under a row") << true << 2 << 2 << 2 << -14;
    QTest::newRow("a step under a row that is odd as well") << true << 2 << 2 << 3 << -14;
    QTest::newRow("a negative step") << true << 2 << 2 << -4 << -14;
    QTest::newRow("a width whose row has no size in 32 bits") << true << 0x60000000 << 1 << 4 << -14;
    QTest::newRow("an odd step") << true << 2 << 2 << 5 << -108;
    QTest::newRow("an odd step for one row") << true << 1 << 1 << 3 << -108;
}

void TestPixMinmax::locateChecksComeInOrder()
{
    QFETCH(bool, haveSource);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, step);
    QFETCH(int, status);
    Block source(2, 2, 4, 2, 0, 0x33);
    float least = -1.0f;
    float greatest = -2.0f;
    zor::PixelPosition leastAt{-3, -4};
    zor::PixelPosition greatestAt{-5, -6};
    QCOMPARE(zor::pixMinMaxLocate16u(haveSource ? source.pixels<std::uint16_t>() : nullptr, step,
                                     {width, height}, &least, &greatest, &leastAt, &greatestAt),
             status);
    QCOMPARE(least, -1.0f);
    QCOMPARE(greatest, -2.0f);
    QCOMPARE(leastAt.x, -3);
    QCOMPARE(leastAt.y, -4);
    QCOMPARE(greatestAt.x, -5);
    QCOMPARE(greatestAt.y, -6);
}

void TestPixMinmax::locateAnswersTheFirstPlace()
{
    // Both extremes occur several times: the topmost row wins, in it the leftmost column.
    const std::uint16_t image[] = {5, 6, 7, 5, //
                                   9, 2, 2, 9, //
                                   2, 9, 5, 5};
    float least = 0;
    float greatest = 0;
    zor::PixelPosition leastAt{};
    zor::PixelPosition greatestAt{};
    QCOMPARE(zor::pixMinMaxLocate16u(image, 8, {4, 3}, &least, &greatest, &leastAt, &greatestAt), 0);
    QCOMPARE(least, 2.0f);
    QCOMPARE(greatest, 9.0f);
    QCOMPARE(leastAt.x, 1);
    QCOMPARE(leastAt.y, 1);
    QCOMPARE(greatestAt.x, 0);
    QCOMPARE(greatestAt.y, 1);
}

void TestPixMinmax::locateGoesOnAfterOneExtremeOfTheType_data()
{
    QTest::addColumn<QVector<quint16>>("pixels"); // two a row
    QTest::addColumn<QVector<int>>("expected");   // least, its place, greatest, its place
    QTest::newRow("a 0 in the first row, the greatest in the last")
        << QVector<quint16>({0, 7, 0, 9, 8, 600}) << QVector<int>({0, 0, 600, 5});
    QTest::newRow("a 65535 in the first row, the least in the last")
        << QVector<quint16>({65535, 7, 9, 9, 8, 3}) << QVector<int>({3, 5, 65535, 0});
    QTest::newRow("both in the first row, and again")
        << QVector<quint16>({0, 65535, 0, 65535, 65535, 0}) << QVector<int>({0, 0, 65535, 1});
}

void TestPixMinmax::locateGoesOnAfterOneExtremeOfTheType()
{
    QFETCH(QVector<quint16>, pixels);
    QFETCH(QVector<int>, expected);
    float least = -1;
    float greatest = -1;
    zor::PixelPosition leastAt{};
    zor::PixelPosition greatestAt{};
    QCOMPARE(zor::pixMinMaxLocate16u(pixels.constData(), 4, {2, 3}, &least, &greatest, &leastAt, &greatestAt),
             0);
    QCOMPARE(
        QVector<int>({int(least), 2 * leastAt.y + leastAt.x, int(greatest), 2 * greatestAt.y + greatestAt.x}),
        expected);
}

void TestPixMinmax::locateTakesNullOutputs()
{
    const std::uint16_t image[] = {0xFFFF, 3};
    float greatest = 0;
    zor::PixelPosition leastAt{};
    QCOMPARE(zor::pixMinMaxLocate16u(image, 4, {2, 1}, nullptr, nullptr, nullptr, nullptr), 0);
    QCOMPARE(zor::pixMinMaxLocate16u(image, 4, {2, 1}, nullptr, &greatest, &leastAt, nullptr), 0);
    QCOMPARE(greatest, 65535.0f);
    QCOMPARE(leastAt.x, 1);
}

void TestPixMinmax::sixteenBitPixelsHaveASign()
{
    const std::int16_t image[] = {-1, 0, 5, -32768, 32767, 1};
    std::int16_t least = 0;
    std::int16_t greatest = 0;
    QCOMPARE(zor::pixMinMax16s(image, 6, {3, 1}, &least, &greatest), 0);
    QCOMPARE(int{least}, -1);
    QCOMPARE(int{greatest}, 5);
    QCOMPARE(zor::pixMinMax16s(image, 6, {3, 2}, &least, &greatest), 0);
    QCOMPARE(int{least}, -32768);
    QCOMPARE(int{greatest}, 32767);
}

void TestPixMinmax::laterRowsCountUntilBothExtremesWereSeen()
{
    const std::uint8_t image[] = {0, 7, 9, 8, 255, 3};
    std::uint8_t least = 1;
    std::uint8_t greatest = 1;
    QCOMPARE(zor::pixMinMax8u(image, 2, {2, 2}, &least, &greatest), 0);
    QCOMPARE(int{least}, 0);
    QCOMPARE(int{greatest}, 9);
    QCOMPARE(zor::pixMinMax8u(image, 2, {2, 3}, &least, &greatest), 0);
    QCOMPARE(int{least}, 0);
    QCOMPARE(int{greatest}, 255);
}

void TestPixMinmax::randomShapesEqualTheDefinition_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 80; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void TestPixMinmax::randomShapesEqualTheDefinition()
{
    QFETCH(int, seed);
    Random random(static_cast<unsigned>(seed));
    const int width = random.between(1, 67);
    const int height = random.between(1, 6);
    Block words = enginetest::randomBlock(random, width, height, 2, 0, false);
    words.randomize(random);
    Block bytes = enginetest::randomBlock(random, width, height, 1, 0);
    bytes.randomize(random);
    // Few values make equal extremes in several places likely.
    const bool fewValues = random.oneIn(2);
    int least16s = 99999;
    int greatest16s = -99999;
    int least16u = 99999;
    int greatest16u = -1;
    int least8 = 999;
    int greatest8 = -1;
    int leastPlace = 0;
    int greatestPlace = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (fewValues)
                words.setWord(x, y, random.between(65530, 65535));
            const int word = words.word(x, y);
            const int asSigned = word > 32767 ? word - 65536 : word;
            const int byte = bytes.storage[bytes.at(x, y, 1)];
            least16s = std::min(least16s, asSigned);
            greatest16s = std::max(greatest16s, asSigned);
            least8 = std::min(least8, byte);
            greatest8 = std::max(greatest8, byte);
            if (word < least16u) {
                least16u = word;
                leastPlace = y * width + x;
            }
            if (word > greatest16u) {
                greatest16u = word;
                greatestPlace = y * width + x;
            }
        }
    }
    for (const std::uint8_t poison : Poisons) {
        std::uint8_t minimum8 = poison;
        std::uint8_t maximum8 = poison;
        std::int16_t minimum16 = poison;
        std::int16_t maximum16 = poison;
        float minimum = poison;
        float maximum = poison;
        zor::PixelPosition minimumAt{poison, poison};
        zor::PixelPosition maximumAt{poison, poison};
        QCOMPARE(zor::pixMinMax8u(bytes.data(), bytes.step, {width, height}, &minimum8, &maximum8), 0);
        QCOMPARE(int{minimum8}, least8);
        QCOMPARE(int{maximum8}, greatest8);
        QCOMPARE(zor::pixMinMax16s(words.pixels<std::int16_t>(), words.step, {width, height}, &minimum16,
                                   &maximum16),
                 0);
        QCOMPARE(int{minimum16}, least16s);
        QCOMPARE(int{maximum16}, greatest16s);
        QCOMPARE(zor::pixMinMaxLocate16u(words.pixels<std::uint16_t>(), words.step, {width, height}, &minimum,
                                         &maximum, &minimumAt, &maximumAt),
                 0);
        QCOMPARE(minimum, static_cast<float>(least16u));
        QCOMPARE(maximum, static_cast<float>(greatest16u));
        QCOMPARE(minimumAt.y * width + minimumAt.x, leastPlace);
        QCOMPARE(maximumAt.y * width + maximumAt.x, greatestPlace);
    }
}

QTEST_APPLESS_MAIN(TestPixMinmax)
#include "tst_pix_minmax.moc"
