#include "host/quality/FrameNoise.h"
#include "tests/host/MonoSamples.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

using namespace zor;

Q_DECLARE_METATYPE(std::vector<int>)

/// The temporal noise of two frames, and how many frames it takes to average it away.
class TestFrameNoise : public QObject
{
    Q_OBJECT

private slots:
    void knownFramesHaveKnownNoise_data();
    void knownFramesHaveKnownNoise();
    void noiseIsThatOfTheDefinition_data();
    void noiseIsThatOfTheDefinition();
    void aLargeChangeOfLightLeavesTheNoise();
    void unlikeFramesAreRefused_data();
    void unlikeFramesAreRefused();
    void framesAreCounted_data();
    void framesAreCounted();
    void theCountIsTheLeastThatReachesTheAccuracy();
    void anAccuracyIsANumberAboveZero_data();
    void anAccuracyIsANumberAboveZero();
};

namespace {

constexpr std::uint32_t Most = 1024;

} // namespace

void TestFrameNoise::knownFramesHaveKnownNoise_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<std::vector<int>>("one");
    QTest::addColumn<std::vector<int>>("other");
    QTest::addColumn<double>("mean");
    QTest::addColumn<double>("variance");
    using Pixels = std::vector<int>;
    QTest::newRow("equal frames have none, whatever their pattern")
        << 8 << Pixels{1, 200, 30, 4} << Pixels{1, 200, 30, 4} << 58.75 << 0.0;
    QTest::newRow("a change of light is none")
        << 8 << Pixels{1, 200, 30, 4} << Pixels{11, 210, 40, 14} << 63.75 << 0.0;
    // Differences 2, -2, 2, -2: half of 4.
    QTest::newRow("half the mean of the squared difference")
        << 8 << Pixels{12, 10, 12, 10} << Pixels{10, 12, 10, 12} << 11.0 << 2.0;
    // Differences 3, -1, 3, -1: half of 5 less half of 1.
    QTest::newRow("less half the squared difference of the means")
        << 12 << Pixels{4003, 10, 13, 10} << Pixels{4000, 11, 10, 11} << 1008.5 << 2.0;
    // The other way round: half of 5 less half of 1.
    QTest::newRow("the second frame is the brighter one")
        << 12 << Pixels{4000, 11, 10, 11} << Pixels{4003, 10, 13, 10} << 1008.5 << 2.0;
    // Differences 65535 and -65535 by turns.
    QTest::newRow("the largest there is")
        << 16 << Pixels{65535, 0, 65535, 0} << Pixels{0, 65535, 0, 65535} << 32767.5 << 65535.0 * 65535.0 / 2;
}

void TestFrameNoise::knownFramesHaveKnownNoise()
{
    QFETCH(int, depth);
    QFETCH(std::vector<int>, one);
    QFETCH(std::vector<int>, other);
    const FrameNoise noise =
        frameNoise(MonoSamples(depth, 2, 2, one, 3).view(), MonoSamples(depth, 2, 2, other).view());
    QTEST(noise.mean, "mean");
    QTEST(noise.variance, "variance");
}

void TestFrameNoise::noiseIsThatOfTheDefinition_data()
{
    QTest::addColumn<int>("depth");
    for (const int depth : {8, 10, 12, 16})
        QTest::addRow("%d bits", depth) << depth;
}

void TestFrameNoise::noiseIsThatOfTheDefinition()
{
    QFETCH(int, depth);
    std::mt19937 random(static_cast<unsigned>(depth));
    for (int run = 0; run < 100; ++run) {
        const int width = 1 + int(random() % 40);
        const int height = 1 + int(random() % 8);
        std::vector<int> one(std::size_t(width) * std::size_t(height));
        std::vector<int> other(one.size());
        long double squares = 0, mean = 0, otherMean = 0;
        for (std::size_t i = 0; i < one.size(); ++i) {
            one[i] = int(random() % (1u << depth));
            other[i] = int(random() % (1u << depth));
            squares += std::pow(one[i] - other[i], 2.0L) / one.size();
            mean += one[i] / static_cast<long double>(one.size());
            otherMean += other[i] / static_cast<long double>(one.size());
        }
        const FrameNoise noise =
            frameNoise(MonoSamples(depth, width, height, one, int(random() % 5)).view(),
                       MonoSamples(depth, width, height, other, int(random() % 5)).view());
        QVERIFY(std::abs(noise.mean - double(mean + otherMean) / 2) <= 1e-12 * noise.mean);
        const double expected = double(squares / 2 - std::pow(mean - otherMean, 2.0L) / 2);
        QVERIFY2(std::abs(noise.variance - expected) <= 1e-12 * double(squares),
                 qPrintable(QString("%1 and not %2").arg(noise.variance).arg(expected)));
    }
}

void TestFrameNoise::aLargeChangeOfLightLeavesTheNoise()
{
    // One pixel of a million differs by one more than the others.
    std::vector<int> one(1000000, 65534);
    one.back() = 65535;
    const FrameNoise noise = frameNoise(MonoSamples(16, 1000, 1000, one).view(),
                                        MonoSamples(16, 1000, 1000, std::vector<int>(1000000)).view());
    const double share = 1e-6;
    QVERIFY2(std::abs(noise.variance - share * (1 - share) / 2) < 1e-18,
             qPrintable(QString::number(noise.variance)));
}

