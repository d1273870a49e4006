#include "host/average/FrameConditioner.h"
#include "tests/host/average/MadeFrames.h"
#include "tests/support/NewLimit.h"

#include <QtTest>

#include <memory>

using namespace zor;

/// What becomes of the frames of a stream on their way.
class TestFrameConditioner : public QObject
{
    Q_OBJECT

private slots:
    void framesStayAsTheyAre();
    void framesAreAveraged();
    void aNewNumberBeginsAnew();
    void aNewStreamBeginsAnew();
    void wrongNumberIsRefused_data();
    void wrongNumberIsRefused();
    void theDarkIsSubtractedFromTheAverage();
    void theDarkIsSubtractedWhenAskedFor();
    void anotherSettingDropsBoth();
    void anotherSizeDropsBoth();
    void anAverageIsFreedOfTheDark();
    void tooManyFramesEndTheAverage();
    void lackOfMemoryEndsTheAverage();
};

namespace {

std::shared_ptr<const Frame> grey(std::uint32_t value, std::uint32_t width = 4)
{
    return std::make_shared<const Frame>(
        frameOf("Mono8", width, 2, std::vector<std::uint32_t>(std::size_t{width} * 2, value)));
}

/// The value that all pixels of a frame have; -1 where they differ.
int greyOf(const Frame& frame)
{
    for (const std::uint8_t pixel : frame.pixels) {
        if (pixel != frame.pixels.front())
            return -1;
    }
    return frame.pixels.front();
}

QStringList noticesOf(FrameConditioner& conditioner)
{
    QStringList notices;
    for (const std::string& notice : conditioner.takeNotices())
        notices.append(QString::fromStdString(notice));
    return notices;
}

/// With a gain that the test turns.
class Stream
{
public:
    double gain = 1.0;
    FrameConditioner conditioner{[this](const Frame& frame) {
        CaptureSettings settings = settingsOf(frame);
        settings.gain = gain;
        return settings;
    }};

    int shown(std::uint32_t value) { return greyOf(*conditioner.condition(grey(value))); }
    void setDark(std::uint32_t value)
    {
        CaptureSettings settings = settingsOf(*grey(value));
        settings.gain = gain;
        conditioner.setDark(grey(value), settings);
    }
};

} // namespace

void TestFrameConditioner::framesStayAsTheyAre()
{
    Stream stream;
    const std::shared_ptr<const Frame> frame = grey(7);
    QCOMPARE(stream.conditioner.condition(frame).get(), frame.get());
    QCOMPARE(stream.conditioner.withoutDark(frame).get(), frame.get());
    QCOMPARE(stream.conditioner.averaged(), 1u);
    QVERIFY(!stream.conditioner.hasDark());
}

void TestFrameConditioner::framesAreAveraged()
{
    Stream stream;
    stream.conditioner.setAveraged(3);
    QCOMPARE(stream.shown(10), 10);
    QCOMPARE(stream.shown(20), 15);
    QCOMPARE(stream.conditioner.averaged(), 2u);
    QCOMPARE(stream.shown(60), 30);
    QCOMPARE(stream.shown(100), 60);
    QCOMPARE(stream.conditioner.averaged(), 3u);
    QCOMPARE(noticesOf(stream.conditioner), QStringList());
}

void TestFrameConditioner::aNewNumberBeginsAnew()
{
    Stream stream;
    stream.conditioner.setAveraged(3);
    stream.shown(10);
    stream.conditioner.setAveraged(2);
    QCOMPARE(stream.shown(20), 20);
    stream.conditioner.setAveraged(1);
    QCOMPARE(stream.shown(40), 40);
    QCOMPARE(noticesOf(stream.conditioner), QStringList());
}

void TestFrameConditioner::aNewStreamBeginsAnew()
{
    Stream stream;
    QVERIFY(!stream.conditioner.isAveraging());
    stream.conditioner.setAveraged(3);
    stream.shown(10);
    stream.conditioner.restart();
    QCOMPARE(stream.shown(20), 20);
    QCOMPARE(stream.shown(40), 30);
    QVERIFY(stream.conditioner.isAveraging());
    QCOMPARE(noticesOf(stream.conditioner), QStringList());
}

void TestFrameConditioner::wrongNumberIsRefused_data()
{
    QTest::addColumn<quint32>("frames");
    QTest::newRow("none") << 0u;
    QTest::newRow("too many") << 1025u;
}

void TestFrameConditioner::wrongNumberIsRefused()
{
    QFETCH(quint32, frames);
    Stream stream;
    stream.conditioner.setAveraged(2);
    stream.shown(10);
    QVERIFY_EXCEPTION_THROWN(stream.conditioner.setAveraged(frames), std::invalid_argument);
    QCOMPARE(stream.shown(20), 15);
}

