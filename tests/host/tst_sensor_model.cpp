#include "host/simulate/RandomStream.h"
#include "host/simulate/SimulatedFrame.h"

#include <QtTest>

#include <algorithm>
#include <cmath>

using namespace zor;

Q_DECLARE_METATYPE(zor::SensorModel)

namespace {

/// A sensor without any source of unevenness, half full.
SensorModel evenSensor()
{
    SensorModel model;
    model.width = 300;
    model.height = 300;
    model.levelPercent = 50.0;
    model.vignettingPercent = 0.0;
    model.columnFpnPercent = 0.0;
    model.rowFpnPercent = 0.0;
    model.prnuPercent = 0.0;
    model.dsnu = 0.0;
    model.darkNoise = 0.0;
    model.shotNoise = false;
    return model;
}

struct Statistics
{
    double mean;
    double variance;
};

template <typename Values> Statistics statistics(const Values& values)
{
    double sum = 0.0;
    for (const auto value : values)
        sum += value;
    const double mean = sum / static_cast<double>(values.size());
    double squares = 0.0;
    for (const auto value : values)
        squares += (value - mean) * (value - mean);
    return {mean, squares / static_cast<double>(values.size())};
}

/// Variance that rounding to whole DN adds.
constexpr double Quantisation = 1.0 / 12.0;

/// True when both agree within a share of the expected value; the seeds are fixed, so a run repeats exactly.
bool near(double actual, double expected, double share)
{
    return std::abs(actual - expected) <= share * std::abs(expected);
}

} // namespace

#define VERIFY_NEAR(actual, expected, share)                                                                 \
    QVERIFY2(near(actual, expected, share),                                                                  \
             qPrintable(QStringLiteral("actual %1, expected %2").arg(actual).arg(expected)))

class TestSensorModel : public QObject
{
    Q_OBJECT

private slots:
    void randomNumbersDependOnTheSeedAlone();
    void aModelGivesTheSameFrameForEver_data();
    void aModelGivesTheSameFrameForEver();
    void normalNumbersHaveTheirMoments();
    void poissonCountsHaveTheirMoments_data();
    void poissonCountsHaveTheirMoments();
    void vignettingIsTheFourthPowerOfACosine();
    void withoutNoiseEveryPixelIsTheMean();
    void shotNoiseGivesTheSystemGain_data();
    void shotNoiseGivesTheSystemGain();
    void deviationsAreAsSet_data();
    void deviationsAreAsSet();
    void columnPatternIsInTheColumns();
    void rowPatternIsInTheRows();
    void greyValuesStayInRange();
    void aGainOf0TakesAllLight();
};

void TestSensorModel::randomNumbersDependOnTheSeedAlone()
{
    // The upper 53 bits of the generator's first two numbers, worked out apart from this code.
    constexpr double scale = 9007199254740992.0;
    RandomStream first(1, 0);
    QCOMPARE(first.uniform() * scale, 3976603481046629.0);
    QCOMPARE(first.uniform() * scale, 2957984836681829.0);
    RandomStream otherStream(1, 1);
    QCOMPARE(otherStream.uniform() * scale, 6455381531966624.0);
    RandomStream otherSeed(0, 0);
    QCOMPARE(otherSeed.uniform() * scale, 4342110871615737.0);
}

void TestSensorModel::aModelGivesTheSameFrameForEver_data()
{
    QTest::addColumn<SensorModel>("model");
    QTest::addColumn<quint64>("checksum");
    SensorModel model;
    model.width = 61;
    model.height = 40;
    QTest::newRow("the usual sensor") << model << quint64(0x93d29de5e89e3cf4);
    model.seed = 7;
    model.depth = 8;
    model.dsnu = 30.0;
    model.blackLevel = 16.0;
    QTest::newRow("8 bits with a dark signal") << model << quint64(0x2a0271a448fb7d24);
    model.depth = 16;
    model.dsnu = 0.0;
    model.shotNoise = false;
    model.darkNoise = 0.0;
    QTest::newRow("16 bits without noise") << model << quint64(0xddb5f62f3945fc41);
    model.depth = 10;
    model.levelPercent = 0.2;
    model.prnuPercent = 0.0;
    model.blackLevel = 0.0;
    model.shotNoise = true;
    QTest::newRow("electrons that are counted") << model << quint64(0xb27558fa5657cf74);
    model.depth = 14;
    model.levelPercent = 101.0;
    model.darkNoise = 5.0;
    model.columnFpnPercent = 60.0;
    QTest::newRow("light above full scale") << model << quint64(0x8a1e78bc5841643f);
}

