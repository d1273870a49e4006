#include "host/average/FrameSum.h"
#include "tests/host/average/MadeFrames.h"

#include <QtTest>

using namespace zor;

Q_DECLARE_METATYPE(std::function<void(zor::Frame&)>)
Q_DECLARE_METATYPE(std::vector<std::uint32_t>)

/// Sums of frames and their mean, against a plain loop over samples that are read bit by bit.
class TestFrameSum : public QObject
{
    Q_OBJECT

private slots:
    void theMeanIsThatOfTheSamples_data();
    void theMeanIsThatOfTheSamples();
    void aReplacedFrameLeavesNothingBehind_data();
    void aReplacedFrameLeavesNothingBehind();
    void rowsLongerThanARunAreWhole_data();
    void rowsLongerThanARunAreWhole();
    void knownSamplesHaveAKnownMean_data();
    void knownSamplesHaveAKnownMean();
    void asManyFramesAsThereMayBeStayExact_data();
    void asManyFramesAsThereMayBeStayExact();
    void theMeanCarriesWhatIsKnownAboutTheDepth();
    void whatDoesNotFitIsRefused_data();
    void whatDoesNotFitIsRefused();
    void anotherFrameThatDoesNotFitIsNotTakenInExchange();
    void moreFramesThanThereMayBeAreRefused();
    void nothingHasNoMean();
};

namespace {

using Samples = std::vector<std::uint32_t>;

/// To nearest, halves up.
std::uint32_t plainMean(const Samples& samples)
{
    double sum = 0;
    for (const std::uint32_t sample : samples)
        sum += sample;
    return std::uint32_t(std::floor(sum / double(samples.size()) + 0.5));
}

QString differenceOfMean(const reference::PixelFormat& format, const std::vector<Frame>& frames,
                         const FrameSum& sum)
{
    return difference(format, sum.mean(), [&](std::uint32_t x, std::uint32_t y, std::uint32_t i) {
        Samples samples;
        for (const Frame& frame : frames)
            samples.push_back(sampleOf(format, frame, x, y, i));
        return plainMean(samples);
    });
}

/// So many frames of one size, each with rows of its own pitch.
std::vector<Frame> framesOf(const reference::PixelFormat& format, std::uint32_t width, std::uint32_t height,
                            std::size_t count, std::mt19937& random)
{
    std::vector<Frame> frames;
    while (frames.size() < count)
        frames.push_back(randomFrame(format, width, height, random() % 6, random));
    return frames;
}

} // namespace

void TestFrameSum::theMeanIsThatOfTheSamples_data()
{
    addFormats();
}

void TestFrameSum::theMeanIsThatOfTheSamples()
{
    const reference::PixelFormat& format = fetchedFormat();
    std::mt19937 random(format.code);
    for (std::size_t count = 1; count <= 9; ++count) {
        const std::vector<Frame> frames =
            framesOf(format, 1 + random() % 40, 1 + random() % 6, count, random);
        FrameSum sum;
        for (const Frame& frame : frames)
            sum.add(frame);
        QCOMPARE(sum.count(), std::uint32_t(count));
        QCOMPARE(differenceOfMean(format, frames, sum), QString());
    }
}

void TestFrameSum::aReplacedFrameLeavesNothingBehind_data()
{
    addFormats();
}

void TestFrameSum::aReplacedFrameLeavesNothingBehind()
{
    const reference::PixelFormat& format = fetchedFormat();
    std::mt19937 random(format.code);
    for (std::size_t count = 1; count <= 4; ++count) {
        std::vector<Frame> frames = framesOf(format, 1 + random() % 40, 1 + random() % 6, count + 1, random);
        FrameSum sum;
        for (std::size_t i = 0; i < count; ++i)
            sum.add(frames[i]);
        sum.replace(frames.front(), frames.back());
        frames.erase(frames.begin());
        QCOMPARE(sum.count(), std::uint32_t(count));
        QCOMPARE(differenceOfMean(format, frames, sum), QString());
    }
}

void TestFrameSum::rowsLongerThanARunAreWhole_data()
{
    addFormats();
}

