#include "host/camera/CameraError.h"
#include "host/camera/CameraInterfaces.h"
#include "host/camera/CameraSource.h"
#include "tests/host/source/FrameCollector.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/NewLimit.h"

#include <QtTest>

using namespace zor;

/// The camera inside the program as a source of frames.
class TestCameraSource : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cameraIsFound();
    void everyFormatArrives_data();
    void everyFormatArrives();
    void framesAreCounted();
    void formatChangesWhileFramesCome();
    void regionChangesWhileFramesCome();
    void regionIsTheFullSensorAgain();
    void wrongSettingIsRefused_data();
    void wrongSettingIsRefused();
    void refusedSettingLetsFramesComeOn();
    void cameraThatIsNotThereIsRefused();
    void lackOfMemoryEndsTheStream();
};

namespace {

const std::string Id = "Fake_1";

bool holds(const Frame& frame, const std::string& format, std::uint32_t width, std::uint32_t height)
{
    return frame.pixelType == codeOf(format) && frame.width == width && frame.height == height;
}

/// Until the newest frame is so.
template <typename Condition> bool waitForFrame(FrameCollector& collector, Condition condition)
{
    for (std::size_t seen = collector.frames().size() + 1; seen < 300; ++seen) {
        if (!collector.waitForFrames(seen))
            return false;
        if (condition(*collector.frames().back().frame))
            return true;
    }
    return false;
}

void checkThatNumbersAddUp(CameraSource& source, const FrameCollector& collector)
{
    const CameraSource::Counts counts = source.counts();
    QCOMPARE(counts.complete, std::uint64_t{collector.frames().size()} + counts.refused);
    QCOMPARE(collector.frames().back().number + 1, counts.complete + counts.incomplete + counts.missing);
}

} // namespace

void TestCameraSource::initTestCase()
{
    QCOMPARE(findCameras({CameraInterface::Fake}).size(), std::size_t{1});
}

void TestCameraSource::cameraIsFound()
{
    const std::vector<CameraInfo> cameras = findCameras({CameraInterface::Fake});
    QCOMPARE(QString::fromStdString(cameras.front().id), QString::fromStdString(Id));
    QCOMPARE(QString::fromStdString(cameras.front().name()), QString("Aravis Fake (1)"));
    QCOMPARE(QString::fromStdString(CameraSource(Id).name()), QString("Aravis Fake (1)"));
}

void TestCameraSource::everyFormatArrives_data()
{
    QTest::addColumn<QString>("format");
    for (const std::string& format : CameraSource(Id).controls().pixelFormats)
        QTest::newRow(format.c_str()) << QString::fromStdString(format);
}

void TestCameraSource::everyFormatArrives()
{
    QFETCH(QString, format);
    FrameCollector collector;
    CameraSource source(Id);
    source.setFrameRate(500.0);
    source.setPixelFormat(format.toStdString());
    source.start(collector.handlers());
    QVERIFY(collector.waitForFrames(3));
    source.stop();
    for (const SourceFrame& frame : collector.frames())
        QVERIFY(holds(*frame.frame, format.toStdString(), 512, 512));
    QVERIFY(collector.errors().empty());
}

