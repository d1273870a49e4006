#include "host/simulate/NormalTable.h"
#include "host/simulate/SimulatedFrame.h"
#include "host/simulate/SimulatedScene.h"

#include <QtTest>

#include <cmath>

using namespace zor;

/// The frames that a simulated sensor takes one after the other.
class TestSimulatedScene : public QObject
{
    Q_OBJECT

private slots:
    void normalNumbersHaveTheirMoments();
    void normalNumbersAreQuantiles();
    void withoutNoiseEveryFrameIsTheSimulatedOne_data();
    void withoutNoiseEveryFrameIsTheSimulatedOne();
    void greyValuesFollowTheirDefinition_data();
    void greyValuesFollowTheirDefinition();
    void rowsDependOnTheirNumbersAlone();
    void noiseHasItsDeviation_data();
    void noiseHasItsDeviation();
    void fewElectronsAreCounted_data();
    void fewElectronsAreCounted();
    void thePatternStaysAndTheNoiseDoesNot();
};

namespace {

std::vector<std::uint16_t> exposed(const SimulatedScene& scene, std::uint64_t number,
                                   const TemporalNoise& noise)
{
    const SensorModel& model = scene.model();
    std::vector<std::uint16_t> frame(std::size_t{model.width} * model.height);
    for (std::uint32_t y = 0; y < model.height; ++y)
        scene.exposeRow(number, y, noise, &frame[std::size_t{y} * model.width]);
    return frame;
}

/// All pixels get the same light.
SensorModel evenSensor()
{
    SensorModel model;
    model.width = 301;
    model.height = 300;
    model.depth = 16;
    model.vignettingPercent = 0.0;
    model.columnFpnPercent = 0.0;
    model.rowFpnPercent = 0.0;
    model.prnuPercent = 0.0;
    return model;
}

struct Moments
{
    double mean;
    double variance;
};

template <typename Values> Moments momentsOf(const Values& values)
{
    double sum = 0.0;
    double squares = 0.0;
    for (const auto value : values) {
        sum += value;
        squares += double(value) * value;
    }
    const auto count = static_cast<double>(values.size());
    return {sum / count, squares / count - sum / count * (sum / count)};
}

bool near(double actual, double expected, double tolerance)
{
    return std::abs(actual - expected) <= tolerance;
}

} // namespace

#define VERIFY_NEAR(actual, expected, tolerance)                                                             \
    QVERIFY2(near(actual, expected, tolerance),                                                              \
             qPrintable(QStringLiteral("actual %1, expected %2").arg(actual).arg(expected)))

void TestSimulatedScene::normalNumbersHaveTheirMoments()
{
    const NormalTable& table = NormalTable::instance();
    constexpr std::uint64_t size = std::uint64_t{1} << NormalTable::IndexBits;
    double moments[5] = {};
    for (std::uint64_t i = 0; i < size; ++i)
        for (int power = 1; power <= 4; ++power)
            moments[power] += std::pow(double(table.at(i)), power) / size;
    VERIFY_NEAR(moments[1], 0.0, 1e-9);
    VERIFY_NEAR(moments[2], 1.0, 1e-6);
    VERIFY_NEAR(moments[3], 0.0, 1e-9);
    // What is beyond four deviations is missing.
    VERIFY_NEAR(moments[4], 3.0, 0.01);
}

void TestSimulatedScene::normalNumbersAreQuantiles()
{
    const NormalTable& table = NormalTable::instance();
    constexpr std::uint64_t size = std::uint64_t{1} << NormalTable::IndexBits;
    // Shares of the distribution below -3, -2, -1, 0.5 and 3 deviations, from a printed table.
    const std::pair<double, double> shares[] = {
        {-3.0, 0.0013499}, {-2.0, 0.0227501}, {-1.0, 0.1586553}, {0.5, 0.6914625}, {3.0, 0.9986501}};
    for (const auto& [place, share] : shares) {
        std::uint64_t below = 0;
        for (std::uint64_t i = 0; i < size; ++i)
            below += double(table.at(i)) < place;
        VERIFY_NEAR(double(below) / size, share, 0.0002);
    }
    for (std::uint64_t i = 1; i < size; ++i)
        QVERIFY(table.at(i) > table.at(i - 1));
    QCOMPARE(table.at(size + 5), table.at(5));
}