void TestFrameNoise::unlikeFramesAreRefused_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("another depth") << 10 << 4 << 2;
    QTest::newRow("another width") << 12 << 2 << 2;
    QTest::newRow("another height") << 12 << 4 << 1;
}

void TestFrameNoise::unlikeFramesAreRefused()
{
    QFETCH(int, depth);
    QFETCH(int, width);
    QFETCH(int, height);
    const MonoSamples one(12, 4, 2, std::vector<int>(8));
    const MonoSamples other(depth, width, height, std::vector<int>(8));
    QVERIFY_EXCEPTION_THROWN(frameNoise(one.view(), other.view()), std::invalid_argument);
}

void TestFrameNoise::framesAreCounted_data()
{
    QTest::addColumn<double>("mean");
    QTest::addColumn<double>("deviation");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<double>("accuracy");
    QTest::addColumn<int>("answer");
    QTest::addColumn<quint32>("count");
    const int count = NeededFrames::Count;
    // All figures have few bits, so that quotients are exact. 16 / (1024 / 1024) = 16; 256 / height.
    constexpr double thousandth = 1.0 / 1024;
    const auto row = [](const char* name, double mean, double deviation, quint32 width, quint32 height,
                        double accuracy, int answer, quint32 frames) {
        QTest::newRow(name) << mean << deviation << width << height << accuracy << answer << frames;
    };
    row("a column's mean is over the rows", 1024, 16, 1000, 8, thousandth, count, 32);
    row("a row's mean is over the columns", 1024, 16, 8, 1000, thousandth, count, 32);
    row("a little more than a whole number", 1024, 16, 255, 255, thousandth, count, 2);
    row("just a whole number", 1024, 16, 256, 256, thousandth, count, 1);
    row("less than one", 1024, 16, 1000, 1000, thousandth, count, 1);
    row("no noise", 1024, 0, 1, 1, thousandth, count, 1);
    row("half the accuracy: a quarter of the frames", 1024, 16, 8, 8, 2 * thousandth, count, 8);
    row("half the light: four times the frames", 512, 16, 8, 8, thousandth, count, 128);
    row("as many as there may be", 1024, 32, 1, 1, thousandth, count, 1024);
    row("one more", 1024, 32.001, 1, 1, thousandth, NeededFrames::TooMany, 0);
    row("more than any number has room for", 1024, 32, 1, 1, 1e-30, NeededFrames::TooMany, 0);
    row("an accuracy that no quotient has room for", 1024, 0, 1, 1, 1e-320, NeededFrames::TooMany, 0);
    row("no light", 0, 16, 8, 8, thousandth, NeededFrames::NoLight, 0);
    row("neither light nor noise", 0, 0, 8, 8, thousandth, NeededFrames::NoLight, 0);
}

void TestFrameNoise::framesAreCounted()
{
    QFETCH(double, mean);
    QFETCH(double, deviation);
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(double, accuracy);
    const NeededFrames needed = neededFrames({mean, deviation * deviation}, width, height, accuracy, Most);
    QTEST(int(needed.answer), "answer");
    QTEST(needed.count, "count");
}

/// By the definition: the deviation of a mean over all pixels of the shorter side in all frames.
void TestFrameNoise::theCountIsTheLeastThatReachesTheAccuracy()
{
    std::mt19937 random(5);
    const auto reached = [](const FrameNoise& noise, std::uint32_t side, std::uint32_t frames) {
        return std::sqrt(noise.variance / (double(side) * frames)) / noise.mean;
    };
    for (int run = 0; run < 1000; ++run) {
        const FrameNoise noise{1.0 + random() % 4000, (1 + random() % 100000) / 100.0};
        const std::uint32_t width = 1 + random() % 2000;
        const std::uint32_t height = 1 + random() % 2000;
        const double accuracy = (1 + random() % 1000) / 1e5;
        const NeededFrames needed = neededFrames(noise, width, height, accuracy, Most);
        const std::uint32_t side = std::min(width, height);
        if (needed.answer == NeededFrames::TooMany) {
            QVERIFY(reached(noise, side, Most) > accuracy);
            continue;
        }
        QVERIFY(reached(noise, side, needed.count) <= accuracy * (1 + 1e-12));
        QVERIFY(needed.count == 1 || reached(noise, side, needed.count - 1) > accuracy * (1 - 1e-12));
    }
}

void TestFrameNoise::anAccuracyIsANumberAboveZero_data()
{
    QTest::addColumn<double>("accuracy");
    QTest::newRow("0") << 0.0;
    QTest::newRow("negative") << -0.001;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
}

void TestFrameNoise::anAccuracyIsANumberAboveZero()
{
    QFETCH(double, accuracy);
    QVERIFY_EXCEPTION_THROWN(neededFrames({100.0, 1.0}, 8, 8, accuracy, Most), std::invalid_argument);
}

QTEST_APPLESS_MAIN(TestFrameNoise)
#include "tst_frame_noise.moc"
