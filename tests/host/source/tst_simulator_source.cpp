#include "host/source/SimulatorSource.h"
#include "tests/host/source/FrameCollector.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/NewLimit.h"

#include <QSemaphore>
#include <QtTest>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <thread>

using namespace zor;

Q_DECLARE_METATYPE(std::function<void(SensorModel&)>)

/// The simulated sensor as a source of frames.
class TestSimulatorSource : public QObject
{
    Q_OBJECT

private slots:
    void init() { tooLarge = NoLimit; }
    void itHasAName();
    void framesAreInTheUnpackedMonoFormat_data();
    void framesAreInTheUnpackedMonoFormat();
    void framesAreThoseOfTheScene_data();
    void framesAreThoseOfTheScene();
    void timestampsAreOfTheSteadyClock();
    void aNewRateCountsAtOnce();
    void aNewNoiseCountsFromTheNextFrameOn();
    void aNewModelCountsFromTheNextStartOn();
    void whatCannotBeSimulatedIsRefused_data();
    void whatCannotBeSimulatedIsRefused();
    void everySettingIsRefusedAlone();
    void aLackOfMemoryIsReported_data();
    void aLackOfMemoryIsReported();
};

namespace {

constexpr double Fastest = SimulatorSource::LargestFrameRate;
constexpr double Never = 1e-12;

SensorModel smallSensor(std::uint32_t depth = 12)
{
    SensorModel model;
    model.width = 17;
    model.height = 5;
    model.depth = depth;
    model.seed = 9;
    return model;
}

/// The first frames that the source delivers.
std::vector<SourceFrame> firstFrames(FrameSource& source, std::size_t count)
{
    FrameCollector collector;
    source.start(collector.handlers());
    if (!collector.waitForFrames(count))
        qFatal("no frames");
    source.stop();
    std::vector<SourceFrame> frames = collector.frames();
    frames.resize(count);
    return frames;
}

std::vector<std::uint8_t> sceneBytes(const SensorModel& model, std::uint64_t number,
                                     const TemporalNoise& noise)
{
    const SimulatedScene scene(model);
    std::vector<std::uint8_t> bytes;
    std::vector<std::uint16_t> row(model.width);
    for (std::uint32_t y = 0; y < model.height; ++y) {
        scene.exposeRow(number, y, noise, row.data());
        for (const std::uint16_t grey : row) {
            bytes.push_back(static_cast<std::uint8_t>(grey & 0xFF));
            if (model.depth > 8)
                bytes.push_back(static_cast<std::uint8_t>(grey >> 8));
        }
    }
    return bytes;
}

} // namespace

void TestSimulatorSource::itHasAName()
{
    QCOMPARE(QString::fromStdString(SimulatorSource(smallSensor()).name()), QString("Simulator"));
}

void TestSimulatorSource::framesAreInTheUnpackedMonoFormat_data()
{
    QTest::addColumn<uint>("depth");
    QTest::addColumn<uint>("pixelType");
    QTest::addColumn<uint>("pitch");
    QTest::newRow("8 bits") << 8u << codeOf("Mono8") << 17u;
    QTest::newRow("10 bits") << 10u << codeOf("Mono10") << 34u;
    QTest::newRow("12 bits") << 12u << codeOf("Mono12") << 34u;
    QTest::newRow("14 bits") << 14u << codeOf("Mono14") << 34u;
    QTest::newRow("16 bits") << 16u << codeOf("Mono16") << 34u;
}

void TestSimulatorSource::framesAreInTheUnpackedMonoFormat()
{
    QFETCH(uint, depth);
    SimulatorSource source(smallSensor(depth));
    const Frame frame = *firstFrames(source, 1).front().frame;
    QTEST(frame.pixelType, "pixelType");
    QTEST(frame.pitch, "pitch");
    QCOMPARE(frame.width, 17u);
    QCOMPARE(frame.height, 5u);
    QCOMPARE(frame.pixels.size(), std::size_t(frame.pitch) * 5);
    QCOMPARE(QString::fromStdString(frame.depthSource), QString("simulated sensor"));
    QVERIFY(!frame.depthGuessed);
}

void TestSimulatorSource::framesAreThoseOfTheScene_data()
{
    QTest::addColumn<uint>("depth");
    QTest::addColumn<bool>("isNoisy");
    QTest::newRow("8 bits") << 8u << true;
    QTest::newRow("16 bits") << 16u << true;
    QTest::newRow("without noise") << 12u << false;
}