void TestSimulatedScene::withoutNoiseEveryFrameIsTheSimulatedOne_data()
{
    QTest::addColumn<uint>("depth");
    QTest::addColumn<double>("dsnu");
    QTest::addColumn<double>("prnuPercent");
    QTest::newRow("8 bits") << 8u << 0.0 << 0.5;
    QTest::newRow("16 bits") << 16u << 0.0 << 0.5;
    QTest::newRow("with a dark signal") << 12u << 300.0 << 0.5;
    QTest::newRow("without unevenness of the pixels") << 12u << 0.0 << 0.0;
}

void TestSimulatedScene::withoutNoiseEveryFrameIsTheSimulatedOne()
{
    QFETCH(uint, depth);
    QFETCH(double, dsnu);
    QFETCH(double, prnuPercent);
    SensorModel model;
    model.width = 63;
    model.height = 41;
    model.depth = depth;
    model.dsnu = dsnu;
    model.prnuPercent = prnuPercent;
    model.blackLevel = 12.0;
    model.seed = 4;
    // The scene does not use the model's own noise.
    const SimulatedScene scene(model);
    model.darkNoise = 0.0;
    model.shotNoise = false;
    const std::vector<std::uint16_t> expected = simulateFrame(model);
    QCOMPARE(exposed(scene, 0, {0.0, false}), expected);
    QCOMPARE(exposed(scene, 77, {0.0, false}), expected);
}

void TestSimulatedScene::greyValuesFollowTheirDefinition_data()
{
    QTest::addColumn<double>("darkNoise");
    QTest::addColumn<bool>("shotNoise");
    QTest::addColumn<double>("levelPercent");
    QTest::addColumn<QList<int>>("row");
    QTest::newRow("dark noise alone")
        << 30.0 << false << 50.0 << QList<int>{33261, 33208, 33306, 33419, 33215, 33341};
    QTest::newRow("shot noise alone")
        << 0.0 << true << 50.0 << QList<int>{33245, 33069, 33396, 33773, 33091, 33511};
    QTest::newRow("one deviation of both")
        << 100.0 << true << 50.0 << QList<int>{33236, 32987, 33450, 33982, 33018, 33612};
    QTest::newRow("20 electrons, counted")
        << 0.0 << true << 0.1 << QList<int>{1048, 1065, 1077, 1071, 1074, 1074};
    QTest::newRow("20 electrons, counted, and dark noise")
        << 2.0 << true << 0.1 << QList<int>{1048, 1061, 1080, 1081, 1071, 1079};
}

/// Six pixels of row 3 of frame 5, worked out apart from this code.
void TestSimulatedScene::greyValuesFollowTheirDefinition()
{
    QFETCH(double, darkNoise);
    QFETCH(bool, shotNoise);
    QFETCH(double, levelPercent);
    SensorModel model = evenSensor();
    model.width = 6;
    model.height = 4;
    model.seed = 2;
    model.levelPercent = levelPercent;
    model.blackLevel = 1000.0;
    std::vector<std::uint16_t> grey(model.width);
    SimulatedScene(model).exposeRow(5, 3, {darkNoise, shotNoise}, grey.data());
    QTEST(QList<int>(grey.begin(), grey.end()), "row");
}

void TestSimulatedScene::rowsDependOnTheirNumbersAlone()
{
    SensorModel model;
    model.width = 70;
    model.height = 3;
    const TemporalNoise noise{8.0, true};
    const SimulatedScene scene(model);
    const std::vector<std::uint16_t> frame = exposed(scene, 6, noise);
    QCOMPARE(exposed(SimulatedScene(model), 6, noise), frame);
    std::vector<std::uint16_t> last(model.width);
    scene.exposeRow(6, 2, noise, last.data());
    QCOMPARE(last, std::vector<std::uint16_t>(frame.end() - 70, frame.end()));
    QVERIFY(exposed(scene, 7, noise) != frame);
    model.seed = 2;
    QVERIFY(exposed(SimulatedScene(model), 6, noise) != frame);
}

