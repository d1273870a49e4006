#include "engine/pix/PixAlloc.h"
#include "engine/pix/PixHistogram.h"
#include "tests/engine/EngineTesting.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

#include <algorithm>

#include <cstring>
#include <limits>

using enginetest::Block;
using enginetest::Poisons;
using enginetest::Random;

namespace {

/// Four floats or counts, one a channel.
using Floats = std::vector<float>;
using Counts = std::vector<std::int32_t>;

constexpr std::int32_t Untouched = 0x2A2A2A2A;

struct Plan
{
    Plan(std::int32_t type, float lower, float upper, std::int32_t levels)
        : block(80 + 4 * static_cast<std::size_t>(levels), 0xA5)
    {
        status = zor::pixHistogramInitUniform(type, &lower, &upper, &levels, 1, block.data());
    }

    /// The levels are the block's last words.
    int level(int index) const
    {
        std::int32_t value;
        std::memcpy(&value, block.data() + 80 + 4 * index, 4);
        return value;
    }

    std::vector<std::uint8_t> block;
    std::int32_t status;
};

} // namespace

class TestPixHistogram : public QObject
{
    Q_OBJECT

private slots:
    void sizesFollowTypeAndLevels_data();
    void sizesFollowTypeAndLevels();
    void sizeChecksComeInOrder_data();
    void sizeChecksComeInOrder();
    void initChecksComeInOrder_data();
    void initChecksComeInOrder();
    void planStartsWithTypeChannelsUniformAndMark();
    void levelsAreSpreadEvenly_data();
    void levelsAreSpreadEvenly();
    void spacingIsADouble();
    void everyChannelGetsItsLevels();
    void countChecksComeInOrder_data();
    void countChecksComeInOrder();
    void topLevelIsInNoBin();
    void pixelsFromBit15OnAreNegative();
    void smallEvenRegionsLeaveTheBufferAlone();
    void evenRegionsUseTheBufferFrom65536PixelsOn_data();
    void evenRegionsUseTheBufferFrom65536PixelsOn();
    void oneCounterForEachPixelValue();
    void randomShapesEqualTheReference_data();
    void randomShapesEqualTheReference();
    void largeRegionsEqualTheReference();
};

void TestPixHistogram::sizesFollowTypeAndLevels_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("levels");
    QTest::addColumn<int>("planSize");
    QTest::addColumn<int>("bufferSize");
    QTest::newRow("8 bits") << 1 << 256 << 80 + 4 * 256 << 1024;
    QTest::newRow("16 bits unsigned") << 5 << 1024 << 80 + 4 * 1024 << 262144;
    QTest::newRow("16 bits signed") << 7 << 65536 << 80 + 4 * 65536 << 262144;
    QTest::newRow("float") << 13 << 2 << 88 << 0;
    QTest::newRow("a plan without a size in 32 bits") << 1 << 0x20000000 << 0 << 1024;
}

void TestPixHistogram::sizesFollowTypeAndLevels()
{
    QFETCH(int, type);
    QFETCH(int, levels);
    QFETCH(int, planSize);
    QFETCH(int, bufferSize);
    const std::int32_t count = levels;
    std::int32_t plan = Untouched;
    std::int32_t buffer = Untouched;
    QCOMPARE(zor::pixHistogramSizes(type, {3, 4}, &count, 1, 1, &plan, &buffer), 0);
    QCOMPARE(plan, planSize);
    QCOMPARE(buffer, bufferSize);
}

void TestPixHistogram::sizeChecksComeInOrder_data()
{
    QTest::addColumn<int>("missing");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("levels");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("status");
    QTest::newRow("null levels, all else wrong") << 1 << 0 << 2 << 1 << 99 << -8;
    QTest::newRow("a null plan size") << 2 << 4 << 1 << 256 << 1 << -8;
    QTest::newRow("a null buffer size") << 3 << 4 << 1 << 256 << 1 << -8;
    QTest::newRow("an empty region, the rest wrong") << 0 << 0 << 2 << 1 << 99 << -6;
    QTest::newRow("2 channels, the rest wrong") << 0 << 4 << 2 << 1 << 99 << -53;
    QTest::newRow("0 channels") << 0 << 4 << 0 << 256 << 1 << -53;
    QTest::newRow("5 channels") << 0 << 4 << 5 << 256 << 1 << -53;
    QTest::newRow("1 level, the type wrong") << 0 << 4 << 1 << 1 << 99 << -107;
    QTest::newRow("a negative count of levels") << 0 << 4 << 1 << -5 << 1 << -107;
    QTest::newRow("an unknown type") << 0 << 4 << 1 << 2 << 2 << -12;
    QTest::newRow("type 0") << 0 << 4 << 1 << 2 << 0 << -12;
    QTest::newRow("3 channels") << 0 << 4 << 3 << 2 << 1 << 0;
    QTest::newRow("4 channels") << 0 << 4 << 4 << 2 << 1 << 0;
}