/// The checksum is FNV-1a over the grey values, low byte first.
void TestSensorModel::aModelGivesTheSameFrameForEver()
{
    QFETCH(SensorModel, model);
    quint64 checksum = 0xcbf29ce484222325;
    for (const std::uint16_t grey : simulateFrame(model)) {
        for (const int byte : {grey & 0xFF, grey >> 8})
            checksum = (checksum ^ quint64(byte)) * 0x100000001b3;
    }
    QTEST(checksum, "checksum");
}

void TestSensorModel::normalNumbersHaveTheirMoments()
{
    RandomStream random(7, 0);
    std::vector<double> numbers(100000);
    double third = 0.0;
    double fourth = 0.0;
    for (double& number : numbers) {
        number = random.normal();
        third += std::pow(number, 3) / 100000;
        fourth += std::pow(number, 4) / 100000;
    }
    const Statistics moments = statistics(numbers);
    QVERIFY2(std::abs(moments.mean) < 0.015, qPrintable(QString::number(moments.mean)));
    VERIFY_NEAR(moments.variance, 1.0, 0.02);
    QVERIFY2(std::abs(third) < 0.04, qPrintable(QString::number(third)));
    VERIFY_NEAR(fourth, 3.0, 0.04);
}

void TestSensorModel::poissonCountsHaveTheirMoments_data()
{
    QTest::addColumn<double>("mean");
    QTest::newRow("next to none") << 0.1;
    QTest::newRow("fewer than one") << 0.3;
    QTest::newRow("a few") << 4.0;
    QTest::newRow("the most that are counted") << 50.0;
    QTest::newRow("the fewest that are approximated") << 50.1;
    QTest::newRow("many") << 20000.0;
}

void TestSensorModel::poissonCountsHaveTheirMoments()
{
    QFETCH(double, mean);
    RandomStream random(3, 0);
    std::vector<double> counts(100000);
    for (double& count : counts) {
        count = random.poisson(mean);
        QVERIFY(count >= 0.0 && count == std::floor(count));
    }
    const Statistics moments = statistics(counts);
    VERIFY_NEAR(moments.mean, mean, 0.02);
    VERIFY_NEAR(moments.variance, mean, 0.03);
    QCOMPARE(random.poisson(0.0), 0.0);
    QCOMPARE(random.poisson(-1.0), 0.0);
}

void TestSensorModel::vignettingIsTheFourthPowerOfACosine()
{
    SensorModel model = evenSensor();
    model.width = 5;
    model.height = 5;
    model.vignettingPercent = 43.75; // leaves 9/16: a cosine squared of 3/4, a tangent squared of 1/3
    QCOMPARE(vignettingAt(model, 2, 2), 1.0);
    QCOMPARE(vignettingAt(model, 0, 0), 9.0 / 16.0);
    QCOMPARE(vignettingAt(model, 4, 0), 9.0 / 16.0);
    // Half way to the corner the tangent squared is a quarter of that.
    QCOMPARE(vignettingAt(model, 1, 3), std::pow(12.0 / 13.0, 2));
    model.width = 1;
    model.height = 1;
    QCOMPARE(vignettingAt(model, 0, 0), 1.0);
}

void TestSensorModel::withoutNoiseEveryPixelIsTheMean()
{
    SensorModel model = evenSensor();
    model.fullWell = 4095.0;
    model.levelPercent = 40.0; // 1638 electrons at 1 DN each
    QCOMPARE(model.systemGain(), 1.0);
    QCOMPARE(simulateFrame(model), std::vector<std::uint16_t>(300 * 300, 1638));
}

void TestSensorModel::shotNoiseGivesTheSystemGain_data()
{
    QTest::addColumn<uint>("depth");
    QTest::addColumn<double>("fullWell");
    QTest::addColumn<double>("blackLevel");
    QTest::newRow("1 DN per electron") << 12u << 4095.0 << 0.0;
    QTest::newRow("a quarter DN per electron") << 12u << 16380.0 << 0.0;
    QTest::newRow("16 bits above a black level") << 16u << 20000.0 << 1000.0;
    QTest::newRow("8 bits, a few electrons") << 8u << 60.0 << 0.0;
}

void TestSensorModel::shotNoiseGivesTheSystemGain()
{
    QFETCH(uint, depth);
    QFETCH(double, fullWell);
    QFETCH(double, blackLevel);
    SensorModel model = evenSensor();
    model.depth = depth;
    model.fullWell = fullWell;
    model.blackLevel = blackLevel;
    model.shotNoise = true;
    const Statistics grey = statistics(simulateFrame(model));
    VERIFY_NEAR(grey.mean, blackLevel + model.systemGain() * fullWell / 2, 0.005);
    // Photon transfer: the variance over the mean without its dark part is the system gain K.
    VERIFY_NEAR((grey.variance - Quantisation) / (grey.mean - blackLevel), model.systemGain(), 0.03);
}

