#include "host/average/AverageOfFrames.h"
#include "host/frames/encode/EncodeFrame.h"
#include "host/quality/FrameGains.h"
#include "host/quality/MonoFrame.h"
#include "host/simulate/SimulatedScene.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <cmath>

using namespace zor;

/// What an average is for: gains with less noise.
class TestAverageGains : public QObject
{
    Q_OBJECT

private slots:
    void sixteenFramesGiveGainsWithAQuarterOfTheNoise_data();
    void sixteenFramesGiveGainsWithAQuarterOfTheNoise();
};

namespace {

constexpr std::uint64_t FrameCount = 16;

/// The target is the mean of all means: the noise of a peak would be common to all gains of a frame.
FrameGains gainsOf(const Frame& frame)
{
    const MonoFrame mono(frame.record());
    return computeFrameGains(mono.view(), mono.bytes(), {false, 1.0, false});
}

Frame exposed(const SimulatedScene& scene, std::uint64_t number, const TemporalNoise& noise,
              std::uint32_t pixelType)
{
    const SensorModel& model = scene.model();
    SampleImage image{model.width, model.height, 1, {}};
    image.samples.resize(std::size_t{model.width} * model.height);
    for (std::uint32_t y = 0; y < model.height; ++y)
        scene.exposeRow(number, y, noise, &image.samples[std::size_t{y} * model.width]);
    return encodeFrame(image, pixelType);
}

/// Root of the mean square of the differences.
double rmsError(const std::list<double>& gains, const std::list<double>& expected)
{
    double squares = 0;
    auto other = expected.begin();
    for (const double gain : gains)
        squares += std::pow(gain - *other++, 2);
    return std::sqrt(squares / double(gains.size()));
}

} // namespace

void TestAverageGains::sixteenFramesGiveGainsWithAQuarterOfTheNoise_data()
{
    QTest::addColumn<quint32>("format");
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<quint64>("seed");
    for (const quint64 seed : {1, 2, 3}) {
        QTest::addRow("8 bits, seed %d", int(seed)) << Mono8 << 8u << seed;
        QTest::addRow("12 bits, seed %d", int(seed)) << Mono12 << 12u << seed;
        QTest::addRow("12 bits packed, seed %d", int(seed)) << Mono12Packed << 12u << seed;
    }
}

/// Noise of independent frames falls with the root of their number: by 4 for 16. The gains without noise are
/// those of 12 bits, which is fine enough for 8.
void TestAverageGains::sixteenFramesGiveGainsWithAQuarterOfTheNoise()
{
    QFETCH(quint32, format);
    QFETCH(quint32, depth);
    QFETCH(quint64, seed);
    SensorModel model;
    model.width = 480;
    model.height = 360;
    model.fullWell = 5000.0;
    model.seed = seed;
    const FrameGains expected = gainsOf(exposed(SimulatedScene(model), 0, {0.0, false}, Mono12));

    model.depth = depth;
    const SimulatedScene scene(model);
    AverageOfFrames average(FrameCount);
    for (std::uint64_t i = 0; i < FrameCount; ++i)
        average.add(exposed(scene, i, {}, format));
    const FrameGains ofOne = gainsOf(exposed(scene, FrameCount, {}, format));
    const FrameGains ofAverage = gainsOf(average.result());

    const double columns = rmsError(ofOne.columns, expected.columns);
    const double averagedColumns = rmsError(ofAverage.columns, expected.columns);
    const double rows = rmsError(ofOne.rows, expected.rows);
    const double averagedRows = rmsError(ofAverage.rows, expected.rows);
    const QByteArray figures = QString("columns %1 and %2: ratio %3; rows %4 and %5: ratio %6")
                                   .arg(columns)
                                   .arg(averagedColumns)
                                   .arg(columns / averagedColumns)
                                   .arg(rows)
                                   .arg(averagedRows)
                                   .arg(rows / averagedRows)
                                   .toUtf8();
    QVERIFY2(columns > 3 * averagedColumns && columns < 5 * averagedColumns, figures);
    QVERIFY2(rows > 3 * averagedRows && rows < 5 * averagedRows, figures);
}

QTEST_APPLESS_MAIN(TestAverageGains)
#include "tst_average_gains.moc"