void TestPixHistogram::sizeChecksComeInOrder()
{
    QFETCH(int, missing);
    QFETCH(int, width);
    QFETCH(int, channels);
    QFETCH(int, levels);
    QFETCH(int, type);
    QFETCH(int, status);
    const Counts counts(5, levels);
    std::int32_t plan = Untouched;
    std::int32_t buffer = Untouched;
    QCOMPARE(zor::pixHistogramSizes(type, {width, 4}, missing == 1 ? nullptr : counts.data(), channels, 1,
                                    missing == 2 ? nullptr : &plan, missing == 3 ? nullptr : &buffer),
             status);
    QCOMPARE(plan == Untouched, status != 0);
    QCOMPARE(buffer == Untouched, status != 0);
}

void TestPixHistogram::initChecksComeInOrder_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("missing");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("levels");
    QTest::addColumn<float>("upper");
    QTest::addColumn<int>("status");
    QTest::newRow("an unknown type, all else wrong") << 99 << 4 << 2 << 1 << 0.0f << -12;
    QTest::newRow("a null lower level, the rest wrong") << 1 << 1 << 2 << 1 << 0.0f << -8;
    QTest::newRow("a null upper level") << 1 << 2 << 1 << 4 << 10.0f << -8;
    QTest::newRow("null counts") << 1 << 3 << 1 << 4 << 10.0f << -8;
    QTest::newRow("a null plan") << 1 << 4 << 1 << 4 << 10.0f << -8;
    QTest::newRow("2 channels, the rest wrong") << 1 << 0 << 2 << 1 << 0.0f << -53;
    QTest::newRow("1 level, the order wrong") << 1 << 0 << 1 << 1 << 0.0f << -107;
    QTest::newRow("the levels equal") << 1 << 0 << 1 << 4 << 0.0f << -7;
    QTest::newRow("the lower above the upper") << 7 << 0 << 1 << 4 << -1.0f << -7;
    QTest::newRow("an upper level that is no number")
        << 13 << 0 << 1 << 4 << std::numeric_limits<float>::quiet_NaN() << -7;
}

void TestPixHistogram::initChecksComeInOrder()
{
    QFETCH(int, type);
    QFETCH(int, missing);
    QFETCH(int, channels);
    QFETCH(int, levels);
    QFETCH(float, upper);
    QFETCH(int, status);
    const Floats lowers(4, 0.0f);
    const Floats uppers(4, upper);
    const Counts counts(4, levels);
    std::vector<std::uint8_t> plan(400, 0xA5);
    const std::vector<std::uint8_t> before = plan;
    QCOMPARE(zor::pixHistogramInitUniform(
                 type, missing == 1 ? nullptr : lowers.data(), missing == 2 ? nullptr : uppers.data(),
                 missing == 3 ? nullptr : counts.data(), channels, missing == 4 ? nullptr : plan.data()),
             status);
    QVERIFY(plan == before);
}

void TestPixHistogram::planStartsWithTypeChannelsUniformAndMark()
{
    const Plan plan(7, 0.0f, 3.0f, 4);
    std::int32_t head[3];
    std::memcpy(head, plan.block.data(), sizeof head);
    QCOMPARE(head[0], 7);
    QCOMPARE(head[1], 1);
    QCOMPARE(head[2], 1);
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(plan.block.data()) + 12, 4), QByteArray("hist"));
}

void TestPixHistogram::levelsAreSpreadEvenly_data()
{
    QTest::addColumn<float>("lower");
    QTest::addColumn<float>("upper");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("status");
    QTest::newRow("0 to 255 in 256 levels: level k is k") << 0.0f << 255.0f << 256 << 0;
    QTest::newRow("0 to 65535 in 65536 levels: level k is k") << 0.0f << 65535.0f << 65536 << 0;
    QTest::newRow("a spacing of 2.5 is truncated") << 0.0f << 10.0f << 5 << 0;
    QTest::newRow("a spacing of 85") << 0.0f << 255.0f << 4 << 0;
    QTest::newRow("negative levels are truncated toward zero") << -5.5f << 5.5f << 6 << 0;
    QTest::newRow("a spacing under 1 warns") << 0.0f << 10.0f << 256 << 48;
    QTest::newRow("two levels") << 3.9f << 7.9f << 2 << 0;
    QTest::newRow("an upper level beyond 32 bits") << 0.0f << 1e12f << 5 << 0;
}