void TestSimulatedScene::noiseHasItsDeviation_data()
{
    QTest::addColumn<double>("electrons");
    QTest::addColumn<double>("darkNoise");
    QTest::addColumn<bool>("shotNoise");
    QTest::addColumn<double>("variance");
    QTest::newRow("dark noise alone") << 10000.0 << 30.0 << false << 900.0;
    QTest::newRow("shot noise alone") << 10000.0 << 0.0 << true << 10000.0;
    QTest::newRow("both add as squares") << 10000.0 << 50.0 << true << 12500.0;
    QTest::newRow("the fewest electrons that are not counted") << 50.1 << 6.0 << true << 86.1;
    QTest::newRow("the most that are counted") << 50.0 << 6.0 << true << 86.0;
    QTest::newRow("dark noise of a few electrons") << 40.0 << 5.0 << false << 25.0;
}

void TestSimulatedScene::noiseHasItsDeviation()
{
    QFETCH(double, electrons);
    QFETCH(double, darkNoise);
    QFETCH(bool, shotNoise);
    QFETCH(double, variance);
    SensorModel model = evenSensor();
    model.levelPercent = electrons / model.fullWell * 100.0;
    model.blackLevel = 1000.0;
    const Moments grey = momentsOf(exposed(SimulatedScene(model), 3, {darkNoise, shotNoise}));
    const double gain = model.systemGain();
    VERIFY_NEAR((grey.mean - 1000.0) / gain, electrons, 4 * std::sqrt(variance / 90000));
    VERIFY_NEAR(grey.variance / (gain * gain), variance, 0.02 * variance);
}

void TestSimulatedScene::fewElectronsAreCounted_data()
{
    QTest::addColumn<double>("electrons");
    QTest::newRow("none") << 0.0;
    QTest::newRow("fewer than one") << 0.4;
    QTest::newRow("a few") << 3.0;
    QTest::newRow("many") << 45.0;
}

/// Each electron is ten grey values, and nothing lies between.
void TestSimulatedScene::fewElectronsAreCounted()
{
    QFETCH(double, electrons);
    SensorModel model = evenSensor();
    model.fullWell = 6553.5;
    model.levelPercent = electrons / model.fullWell * 100.0;
    std::vector<double> counts;
    for (const std::uint16_t grey : exposed(SimulatedScene(model), 3, {0.0, true})) {
        QCOMPARE(grey % 10, 0);
        counts.push_back(grey / 10);
    }
    const Moments moments = momentsOf(counts);
    VERIFY_NEAR(moments.mean, electrons, 4 * std::sqrt(electrons / 90000));
    VERIFY_NEAR(moments.variance, electrons, 0.02 * electrons);
}

void TestSimulatedScene::thePatternStaysAndTheNoiseDoesNot()
{
    SensorModel model;
    model.width = 80;
    model.height = 60;
    model.depth = 16;
    model.dsnu = 40.0;
    model.seed = 3;
    constexpr int frames = 400;
    const SimulatedScene scene(model);
    const std::vector<std::uint16_t> pattern = exposed(scene, 0, {0.0, false});
    std::vector<double> means(pattern.size());
    std::vector<double> neighbours;
    std::vector<std::uint16_t> last;
    for (int number = 0; number < frames; ++number) {
        const std::vector<std::uint16_t> frame = exposed(scene, std::uint64_t(number), {0.0, true});
        for (std::size_t i = 0; i < frame.size(); ++i) {
            means[i] += double(frame[i]) / frames;
            if (number == 1)
                neighbours.push_back((frame[i] - pattern[i]) * (double(last[i]) - pattern[i]));
        }
        last = frame;
    }
    // The mean of many frames comes to the pattern, in all pixels by the same law.
    const double gain = model.systemGain();
    std::vector<double> deviations;
    for (std::size_t i = 0; i < means.size(); ++i)
        deviations.push_back((means[i] - pattern[i]) / (std::sqrt(gain * pattern[i]) / std::sqrt(frames)));
    const Moments moments = momentsOf(deviations);
    VERIFY_NEAR(moments.mean, 0.0, 4 / std::sqrt(double(means.size())));
    VERIFY_NEAR(moments.variance, 1.0, 0.1);
    // Frames that follow each other have nothing in common but the pattern.
    VERIFY_NEAR(momentsOf(neighbours).mean / (gain * 40000.0), 0.0, 4 / std::sqrt(double(means.size())));
}

QTEST_APPLESS_MAIN(TestSimulatedScene)
#include "tst_simulated_scene.moc"