void TestFrameConditioner::theDarkIsSubtractedFromTheAverage()
{
    Stream stream;
    stream.conditioner.setAveraged(2);
    stream.conditioner.setSubtractsDark(true);
    stream.setDark(10);
    QVERIFY(stream.conditioner.hasDark());
    QCOMPARE(stream.shown(4), 0);
    // Subtracted from each frame before the average, this would be 5.
    QCOMPARE(stream.shown(20), 2);
}

void TestFrameConditioner::theDarkIsSubtractedWhenAskedFor()
{
    Stream stream;
    stream.setDark(10);
    QCOMPARE(stream.shown(30), 30);
    stream.conditioner.setSubtractsDark(true);
    QCOMPARE(stream.shown(30), 20);
    stream.conditioner.setSubtractsDark(false);
    QCOMPARE(stream.shown(30), 30);
}

void TestFrameConditioner::anotherSettingDropsBoth()
{
    Stream stream;
    stream.conditioner.setAveraged(4);
    stream.conditioner.setSubtractsDark(true);
    stream.setDark(10);
    stream.shown(30);
    stream.gain = 2.0;
    QCOMPARE(stream.shown(60), 60);
    QCOMPARE(noticesOf(stream.conditioner),
             (QStringList{"The average begins anew: the gain is 2 and was 1.",
                          "The dark frame was dropped: the gain is 2 and was 1; take another one."}));
    QCOMPARE(stream.shown(80), 70);
    QCOMPARE(noticesOf(stream.conditioner), QStringList());
    QVERIFY(!stream.conditioner.hasDark());
}

void TestFrameConditioner::anotherSizeDropsBoth()
{
    Stream stream;
    stream.conditioner.setAveraged(4);
    stream.conditioner.setSubtractsDark(true);
    stream.setDark(10);
    stream.shown(30);
    QCOMPARE(greyOf(*stream.conditioner.condition(grey(50, 6))), 50);
    QCOMPARE(noticesOf(stream.conditioner).size(), 2);
}

void TestFrameConditioner::anAverageIsFreedOfTheDark()
{
    Stream stream;
    stream.conditioner.setAveraged(4);
    stream.conditioner.setSubtractsDark(true);
    stream.setDark(10);
    stream.shown(30);
    QCOMPARE(greyOf(*stream.conditioner.withoutDark(grey(80))), 70);
    QCOMPARE(stream.conditioner.averaged(), 1u);
    stream.gain = 3.0;
    // Taken in another way: nothing is subtracted, and nothing dropped.
    QCOMPARE(greyOf(*stream.conditioner.withoutDark(grey(80))), 80);
    QCOMPARE(noticesOf(stream.conditioner), QStringList());
    QVERIFY(stream.conditioner.hasDark());
    stream.gain = 1.0;
    QCOMPARE(greyOf(*stream.conditioner.withoutDark(grey(80))), 70);
    stream.conditioner.dropDark();
    QVERIFY(!stream.conditioner.hasDark());
    QCOMPARE(greyOf(*stream.conditioner.withoutDark(grey(80))), 80);
}

void TestFrameConditioner::tooManyFramesEndTheAverage()
{
    Stream stream;
    stream.conditioner.setAveraged(1024);
    // Its pixels are never touched, so that no memory is used.
    auto large = std::make_shared<Frame>(*grey(5));
    large->pixels.reserve(std::size_t{2} << 20);
    large->pixels.resize((std::size_t{1} << 20) + 1);
    const std::shared_ptr<const Frame> shown = stream.conditioner.condition(large);
    QCOMPARE(shown.get(), static_cast<const Frame*>(large.get()));
    QCOMPARE(
        noticesOf(stream.conditioner),
        QStringList("Frames are no longer averaged: the last 1024 frames take more than 1 GiB, in which 1023 "
                    "of 1048577 bytes fit; average fewer frames, or take the average once."));
    QCOMPARE(stream.shown(20), 20);
    QCOMPARE(stream.shown(40), 40);
}

void TestFrameConditioner::lackOfMemoryEndsTheAverage()
{
    Stream stream;
    stream.conditioner.setAveraged(2);
    const std::shared_ptr<const Frame> frame = grey(9, 60000);
    tooLarge = 100000;
    const std::shared_ptr<const Frame> shown = stream.conditioner.condition(frame);
    tooLarge = NoLimit;
    QCOMPARE(shown.get(), frame.get());
    QCOMPARE(noticesOf(stream.conditioner),
             QStringList("Frames are no longer averaged: there is no memory; average fewer frames."));
    QCOMPARE(stream.shown(20), 20);
    QCOMPARE(stream.shown(40), 40);
}

QTEST_APPLESS_MAIN(TestFrameConditioner)

#include "tst_frame_conditioner.moc"