void TestPixHistogram::levelsAreSpreadEvenly()
{
    QFETCH(float, lower);
    QFETCH(float, upper);
    QFETCH(int, count);
    QFETCH(int, status);
    const Plan plan(1, lower, upper, count);
    QCOMPARE(plan.status, status);
    const std::vector<int> levels = reference::uniformLevels(lower, upper, count);
    for (int k = 0; k < count; ++k)
        QVERIFY2(plan.level(k) == levels[static_cast<std::size_t>(k)],
                 qPrintable(QString("level %1: expected %2, actual %3")
                                .arg(k)
                                .arg(levels[static_cast<std::size_t>(k)])
                                .arg(plan.level(k))));
    if (lower == 0.0f && upper == static_cast<float>(count - 1)) {
        for (int k = 0; k < count; ++k)
            QCOMPARE(plan.level(k), k);
    }
}

void TestPixHistogram::spacingIsADouble()
{
    // 41 times the float nearest to 2 / 82 is just below 1.
    const Plan plan(1, 0.0f, 2.0f, 83);
    for (int k = 0; k < 83; ++k)
        QCOMPARE(plan.level(k), k < 41 ? 0 : k < 82 ? 1 : 2);
}

void TestPixHistogram::everyChannelGetsItsLevels()
{
    const Floats lowers{0.0f, 10.0f, 0.0f};
    const Floats uppers{2.0f, 30.0f, 1.0f};
    const Counts counts{3, 2, 4};
    std::int32_t planSize = 0;
    std::int32_t bufferSize = 0;
    QCOMPARE(zor::pixHistogramSizes(1, {1, 1}, counts.data(), 3, 1, &planSize, &bufferSize), 0);
    std::vector<std::uint8_t> plan(static_cast<std::size_t>(planSize), 0xA5);
    // The third channel's levels are a third apart.
    QCOMPARE(zor::pixHistogramInitUniform(1, lowers.data(), uppers.data(), counts.data(), 3, plan.data()),
             48);
    std::int32_t levels[9];
    QCOMPARE(plan.size(), 80 + sizeof levels);
    std::memcpy(levels, plan.data() + 80, sizeof levels);
    const std::int32_t expected[] = {0, 1, 2, 10, 30, 0, 0, 0, 1};
    for (int i = 0; i < 9; ++i)
        QCOMPARE(levels[i], expected[i]);
}

void TestPixHistogram::countChecksComeInOrder_data()
{
    QTest::addColumn<int>("missing");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("step8");
    QTest::addColumn<int>("step16");
    QTest::addColumn<bool>("marked");
    QTest::addColumn<int>("status");
    QTest::newRow("a null source, all else wrong") << 1 << 0 << 2 << 0 << 0 << false << -8;
    QTest::newRow("null bins") << 2 << 4 << 2 << 4 << 8 << true << -8;
    QTest::newRow("a null plan") << 3 << 4 << 2 << 4 << 8 << true << -8;
    QTest::newRow("a null buffer") << 4 << 4 << 2 << 4 << 8 << true << -8;
    QTest::newRow("width 0, the rest wrong") << 0 << 0 << 2 << 0 << 0 << false << -6;
    QTest::newRow("height 0") << 0 << 4 << 0 << 4 << 8 << true << -6;
    QTest::newRow("width negative") << 0 << -4 << 2 << 4 << 8 << true << -6;
    QTest::newRow("height negative") << 0 << 4 << -2 << 4 << 8 << true << -6;
    QTest::newRow("a step under a row, the plan wrong") << 0 << 4 << 2 << 3 << 7 << false << -14;
    QTest::newRow("a step of 0") << 0 << 4 << 2 << 0 << 0 << true << -14;
    QTest::newRow("a negative step") << 0 << 4 << 2 << -4 << -8 << true << -14;
    QTest::newRow("not a plan") << 0 << 4 << 2 << 4 << 8 << false << -5;
}