void TestSimulatorSource::framesAreThoseOfTheScene()
{
    QFETCH(uint, depth);
    QFETCH(bool, isNoisy);
    SensorModel model = smallSensor(depth);
    model.shotNoise = isNoisy;
    model.darkNoise = isNoisy ? 20.0 : 0.0;
    SimulatorSource source(model, Fastest);
    const std::vector<SourceFrame> frames = firstFrames(source, 4);
    for (std::size_t number = 0; number < frames.size(); ++number) {
        QCOMPARE(frames[number].number, std::uint64_t(number));
        QCOMPARE(frames[number].frame->pixels, sceneBytes(model, number, {model.darkNoise, model.shotNoise}));
    }
    QCOMPARE(frames[0].frame->pixels != frames[1].frame->pixels, isNoisy);
}

void TestSimulatorSource::timestampsAreOfTheSteadyClock()
{
    const auto now = [] {
        return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
    };
    SimulatorSource source(smallSensor(), Fastest);
    std::int64_t last = now();
    for (const SourceFrame& frame : firstFrames(source, 5)) {
        QVERIFY(frame.timestamp >= last);
        last = frame.timestamp;
    }
    QVERIFY(last <= now());
}

void TestSimulatorSource::aNewRateCountsAtOnce()
{
    FrameCollector collector;
    SimulatorSource source(smallSensor(), Never);
    source.start(collector.handlers([&](const SourceFrame&) { source.setFrameRate(Never); }));
    for (std::size_t frames = 1; frames < 10; ++frames) {
        QVERIFY(collector.waitForFrames(frames));
        // Right at once, and when the source has most likely begun its long wait.
        if (frames > 3)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        source.setFrameRate(Fastest);
    }
    QVERIFY(collector.waitForFrames(10));
    source.stop();
}

void TestSimulatorSource::aNewNoiseCountsFromTheNextFrameOn()
{
    SensorModel model = smallSensor();
    FrameCollector collector;
    SimulatorSource source(model, Fastest);
    source.start(collector.handlers([&](const SourceFrame& frame) {
        if (frame.number == 1)
            source.setNoise({0.0, false});
    }));
    QVERIFY(collector.waitForFrames(4));
    source.stop();
    const std::vector<SourceFrame> frames = collector.frames();
    QCOMPARE(frames[1].frame->pixels, sceneBytes(model, 1, {model.darkNoise, true}));
    QCOMPARE(frames[2].frame->pixels, sceneBytes(model, 2, {0.0, false}));
    QCOMPARE(frames[3].frame->pixels, frames[2].frame->pixels);
}

void TestSimulatorSource::aNewModelCountsFromTheNextStartOn()
{
    SensorModel other = smallSensor(8);
    other.width = 30;
    other.seed = 10;
    other.darkNoise = 0.0;
    other.shotNoise = false;
    FrameCollector collector;
    SimulatorSource source(smallSensor(), Fastest);
    source.start(collector.handlers([&](const SourceFrame& frame) {
        if (frame.number == 0)
            source.setModel(other);
    }));
    QVERIFY(collector.waitForFrames(2));
    source.stop();
    QCOMPARE(collector.frames()[1].frame->pixels, sceneBytes(smallSensor(), 1, {0.0, false}));
    QCOMPARE(firstFrames(source, 1).front().frame->pixels, sceneBytes(other, 0, {0.0, false}));
}

