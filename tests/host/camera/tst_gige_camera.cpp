#include "host/camera/CameraError.h"
#include "host/camera/CameraInterfaces.h"
#include "host/camera/CameraSource.h"
#include "image/unpack/NativeCodes.h"
#include "tests/host/camera/GigeCameraProcess.h"
#include "tests/host/camera/OwnNetwork.h"
#include "tests/host/source/FrameCollector.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

using namespace zor;
using namespace std::chrono_literals;

/// A camera on the network, which can be lost.
class TestGigeCamera : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cameraIsFound();
    void packedSamplesKeepTheirValues_data();
    void packedSamplesKeepTheirValues();
    void lostPacketsMakeIncompleteFrames();
    void lostCameraComesBackWithItsSettings();
    void restartedCameraIsLostOnce();
    void lostCameraRefusesSettingsUntilItIsBack();
    void lostCameraCanBeStoppedAndGivenBack();
    void cameraOfSomebodyElseIsRefused();
    void framesWaitForTheTrigger();
};

namespace {

const CameraOptions LargePackets = {60000};

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds longest = 30s)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(longest.count()))
            return false;
        QTest::qSleep(5);
    }
    return true;
}

void checkThatNumbersAddUp(CameraSource& source, const FrameCollector& collector)
{
    const CameraSource::Counts counts = source.counts();
    QCOMPARE(counts.complete, std::uint64_t{collector.frames().size()} + counts.refused);
    QVERIFY(collector.frames().back().number + 1 <= counts.complete + counts.incomplete + counts.missing);
}

} // namespace

void TestGigeCamera::initTestCase()
{
    if (!enterOwnNetwork())
        QSKIP("A network of its own takes rights that this user does not have.");
    // From here on the camera's address is known.
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    QCOMPARE(findCameras({CameraInterface::GigEVision}).size(), std::size_t{1});
}

void TestGigeCamera::cameraIsFound()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    const std::vector<CameraInfo> found = findCameras({CameraInterface::GigEVision});
    QCOMPARE(found.size(), std::size_t{1});
    QCOMPARE(QString::fromStdString(found.front().id), QString(GigeCameraProcess::Id));
    QCOMPARE(QString::fromStdString(found.front().address), QString("127.0.0.1"));
    QCOMPARE(QString::fromStdString(found.front().name()), QString("Aravis Fake (GV01)"));
}

void TestGigeCamera::packedSamplesKeepTheirValues_data()
{
    QTest::addColumn<int>("bits");
    QTest::newRow("Mono10Packed") << 10;
    QTest::newRow("Mono12Packed") << 12;
    QTest::newRow("BayerRG12Packed") << 12;
}

void TestGigeCamera::packedSamplesKeepTheirValues()
{
    QFETCH(int, bits);
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    FrameCollector collector;
    CameraSource source(GigeCameraProcess::Id, LargePackets);
    source.setPixelFormat(QTest::currentDataTag());
    source.setRegion(0, 0, 48, 7);
    source.start(collector.handlers());
    QVERIFY(collector.waitForFrames(2));
    source.stop();
    const Frame& frame = *collector.frames().back().frame;
    QCOMPARE(frame.pixelType, codeOf(QTest::currentDataTag()));
    QCOMPARE(frame.width, 48u);
    QCOMPARE(frame.height, 7u);
    const _ZorImage record = frame.record();
    const unsigned first = nativeCodes(record, 0, 0).codes[0];
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        for (std::uint32_t x = 0; x < frame.width; ++x)
            QCOMPARE(unsigned{nativeCodes(record, x, y).codes[0]}, (first + x + y) % (1u << bits));
    }
}

void TestGigeCamera::lostPacketsMakeIncompleteFrames()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start(0.05));
    FrameCollector collector;
    CameraSource::Counts counts;
    {
        CameraSource source(GigeCameraProcess::Id, LargePackets);
        source.setFrameRate(100.0);
        source.start(collector.handlers());
        QVERIFY(waitUntil([&] { return source.counts().incomplete >= 5 && source.counts().complete >= 20; }));
        source.stop();
        checkThatNumbersAddUp(source, collector);
        counts = source.counts();
    }
    // Of the first ones nothing may have come, and the last ones were on their way.
    const int unseen =
        camera.finish() - static_cast<int>(counts.complete + counts.incomplete + counts.missing);
    QVERIFY2(unseen >= 0 && unseen <= 20, qPrintable(QString::number(unseen)));
    for (const SourceFrame& frame : collector.frames()) {
        // Every frame is whole: each pixel is one above its left neighbour.
        const std::vector<std::uint8_t>& pixels = frame.frame->pixels;
        for (std::size_t i = 1; i < 512; ++i)
            QCOMPARE(pixels[i], static_cast<std::uint8_t>(pixels[i - 1] + 1));
        QCOMPARE(pixels.back(), static_cast<std::uint8_t>(pixels.front() + 511 + 511));
    }
    QVERIFY(collector.errors().empty());
}