void TestPixHistogram::countChecksComeInOrder()
{
    QFETCH(int, missing);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, step8);
    QFETCH(int, step16);
    QFETCH(bool, marked);
    QFETCH(int, status);
    Block source(4, 2, 8, 2, 0, 0);
    Plan plan(1, 0.0f, 3.0f, 4);
    if (!marked)
        plan.block[12] = 'H';
    Counts bins(4, Untouched);
    std::vector<std::uint32_t> buffer(65536, 0xA5A5A5A5u);
    const std::vector<std::uint32_t> bufferBefore = buffer;
    QCOMPARE(zor::pixHistogram8u(missing == 1 ? nullptr : source.data(), step8, {width, height},
                                 missing == 2 ? nullptr : bins.data(),
                                 missing == 3 ? nullptr : plan.block.data(),
                                 missing == 4 ? nullptr : buffer.data()),
             status);
    QCOMPARE(zor::pixHistogram16s(missing == 1 ? nullptr : source.pixels<std::int16_t>(), step16,
                                  {width, height}, missing == 2 ? nullptr : bins.data(),
                                  missing == 3 ? nullptr : plan.block.data(),
                                  missing == 4 ? nullptr : buffer.data()),
             status);
    QCOMPARE(bins, Counts(4, Untouched));
    QVERIFY(buffer == bufferBefore);
}

void TestPixHistogram::topLevelIsInNoBin()
{
    const Plan plan(1, 0.0f, 255.0f, 256);
    const std::uint8_t image[] = {0, 254, 255, 255, 7, 7};
    Counts bins(256, Untouched);
    std::vector<std::uint32_t> buffer(256, 0xA5A5A5A5u);
    QCOMPARE(zor::pixHistogram8u(image, 3, {3, 2}, bins.data(), plan.block.data(), buffer.data()), 0);
    Counts expected(256, 0);
    expected[0] = 1;
    expected[7] = 2;
    expected[254] = 1;
    expected[255] = Untouched;
    QCOMPARE(bins, expected);
}

void TestPixHistogram::pixelsFromBit15OnAreNegative()
{
    const Plan plan(1, 0.0f, 65535.0f, 65536);
    const std::uint16_t image[] = {0, 32767, 0x8000, 0xFFFF};
    Counts bins(65536, Untouched);
    std::vector<std::uint32_t> buffer(65536, 0xA5A5A5A5u);
    QCOMPARE(zor::pixHistogram16s(reinterpret_cast<const std::int16_t*>(image), 8, {4, 1}, bins.data(),
                                  plan.block.data(), buffer.data()),
             0);
    Counts expected(65536, 0);
    expected[0] = 1;
    expected[32767] = 1;
    expected[65535] = Untouched;
    QVERIFY(bins == expected);
}

void TestPixHistogram::smallEvenRegionsLeaveTheBufferAlone()
{
    const std::int16_t image[] = {0, 1, 5};
    std::vector<std::uint32_t> buffer(65536, 0xA5A5A5A5u);
    const std::vector<std::uint32_t> before = buffer;
    const Plan even(7, 0.0f, 10.0f, 6);
    Counts bins(6, Untouched);
    QCOMPARE(zor::pixHistogram16s(image, 6, {3, 1}, bins.data(), even.block.data(), buffer.data()), 0);
    QVERIFY(buffer == before);
    QCOMPARE(bins, (Counts{2, 0, 1, 0, 0, Untouched}));

    const Plan uneven(7, 0.0f, 10.0f, 5);
    QCOMPARE(zor::pixHistogram16s(image, 6, {3, 1}, bins.data(), uneven.block.data(), buffer.data()), 0);
    QVERIFY(buffer != before);
    QCOMPARE(bins, (Counts{2, 0, 1, 0, 0, Untouched}));
}

void TestPixHistogram::evenRegionsUseTheBufferFrom65536PixelsOn_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("used");
    QTest::newRow("65535 pixels") << 257 << 255 << false;
    QTest::newRow("65536 pixels") << 256 << 256 << true;
}

void TestPixHistogram::evenRegionsUseTheBufferFrom65536PixelsOn()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, used);
    const Plan even(7, 0.0f, 10.0f, 6);
    Block words(width, height, 2 * width, 2, 0, 0);
    words.setWord(width - 1, height - 1, 5);
    std::vector<std::uint32_t> buffer(65536, 0xA5A5A5A5u);
    const std::vector<std::uint32_t> before = buffer;
    Counts bins(6, Untouched);
    QCOMPARE(zor::pixHistogram16s(words.pixels<std::int16_t>(), words.step, {width, height}, bins.data(),
                                  even.block.data(), buffer.data()),
             0);
    QCOMPARE(bins, (Counts{width * height - 1, 0, 1, 0, 0, Untouched}));
    QCOMPARE(buffer != before, used);
}