void TestFrameSum::rowsLongerThanARunAreWhole()
{
    const reference::PixelFormat& format = fetchedFormat();
    std::mt19937 random(format.code);
    for (const std::uint32_t width : {1023u, 1024u, 1025u, 2051u}) {
        std::vector<Frame> frames = framesOf(format, width, 2, 3, random);
        FrameSum sum;
        sum.add(frames[0]);
        sum.add(frames[1]);
        sum.replace(frames[0], frames[2]);
        frames.erase(frames.begin());
        QCOMPARE(differenceOfMean(format, frames, sum), QString());
    }
}

void TestFrameSum::knownSamplesHaveAKnownMean_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<quint32>("mean");
    const auto row = [](const char* name, const char* format, const Samples& samples, quint32 mean) {
        QTest::newRow(name) << QByteArray(format) << samples << mean;
    };
    row("one frame is its own mean", "Mono8", {77}, 77);
    row("a half goes up", "Mono8", {1, 2}, 2);
    row("a half from 0 goes up", "Mono8", {0, 1}, 1);
    row("a third goes down", "Mono8", {1, 1, 2}, 1);
    row("two thirds go up", "Mono8", {1, 2, 2}, 2);
    row("a quarter goes down", "Mono8", {4, 4, 4, 5}, 4);
    row("a half of four goes up", "Mono8", {4, 4, 5, 5}, 5);
    row("two fifths go down", "Mono8", {0, 0, 0, 1, 1}, 0);
    row("three fifths go up", "Mono8", {0, 0, 1, 1, 1}, 1);
    row("full scale of 8 bits stays", "Mono8", {255, 255, 255}, 255);
    row("full scale of 16 bits stays", "Mono16", {65535, 65535, 65535}, 65535);
    row("bits above the depth are full scale", "Mono12", {0xFFFF, 0xFFFF}, 4095);
    row("bits above the depth count as full scale among others", "Mono12", {0x1000, 1}, 2048);
}

void TestFrameSum::knownSamplesHaveAKnownMean()
{
    QFETCH(QByteArray, format);
    QFETCH(Samples, samples);
    QFETCH(quint32, mean);
    FrameSum sum;
    for (const std::uint32_t sample : samples)
        sum.add(frameOf(format, 1, 1, {sample}));
    QCOMPARE(sum.mean().pixels, frameOf(format, 1, 1, {mean}).pixels);
}

void TestFrameSum::asManyFramesAsThereMayBeStayExact_data()
{
    QTest::addColumn<quint32>("lower");
    QTest::addColumn<quint32>("mean");
    QTest::newRow("all are full scale") << 0u << 65535u;
    QTest::newRow("less than half of them are one below") << 511u << 65535u;
    QTest::newRow("half of them are one below: up") << 512u << 65535u;
    QTest::newRow("more than half of them are one below") << 513u << 65534u;
}

void TestFrameSum::asManyFramesAsThereMayBeStayExact()
{
    QFETCH(quint32, lower);
    QFETCH(quint32, mean);
    const Frame white = frameOf("Mono16", 1, 1, {65535});
    const Frame almostWhite = frameOf("Mono16", 1, 1, {65534});
    FrameSum sum;
    for (std::uint32_t i = 0; i < 1024; ++i)
        sum.add(i < lower ? almostWhite : white);
    QCOMPARE(sum.mean().pixels, frameOf("Mono16", 1, 1, {mean}).pixels);
}

void TestFrameSum::theMeanCarriesWhatIsKnownAboutTheDepth()
{
    Frame first = frameOf("Mono8", 2, 1, {1, 2});
    first.depthSource = "largest sample 2";
    first.depthGuessed = true;
    Frame second = first;
    second.depthSource = "maxval 255";
    second.depthGuessed = false;
    FrameSum sum;
    sum.add(first);
    sum.add(second);
    const Frame mean = sum.mean();
    QCOMPARE(mean.width, 2u);
    QCOMPARE(mean.height, 1u);
    QCOMPARE(mean.depthSource, std::string("largest sample 2"));
    QVERIFY(mean.depthGuessed);
}