void TestGigeCamera::lostCameraComesBackWithItsSettings()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    FrameCollector collector;
    CameraSource source(GigeCameraProcess::Id, LargePackets);
    source.setFrameRate(100.0);
    source.setPixelFormat("Mono16");
    source.setExposureTime(1234.0);
    source.setGain(3.0);
    source.setRegion(32, 16, 320, 200);
    source.setFeature("BinningVertical", "2");
    source.start(collector.handlers());
    QVERIFY(collector.waitForFrames(10));

    camera.kill();
    QVERIFY(waitUntil([&] { return source.isLost(); }));
    QCOMPARE(source.losses(), std::uint64_t{1});
    const std::size_t before = collector.frames().size();
    QTest::qWait(300);
    QCOMPARE(collector.frames().size(), before);

    QVERIFY(camera.start());
    QVERIFY(waitUntil([&] { return !source.isLost(); }));
    QVERIFY(collector.waitForFrames(before + 10));
    const Frame& frame = *collector.frames().back().frame;
    QCOMPARE(frame.pixelType, codeOf("Mono16"));
    QCOMPARE(frame.width, 320u);
    QCOMPARE(frame.height, 200u);
    const CameraControls controls = source.controls();
    QCOMPARE(controls.exposureTime->value, 1234.0);
    QCOMPARE(controls.gain->value, 3.0);
    QCOMPARE(controls.frameRate->value, 100.0);
    QCOMPARE(controls.region->x.value, 32);
    QCOMPARE(controls.region->y.value, 16);
    QCOMPARE(source.losses(), std::uint64_t{1});
    source.stop();
    checkThatNumbersAddUp(source, collector);
    QVERIFY(collector.errors().empty());
}

/// Whether the library or the silence tells first.
void TestGigeCamera::restartedCameraIsLostOnce()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    FrameCollector collector;
    CameraSource source(GigeCameraProcess::Id, LargePackets);
    source.setFrameRate(100.0);
    source.start(collector.handlers());
    for (std::uint64_t round = 1; round <= 3; ++round) {
        // Somewhere between two looks of the library at the camera.
        QTest::qWait(150 * static_cast<int>(round));
        camera.kill();
        QVERIFY(camera.start());
        const std::size_t before = collector.frames().size();
        QVERIFY(collector.waitForFrames(before + 50));
        QCOMPARE(source.losses(), round);
    }
}

void TestGigeCamera::lostCameraRefusesSettingsUntilItIsBack()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    {
        // Somebody has left it so.
        CameraSource(GigeCameraProcess::Id).setTrigger("Software");
    }
    CameraSource source(GigeCameraProcess::Id, LargePackets);
    source.setPixelFormat("RGB8");
    // Each of these goes only after the one before.
    source.setRegion(0, 0, 64, 64);
    source.setFeature("OffsetX", "1984");
    source.setRegion(1984, 8, 64, 64);
    camera.kill();
    QVERIFY(waitUntil([&] { return source.isLost(); }));
    try {
        source.setGain(1.0);
        QFAIL("accepted");
    } catch (const CameraError& error) {
        QCOMPARE(QString(error.what()),
                 QString("the camera Aravis Fake (GV01) is lost; wait until it is back, "
                         "or check its cables"));
    }
    QVERIFY(waitUntil([&] { return !source.problem().empty(); }));
    QVERIFY(camera.start());
    QVERIFY(waitUntil([&] { return !source.isLost(); }));
    const CameraControls controls = source.controls();
    QCOMPARE(QString::fromStdString(controls.pixelFormat), QString("RGB8"));
    QCOMPARE(QString::fromStdString(controls.trigger), QString("Software"));
    QCOMPARE(controls.region->x.value, 1984);
    QCOMPARE(controls.region->y.value, 8);
    QCOMPARE(controls.region->width.value, 64);
    QVERIFY(source.problem().empty());
}

void TestGigeCamera::lostCameraCanBeStoppedAndGivenBack()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    FrameCollector collector;
    CameraSource source(GigeCameraProcess::Id, LargePackets);
    source.start(collector.handlers());
    QVERIFY(collector.waitForFrames(2));
    camera.kill();
    QVERIFY(waitUntil([&] { return source.isLost(); }));
    source.stop();
    QVERIFY(collector.hasEnded());
}

void TestGigeCamera::cameraOfSomebodyElseIsRefused()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    const CameraSource first(GigeCameraProcess::Id);
    QVERIFY_EXCEPTION_THROWN(CameraSource(GigeCameraProcess::Id), CameraError);
}

void TestGigeCamera::framesWaitForTheTrigger()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    FrameCollector collector;
    CameraSource source(GigeCameraProcess::Id, LargePackets);
    source.setTrigger("Software");
    QCOMPARE(QString::fromStdString(source.controls().trigger), QString("Software"));
    source.start(collector.handlers());
    QTest::qWait(1500);
    QVERIFY(collector.frames().empty());
    QCOMPARE(source.losses(), std::uint64_t{0});
    for (std::uint64_t i = 1; i <= 20 && collector.frames().empty(); ++i) {
        source.triggerBySoftware();
        // On a busy machine packets may be lost even here.
        QVERIFY(waitUntil([&] { return source.counts().complete + source.counts().incomplete == i; }));
    }
    QVERIFY(!collector.frames().empty());
    source.setTrigger({});
    QVERIFY(collector.waitForFrames(10));
    QCOMPARE(QString::fromStdString(source.controls().trigger), QString());
}

QTEST_GUILESS_MAIN(TestGigeCamera)

#include "tst_gige_camera.moc"
