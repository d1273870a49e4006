#include "host/camera/CameraInterfaces.h"
#include "host/camera/CameraSource.h"
#include "image/PixelTypeCode.h"
#include "image/unpack/NativeCodes.h"
#include "tests/host/camera/GigeCameraProcess.h"
#include "tests/host/camera/OwnNetwork.h"

#include <QtTest>

#include <atomic>

using namespace zor;
using namespace std::chrono_literals;

/// A camera on the network for minutes. Not among the tests that run each time.
class TestGigeSoak : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aHundredFramesASecond_data();
    void aHundredFramesASecond();
    void lostAndBackThirtyTimes();
    void formatsChangeWhileFramesCome();
    void packetsAreLost();
};

namespace {

constexpr double FrameRate = 100.0;
constexpr int SecondsOfEachFormat = 8;

/// Counts frames and looks into them, on the source's thread.
class Watcher
{
public:
    FrameSource::Handlers handlers()
    {
        return {[this](const SourceFrame& frame) { look(frame); },
                [this](const SourceError& error) {
                    qWarning("%s", error.text.c_str());
                    ++errors;
                }};
    }

    std::atomic<std::uint64_t> frames{0};
    std::atomic<std::uint64_t> wrong{0};
    std::atomic<std::uint64_t> errors{0};
    std::atomic<std::uint64_t> next{0}; ///< the number after the last one's

private:
    /// The pixels of the formats that the camera of the tests fills are ramps.
    void look(const SourceFrame& frame)
    {
        const _ZorImage record = frame.frame->record();
        const std::uint32_t bits = pixelTypeSampleBits(record.pixelType);
        const bool isRamp =
            pixelTypePackingClass(record.pixelType) == PackingClass::Packed || record.pixelType == Mono8;
        if (isRamp) {
            const unsigned first = nativeCodes(record, 0, 0).codes[0];
            for (std::uint32_t i = 0; i < record.width && i < record.height; i += 7)
                wrong += nativeCodes(record, i, i).codes[0] != (first + 2 * i) % (1u << bits);
        }
        if (frame.number < next)
            ++wrong;
        next = frame.number + 1;
        ++frames;
    }
};

bool waitUntil(const std::function<bool()>& condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(60000))
            return false;
        QTest::qSleep(1);
    }
    return true;
}

void checkCounts(const CameraSource& source, const Watcher& watcher)
{
    const CameraSource::Counts counts = source.counts();
    QCOMPARE(watcher.frames.load(), counts.complete);
    QCOMPARE(counts.refused, std::uint64_t{0});
    QCOMPARE(watcher.wrong.load(), std::uint64_t{0});
    QCOMPARE(watcher.errors.load(), std::uint64_t{0});
    QVERIFY(watcher.next <= counts.complete + counts.incomplete + counts.missing);
    qInfo("%llu complete, %llu incomplete, %llu missing", static_cast<unsigned long long>(counts.complete),
          static_cast<unsigned long long>(counts.incomplete),
          static_cast<unsigned long long>(counts.missing));
}

} // namespace

void TestGigeSoak::initTestCase()
{
    if (!enterOwnNetwork())
        QSKIP("A network of its own takes rights that this user does not have.");
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    QCOMPARE(findCameras({CameraInterface::GigEVision}).size(), std::size_t{1});
}

void TestGigeSoak::aHundredFramesASecond_data()
{
    QTest::addColumn<QString>("format");
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    for (const std::string& format : CameraSource(GigeCameraProcess::Id).controls().pixelFormats)
        QTest::newRow(format.c_str()) << QString::fromStdString(format);
}

void TestGigeSoak::aHundredFramesASecond()
{
    QFETCH(QString, format);
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    CameraSource source(GigeCameraProcess::Id, {60000});
    source.setPixelFormat(format.toStdString());
    source.setFrameRate(FrameRate);
    Watcher watcher;
    source.start(watcher.handlers());
    QTest::qWait(1000 * SecondsOfEachFormat);
    source.stop();
    checkCounts(source, watcher);
    const CameraSource::Counts counts = source.counts();
    const std::uint64_t sent = counts.complete + counts.incomplete + counts.missing;
    QVERIFY(sent >= (SecondsOfEachFormat - 1) * FrameRate);
    QCOMPARE(source.losses(), std::uint64_t{0});
}

void TestGigeSoak::lostAndBackThirtyTimes()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    CameraSource source(GigeCameraProcess::Id, {60000});
    source.setFrameRate(FrameRate);
    Watcher watcher;
    source.start(watcher.handlers());
    QVERIFY(waitUntil([&] { return watcher.frames > 10; }));
    qint64 slowest = 0;
    for (std::uint64_t round = 1; round <= 30; ++round) {
        camera.kill();
        if (round % 2 == 0)
            QVERIFY(waitUntil([&] { return source.losses() == round; }));
        QVERIFY(camera.start());
        QElapsedTimer back;
        back.start();
        const std::uint64_t before = watcher.frames;
        QVERIFY(waitUntil([&] { return watcher.frames > before; }));
        QCOMPARE(source.losses(), round);
        slowest = std::max(slowest, back.elapsed());
    }
    qInfo("back after at most %lld ms", static_cast<long long>(slowest));
    QVERIFY(slowest <= 3000);
    source.stop();
    checkCounts(source, watcher);
}

void TestGigeSoak::formatsChangeWhileFramesCome()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start());
    CameraSource source(GigeCameraProcess::Id, {60000});
    source.setFrameRate(FrameRate);
    Watcher watcher;
    source.start(watcher.handlers());
    const std::vector<std::string> formats = source.controls().pixelFormats;
    for (int round = 0; round < 30; ++round) {
        source.setPixelFormat(formats[static_cast<std::size_t>(round) % formats.size()]);
        const std::uint64_t before = watcher.frames;
        QVERIFY(waitUntil([&] { return watcher.frames > before + 5; }));
    }
    source.stop();
    checkCounts(source, watcher);
    QCOMPARE(source.losses(), std::uint64_t{0});
}

void TestGigeSoak::packetsAreLost()
{
    GigeCameraProcess camera;
    QVERIFY(camera.start(0.05));
    CameraSource source(GigeCameraProcess::Id, {60000});
    source.setFrameRate(FrameRate);
    Watcher watcher;
    source.start(watcher.handlers());
    QTest::qWait(20000);
    source.stop();
    checkCounts(source, watcher);
    QVERIFY(source.counts().incomplete > 100);
    QVERIFY(source.counts().complete > 100);
}

QTEST_GUILESS_MAIN(TestGigeSoak)

#include "tst_gige_soak.moc"