void TestSimulatorSource::whatCannotBeSimulatedIsRefused_data()
{
    using Change = std::function<void(SensorModel&)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<double>("rate");
    QTest::addColumn<bool>("refused");
    const auto model = [](const char* name, const Change& change, bool refused) {
        QTest::newRow(name) << change << 1.0 << refused;
    };
    const auto rate = [](const char* name, double framesPerSecond, bool refused) {
        QTest::newRow(name) << Change([](SensorModel&) {}) << framesPerSecond << refused;
    };
    model(
        "a depth of 9", [](SensorModel& of) { of.depth = 9; }, true);
    model(
        "a depth of 0", [](SensorModel& of) { of.depth = 0; }, true);
    model(
        "a width of 0", [](SensorModel& of) { of.width = 0; }, true);
    model(
        "a height of 0", [](SensorModel& of) { of.height = 0; }, true);
    model(
        "a single pixel", [](SensorModel& of) { of.width = of.height = 1; }, false);
    model(
        "the largest width", [](SensorModel& of) { of.width = 65535; }, false);
    model(
        "a width above it", [](SensorModel& of) { of.width = 65536; }, true);
    model(
        "the largest height", [](SensorModel& of) { of.height = 65535; }, false);
    model(
        "a height above it", [](SensorModel& of) { of.height = 65536; }, true);
    model(
        "the largest frame of 8 bits", [](SensorModel& of) { of.width = of.height = 65535, of.depth = 8; },
        false);
    model(
        "a frame of a little less than 4 GiB", [](SensorModel& of) { of.width = 32768, of.height = 65535; },
        false);
    model(
        "a frame of a little more", [](SensorModel& of) { of.width = 32769, of.height = 65535; }, true);
    model(
        "the highest black level", [](SensorModel& of) { of.blackLevel = 4094.0; }, false);
    model(
        "a black level at full scale", [](SensorModel& of) { of.blackLevel = 4095.0; }, true);
    model(
        "no dark noise", [](SensorModel& of) { of.darkNoise = 0.0; }, false);
    model(
        "a negative dark noise", [](SensorModel& of) { of.darkNoise = -0.1; }, true);
    model(
        "a dark noise without end", [](SensorModel& of) { of.darkNoise = HUGE_VAL; }, true);
    model(
        "a dark noise that is no number", [](SensorModel& of) { of.darkNoise = std::nan(""); }, true);
    rate("the highest rate", 1000.0, false);
    rate("a rate above it", 1000.1, true);
    rate("the lowest rate", std::numeric_limits<double>::denorm_min(), false);
    rate("a rate of 0", 0.0, true);
    rate("a negative rate", -1.0, true);
    rate("a rate that is no number", std::nan(""), true);
}

void TestSimulatorSource::whatCannotBeSimulatedIsRefused()
{
    QFETCH(std::function<void(SensorModel&)>, change);
    QFETCH(double, rate);
    QFETCH(bool, refused);
    SensorModel model = smallSensor();
    change(model);
    bool found = false;
    try {
        const SimulatorSource source(model, rate);
    } catch (const std::invalid_argument&) {
        found = true;
    }
    QCOMPARE(found, refused);
}

void TestSimulatorSource::everySettingIsRefusedAlone()
{
    const SensorModel model = smallSensor();
    SensorModel wrong = model;
    wrong.depth = 9;
    wrong.darkNoise = 0.0;
    wrong.shotNoise = false;
    SimulatorSource source(model, Fastest);
    QVERIFY_EXCEPTION_THROWN(source.setModel(wrong), std::invalid_argument);
    QVERIFY_EXCEPTION_THROWN(source.setFrameRate(0.0), std::invalid_argument);
    QVERIFY_EXCEPTION_THROWN(source.setNoise({-1.0, false}), std::invalid_argument);
    const std::vector<SourceFrame> frames = firstFrames(source, 2);
    QCOMPARE(frames[1].frame->pixels, sceneBytes(model, 1, {model.darkNoise, model.shotNoise}));
}

void TestSimulatorSource::aLackOfMemoryIsReported_data()
{
    QTest::addColumn<bool>("forTheScene");
    QTest::newRow("for the scene") << true;
    QTest::newRow("for a later frame") << false;
}

void TestSimulatorSource::aLackOfMemoryIsReported()
{
    QFETCH(bool, forTheScene);
    SensorModel model = smallSensor();
    model.width = 200;
    model.height = 100;
    constexpr std::size_t frameBytes = 200 * 100 * 2;
    FrameCollector collector;
    FrameCollector second;
    SimulatorSource source(model, Fastest);
    tooLarge = forTheScene ? frameBytes : NoLimit;
    QSemaphore reported;
    source.start(collector.handlers([](const SourceFrame&) { tooLarge = frameBytes; },
                                    [&](const SourceError&) { reported.release(); }));
    QVERIFY(reported.tryAcquire(1, 60000));
    tooLarge = NoLimit;
    // Right after the report, whether the source's thread has ended or not.
    source.start(second.handlers());
    QVERIFY(second.waitForFrames(2));
    source.stop();

    QVERIFY(collector.hasEnded());
    QCOMPARE(collector.frames().size(), std::size_t(forTheScene ? 0 : 1));
    QCOMPARE(collector.errors().size(), std::size_t(1));
    QVERIFY(collector.errors().front().hasEnded);
    QCOMPARE(
        QString::fromStdString(collector.errors().front().text),
        QString("there is no memory for simulated frames of 200x100 pixels; choose a smaller size or close "
                "other programs"));
}

QTEST_GUILESS_MAIN(TestSimulatorSource)
#include "tst_simulator_source.moc"