void TestCameraSource::framesAreCounted()
{
    FrameCollector collector;
    CameraSource source(Id);
    source.setFrameRate(1000.0);
    source.start(collector.handlers());
    // The camera's 16-bit identifiers begin anew meanwhile.
    QVERIFY(collector.waitForFrames(200));
    source.stop();
    checkThatNumbersAddUp(source, collector);
    QCOMPARE(source.counts().incomplete, std::uint64_t{0});
    QVERIFY(source.counts().missing < 200);
    QCOMPARE(source.losses(), std::uint64_t{0});
    const std::int64_t first = collector.frames().front().timestamp;
    const std::int64_t last = collector.frames().back().timestamp;
    const std::int64_t now =
        std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
    QVERIFY(first < last && last < now && now - first < 60'000'000'000);
}

void TestCameraSource::formatChangesWhileFramesCome()
{
    FrameCollector collector;
    CameraSource source(Id);
    source.setFrameRate(200.0);
    source.start(collector.handlers());
    for (const std::string format : {"Mono8", "RGB8", "Mono16", "BayerRG8", "Mono8"}) {
        source.setPixelFormat(format);
        QVERIFY(waitForFrame(collector, [&](const Frame& frame) { return holds(frame, format, 512, 512); }));
    }
    source.setFeature("PixelFormat", "RGB8");
    QVERIFY(waitForFrame(collector, [&](const Frame& frame) { return holds(frame, "RGB8", 512, 512); }));
    source.stop();
    checkThatNumbersAddUp(source, collector);
    QVERIFY(collector.errors().empty());
    QCOMPARE(source.losses(), std::uint64_t{0});
}

void TestCameraSource::regionChangesWhileFramesCome()
{
    FrameCollector collector;
    CameraSource source(Id);
    source.setFrameRate(200.0);
    source.start(collector.handlers());
    source.setRegion(16, 8, 640, 480);
    QVERIFY(waitForFrame(collector, [](const Frame& frame) { return holds(frame, "Mono8", 640, 480); }));
    const CameraRegion region = *source.controls().region;
    QCOMPARE(region.x.value, 16);
    QCOMPARE(region.y.value, 8);
    QCOMPARE(region.width.value, 640);
    QCOMPARE(region.width.maximum, 2048);
    QCOMPARE(region.height.value, 480);
    source.setFeature("Height", "64");
    QVERIFY(waitForFrame(collector, [](const Frame& frame) { return holds(frame, "Mono8", 640, 64); }));
}

void TestCameraSource::regionIsTheFullSensorAgain()
{
    CameraSource source(Id);
    source.setRegion(1024, 512, 64, 32);
    source.setFullRegion();
    const CameraRegion region = *source.controls().region;
    QCOMPARE(region.x.value, 0);
    QCOMPARE(region.y.value, 0);
    QCOMPARE(region.width.value, 2048);
    QCOMPARE(region.height.value, 2048);
    source.setRegion(0, 0, 512, 512);
}

void TestCameraSource::wrongSettingIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("words");
    QTest::newRow("no such feature") << "Colour"
                                     << "1"
                                     << "the camera has no feature Colour";
    QTest::newRow("above the range") << "Width"
                                     << "4096"
                                     << "Width: ";
    QTest::newRow("no such entry") << "PixelFormat"
                                   << "Mono9"
                                   << "PixelFormat: ";
    QTest::newRow("can only be read") << "SensorWidth"
                                      << "64"
                                      << "SensorWidth: ";
    QTest::newRow("no number") << "Width"
                               << "wide"
                               << "Width: ";
}

void TestCameraSource::wrongSettingIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QFETCH(QString, words);
    CameraSource source(Id);
    try {
        source.setFeature(name.toStdString(), value.toStdString());
        QFAIL("accepted");
    } catch (const CameraError& error) {
        QVERIFY2(QString(error.what()).startsWith(words), error.what());
    }
}

void TestCameraSource::refusedSettingLetsFramesComeOn()
{
    FrameCollector collector;
    CameraSource source(Id);
    source.setFrameRate(200.0);
    source.start(collector.handlers());
    QVERIFY(collector.waitForFrames(2));
    QVERIFY_EXCEPTION_THROWN(source.setPixelFormat("Mono9"), CameraError);
    const std::size_t before = collector.frames().size();
    QVERIFY(collector.waitForFrames(before + 5));
}

void TestCameraSource::cameraThatIsNotThereIsRefused()
{
    try {
        CameraSource source("Nobody");
        QFAIL("connected");
    } catch (const CameraError& error) {
        QVERIFY2(QString(error.what()).startsWith("the camera Nobody cannot be opened: "), error.what());
    }
}

/// More than once, because the leak checker passes over what is still on a stack.
void TestCameraSource::lackOfMemoryEndsTheStream()
{
    CameraSource source(Id);
    source.setFrameRate(200.0);
    for (int i = 0; i < 3; ++i) {
        FrameCollector collector;
        source.start(collector.handlers());
        QVERIFY(collector.waitForFrames(2));
        tooLarge = 200000;
        const bool hasFailed = collector.waitForError() && collector.waitForTheEnd();
        tooLarge = NoLimit;
        QVERIFY(hasFailed);
        QVERIFY(collector.errors().front().hasEnded);
        QCOMPARE(QString::fromStdString(collector.errors().front().text),
                 QString("there is no memory for a frame; choose a smaller region or close other programs"));
    }
}

QTEST_GUILESS_MAIN(TestCameraSource)

#include "tst_camera_source.moc"