void TestPixHistogram::oneCounterForEachPixelValue()
{
    // Levels -40000, 0 and 40001: not evenly spaced, and beyond the values on both sides. After the counters
    // is a word that is neither counted nor written.
    const Plan plan(7, -40000.0f, 40001.0f, 3);
    const std::int16_t words[] = {-32768, -1, 0, 32767};
    std::vector<std::uint32_t> buffer16(65536 + 1, 0xA5A5A5A5u);
    Counts bins(3, Untouched);
    QCOMPARE(zor::pixHistogram16s(words, 8, {4, 1}, bins.data(), plan.block.data(), buffer16.data()), 0);
    QCOMPARE(bins, (Counts{2, 2, Untouched}));
    QCOMPARE(buffer16.back(), 0xA5A5A5A5u);
    const std::uint8_t bytes[] = {0, 1, 255, 255};
    std::vector<std::uint32_t> buffer8(256 + 1, 0xA5A5A5A5u);
    QCOMPARE(zor::pixHistogram8u(bytes, 4, {4, 1}, bins.data(), plan.block.data(), buffer8.data()), 0);
    QCOMPARE(bins, (Counts{0, 4, Untouched}));
    QCOMPARE(buffer8.back(), 0xA5A5A5A5u);
}

void TestPixHistogram::randomShapesEqualTheReference_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 60; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void TestPixHistogram::randomShapesEqualTheReference()
{
    QFETCH(int, seed);
    Random random(static_cast<unsigned>(seed));
    const int width = random.between(1, 67);
    const int height = random.between(1, 6);
    const int count = random.between(2, 300);
    const auto lower = static_cast<float>(random.oneIn(3) ? random.real(-40000.0, 100.0) : 0.0);
    const auto upper = static_cast<float>(random.oneIn(2) ? lower + random.real(0.5, 40000.0)
                                                          : lower + (count - 1) * random.between(1, 40));
    const Plan plan(7, lower, upper, count);
    const std::vector<int> levels = reference::uniformLevels(lower, upper, count);
    Block bytes = enginetest::randomBlock(random, width, height, 1, 0);
    Block words = enginetest::randomBlock(random, width, height, 2, 0);
    bytes.randomize(random);
    words.randomize(random);
    std::vector<int> values8;
    std::vector<int> values16;
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y) {
            if (random.oneIn(2))
                words.setWord(x, y, random.between(-3, 300));
            values8.push_back(bytes.storage[bytes.at(x, y, 1)]);
            values16.push_back(static_cast<std::int16_t>(words.word(x, y)));
        }
    }
    Counts expected8 = reference::histogram(values8, levels);
    Counts expected16 = reference::histogram(values16, levels);
    for (const std::uint8_t poison : Poisons) {
        // The last entry is not written.
        expected8.push_back(poison);
        expected16.push_back(poison);
        Counts bins8(static_cast<std::size_t>(count), poison);
        Counts bins16(static_cast<std::size_t>(count), poison);
        std::vector<std::uint32_t> buffer8(256, poison);
        std::vector<std::uint32_t> buffer16(65536, poison);
        QCOMPARE(zor::pixHistogram8u(bytes.data(), bytes.step, {width, height}, bins8.data(),
                                     plan.block.data(), buffer8.data()),
                 0);
        QCOMPARE(zor::pixHistogram16s(words.pixels<std::int16_t>(), words.step, {width, height},
                                      bins16.data(), plan.block.data(), buffer16.data()),
                 0);
        QCOMPARE(bins8, expected8);
        QCOMPARE(bins16, expected16);
        expected8.pop_back();
        expected16.pop_back();
    }
}

void TestPixHistogram::largeRegionsEqualTheReference()
{
    // 65536 pixels and more go through the buffer.
    Random random(7);
    const Plan plan(7, 0.0f, 63.0f, 64);
    Block words(257, 256, 516, 2, 1, 0);
    std::vector<int> values;
    for (int y = 0; y < words.height; ++y) {
        for (int x = 0; x < words.width; ++x) {
            const int value = random.between(-2, 70);
            words.setWord(x, y, value);
            values.push_back(value);
        }
    }
    Counts bins(64, Untouched);
    std::vector<std::uint32_t> buffer(65536, 0xA5A5A5A5u);
    QCOMPARE(zor::pixHistogram16s(words.pixels<std::int16_t>(), words.step, {257, 256}, bins.data(),
                                  plan.block.data(), buffer.data()),
             0);
    Counts expected = reference::histogram(values, reference::uniformLevels(0.0f, 63.0f, 64));
    expected.push_back(Untouched);
    QCOMPARE(bins, expected);
    QCOMPARE(buffer[32768 + 70], static_cast<std::uint32_t>(std::count(values.begin(), values.end(), 70)));
}

QTEST_APPLESS_MAIN(TestPixHistogram)
#include "tst_pix_histogram.moc"