void TestFrameSum::whatDoesNotFitIsRefused_data()
{
    using Fault = std::function<void(Frame&)>;
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<QString>("asFirst");
    QTest::addColumn<QString>("asSecond");
    const QString others = "the frames of an average have one size and pixel format: ";
    const QString unreadable =
        "the frame has no pixels, an unknown pixel format or fewer bytes than its rows "
        "take; use another frame";
    const auto row = [](const char* name, const Fault& fault, const QString& asFirst,
                        const QString& asSecond) { QTest::newRow(name) << fault << asFirst << asSecond; };
    row(
        "another pitch fits",
        [](Frame& frame) {
            frame = frameOf("Mono8", 3, 2, {1, 2, 3, 4, 5, 6});
        },
        "", "");
    row(
        "another width", [](Frame& frame) { frame.width = 2; }, "",
        others + "the size is 2 x 2 pixels and was 3 x 2 pixels; begin a new average");
    row(
        "another height", [](Frame& frame) { frame.height = 1; }, "",
        others + "the size is 3 x 1 pixels and was 3 x 2 pixels; begin a new average");
    row(
        "another format of the same layout", [](Frame& frame) { frame.pixelType = 0x0308010E; }, "",
        others + "the pixel format is BayerRG8 and was Mono8; begin a new average");
    row(
        "no pixels", [](Frame& frame) { frame.height = 0; }, unreadable,
        others + "the size is 3 x 0 pixels and was 3 x 2 pixels; begin a new average");
    row(
        "a code that is in no table", [](Frame& frame) { frame.pixelType = 0x01080186; }, unreadable,
        others + "the pixel format is the unknown code 17301894 and was Mono8; begin a new average");
    row(
        "a byte too few", [](Frame& frame) { frame.pixels.resize(6); }, unreadable, unreadable);
    row(
        "a pitch below a row", [](Frame& frame) { frame.pitch = 2; }, unreadable, unreadable);
}

/// Rows of three pixels and a byte of padding.
void TestFrameSum::whatDoesNotFitIsRefused()
{
    QFETCH(std::function<void(Frame&)>, fault);
    QFETCH(QString, asFirst);
    QFETCH(QString, asSecond);
    Frame good = frameOf("Mono8", 4, 2, {10, 20, 30, 0, 40, 50, 60, 0});
    good.width = 3;
    Frame faulty = good;
    fault(faulty);

    FrameSum fresh;
    QCOMPARE(refusalOf<std::invalid_argument>([&] { fresh.add(faulty); }), asFirst);
    QCOMPARE(fresh.count(), asFirst.isEmpty() ? 1u : 0u);

    FrameSum sum;
    sum.add(good);
    QCOMPARE(refusalOf<std::invalid_argument>([&] { sum.add(faulty); }), asSecond);
    if (asSecond.isEmpty())
        return;
    QCOMPARE(sum.count(), 1u);
    QCOMPARE(sum.mean().pixels, (std::vector<std::uint8_t>{10, 20, 30, 40, 50, 60}));
}

void TestFrameSum::anotherFrameThatDoesNotFitIsNotTakenInExchange()
{
    const Frame good = frameOf("Mono8", 2, 1, {10, 20});
    const Frame larger = frameOf("Mono8", 3, 1, {1, 2, 3});
    FrameSum sum;
    QVERIFY(!refusalOf<std::invalid_argument>([&] { sum.replace(good, good); }).isEmpty());
    sum.add(good);
    QVERIFY(!refusalOf<std::invalid_argument>([&] { sum.replace(good, larger); }).isEmpty());
    QVERIFY(!refusalOf<std::invalid_argument>([&] { sum.replace(larger, good); }).isEmpty());
    QCOMPARE(sum.mean().pixels, good.pixels);
}

void TestFrameSum::moreFramesThanThereMayBeAreRefused()
{
    FrameSum sum;
    for (int i = 0; i < 1024; ++i)
        sum.add(frameOf("Mono8", 1, 1, {200}));
    QCOMPARE(refusalOf<std::length_error>([&] { sum.add(frameOf("Mono8", 1, 1, {0})); }),
             QString("an average is made of 1 to 1024 frames; begin a new average"));
    QCOMPARE(sum.count(), 1024u);
    sum.replace(frameOf("Mono8", 1, 1, {200}), frameOf("Mono8", 1, 1, {200}));
    QCOMPARE(sum.mean().pixels, std::vector<std::uint8_t>{200});
}

void TestFrameSum::nothingHasNoMean()
{
    QCOMPARE(refusalOf<std::logic_error>([] { FrameSum().mean(); }),
             QString("an average needs at least one frame"));
}

QTEST_APPLESS_MAIN(TestFrameSum)
#include "tst_frame_sum.moc"