void TestSensorModel::deviationsAreAsSet_data()
{
    QTest::addColumn<double>("prnuPercent");
    QTest::addColumn<double>("dsnu");
    QTest::addColumn<double>("darkNoise");
    QTest::addColumn<double>("electrons");
    QTest::newRow("3 % of the pixels' 10000 electrons") << 3.0 << 0.0 << 0.0 << 300.0;
    QTest::newRow("dark signal") << 0.0 << 120.0 << 0.0 << 120.0;
    QTest::newRow("dark noise") << 0.0 << 0.0 << 90.0 << 90.0;
    QTest::newRow("all three add as squares")
        << 1.0 << 40.0 << 80.0 << std::sqrt(100.0 * 100 + 40 * 40 + 80 * 80);
}

void TestSensorModel::deviationsAreAsSet()
{
    QFETCH(double, prnuPercent);
    QFETCH(double, dsnu);
    QFETCH(double, darkNoise);
    QFETCH(double, electrons);
    SensorModel model = evenSensor();
    model.prnuPercent = prnuPercent;
    model.dsnu = dsnu;
    model.darkNoise = darkNoise;
    const Statistics grey = statistics(simulateFrame(model));
    VERIFY_NEAR(grey.mean, model.systemGain() * 10000.0, 0.005);
    VERIFY_NEAR(std::sqrt(grey.variance - Quantisation), model.systemGain() * electrons, 0.02);
}

void TestSensorModel::columnPatternIsInTheColumns()
{
    SensorModel model = evenSensor();
    model.width = 3000;
    model.height = 4;
    model.depth = 16;
    model.columnFpnPercent = 2.0;
    const auto frame = simulateFrame(model);
    for (std::size_t x = 0; x < 3000; ++x)
        for (std::size_t y = 1; y < 4; ++y)
            QCOMPARE(frame[y * 3000 + x], frame[x]);
    const Statistics grey = statistics(std::vector<std::uint16_t>(frame.begin(), frame.begin() + 3000));
    VERIFY_NEAR(std::sqrt(grey.variance) / grey.mean, 0.02, 0.06);
}

void TestSensorModel::rowPatternIsInTheRows()
{
    SensorModel model = evenSensor();
    model.width = 3;
    model.height = 3000;
    model.depth = 16;
    model.rowFpnPercent = 1.0;
    const auto frame = simulateFrame(model);
    std::vector<double> rows;
    for (std::size_t y = 0; y < 3000; ++y) {
        QCOMPARE(frame[3 * y + 1], frame[3 * y]);
        QCOMPARE(frame[3 * y + 2], frame[3 * y]);
        rows.push_back(frame[3 * y]);
    }
    const Statistics grey = statistics(rows);
    VERIFY_NEAR(std::sqrt(grey.variance) / grey.mean, 0.01, 0.06);
}

void TestSensorModel::greyValuesStayInRange()
{
    SensorModel model = evenSensor();
    model.depth = 10;
    model.darkNoise = 5000.0;
    model.levelPercent = 2.0;
    const auto dark = simulateFrame(model);
    QCOMPARE(int(*std::min_element(dark.begin(), dark.end())), 0);
    QVERIFY(*std::max_element(dark.begin(), dark.end()) <= 1023);
    model.levelPercent = 98.0;
    const auto bright = simulateFrame(model);
    QCOMPARE(int(*std::max_element(bright.begin(), bright.end())), 1023);
}

void TestSensorModel::aGainOf0TakesAllLight()
{
    // Deviations so large that many gains end at 0. A row without light and a column without light must not
    // make light where they cross, as two negative gains would.
    SensorModel model = evenSensor();
    model.width = 40;
    model.height = 30;
    model.depth = 16;
    model.columnFpnPercent = 100.0;
    model.rowFpnPercent = 100.0;
    const std::vector<std::uint16_t> frame = simulateFrame(model);
    std::vector<bool> columnLit(model.width);
    std::vector<bool> rowLit(model.height);
    std::ptrdiff_t lit = 0;
    for (std::size_t i = 0; i < frame.size(); ++i) {
        if (frame[i] == 0)
            continue;
        columnLit[i % model.width] = true;
        rowLit[i / model.width] = true;
        ++lit;
    }
    const auto columns = std::count(columnLit.begin(), columnLit.end(), true);
    const auto rows = std::count(rowLit.begin(), rowLit.end(), true);
    QVERIFY2(columns > 0 && columns < 40 && rows > 0 && rows < 30, "the seed gives gains of both kinds");
    QCOMPARE(lit, columns * rows);
}

QTEST_GUILESS_MAIN(TestSensorModel)
#include "tst_sensor_model.moc"
