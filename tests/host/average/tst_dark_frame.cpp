#include "host/average/DarkFrame.h"
#include "tests/host/average/MadeFrames.h"

#include <QtTest>

using namespace zor;

Q_DECLARE_METATYPE(std::function<void(zor::Frame&, zor::Frame&)>)
Q_DECLARE_METATYPE(zor::Frame)

/// A dark frame is subtracted, against a plain loop over samples that are read bit by bit.
class TestDarkFrame : public QObject
{
    Q_OBJECT

private slots:
    void eachSampleIsLessByTheDarkOne_data();
    void eachSampleIsLessByTheDarkOne();
    void knownFramesGiveKnownOnes_data();
    void knownFramesGiveKnownOnes();
    void theFrameSaysWhatIsKnownAboutTheDepth();
    void whatIsNotAlikeIsRefused_data();
    void whatIsNotAlikeIsRefused();
};

void TestDarkFrame::eachSampleIsLessByTheDarkOne_data()
{
    addFormats();
}

void TestDarkFrame::eachSampleIsLessByTheDarkOne()
{
    const reference::PixelFormat& format = fetchedFormat();
    std::mt19937 random(format.code);
    for (int run = 0; run < 20; ++run) {
        const std::uint32_t width = run == 0 ? 2051 : 1 + random() % 40;
        const std::uint32_t height = 1 + random() % 6;
        const Frame frame = randomFrame(format, width, height, random() % 6, random);
        const Frame dark = randomFrame(format, width, height, random() % 6, random);
        const auto expected = [&](std::uint32_t x, std::uint32_t y, std::uint32_t i) {
            const std::uint32_t sample = sampleOf(format, frame, x, y, i);
            const std::uint32_t darkSample = sampleOf(format, dark, x, y, i);
            if (QString("UVA").contains(format.component(x, y, i)))
                return sample;
            return sample > darkSample ? sample - darkSample : 0;
        };
        QCOMPARE(difference(format, subtractDark(frame, dark), expected), QString());
    }
}

void TestDarkFrame::knownFramesGiveKnownOnes_data()
{
    using Samples = std::vector<std::uint32_t>;
    QTest::addColumn<Frame>("frame");
    QTest::addColumn<Frame>("dark");
    QTest::addColumn<Frame>("result");
    const auto row = [](const char* name, const char* format, std::uint32_t width, const Samples& frame,
                        const Samples& dark, const Samples& result) {
        QTest::newRow(name) << frameOf(format, width, 1, frame) << frameOf(format, width, 1, dark)
                            << frameOf(format, width, 1, result);
    };
    row("never below 0", "Mono8", 4, {10, 10, 10, 0}, {9, 10, 11, 255}, {1, 0, 0, 0});
    row("words", "Mono16", 2, {65535, 300}, {0, 301}, {65535, 0});
    row("alpha stays", "RGBa8", 1, {10, 20, 30, 255}, {1, 2, 3, 255}, {9, 18, 27, 255});
    row("luma first", "YUV422_8", 2, {100, 120, 110, 130}, {1, 128, 2, 128}, {99, 120, 108, 130});
    row("a difference first", "YUV422_8_UYVY", 2, {120, 100, 130, 110}, {128, 1, 128, 2},
        {120, 99, 130, 108});
    row("Cb and Cr", "YCbCr422_8", 2, {100, 120, 110, 130}, {1, 128, 2, 128}, {99, 120, 108, 130});
    row("a fourth channel", "YUV444_8", 1, {100, 120, 130, 77}, {1, 128, 128, 70}, {99, 120, 130, 77});
}

void TestDarkFrame::knownFramesGiveKnownOnes()
{
    QFETCH(Frame, frame);
    QFETCH(Frame, dark);
    QFETCH(Frame, result);
    QCOMPARE(subtractDark(frame, dark).pixels, result.pixels);
}

void TestDarkFrame::theFrameSaysWhatIsKnownAboutTheDepth()
{
    Frame frame = frameOf("Mono8", 2, 1, {1, 2});
    frame.depthSource = "largest sample 2";
    frame.depthGuessed = true;
    const Frame result = subtractDark(frame, frameOf("Mono8", 2, 1, {0, 0}));
    QCOMPARE(result.width, 2u);
    QCOMPARE(result.height, 1u);
    QCOMPARE(result.depthSource, std::string("largest sample 2"));
    QVERIFY(result.depthGuessed);
}

void TestDarkFrame::whatIsNotAlikeIsRefused_data()
{
    using Fault = std::function<void(Frame & frame, Frame & dark)>;
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<QString>("refusal");
    const QString unlike = "the frame is not like the dark frame: ";
    const QString unreadable =
        "the frame has no pixels, an unknown pixel format or fewer bytes than its rows "
        "take; use another frame";
    QTest::newRow("nothing wrong") << Fault([](Frame&, Frame&) {}) << "";
    QTest::newRow("another size") << Fault([](Frame& frame, Frame&) { frame.width = 2; })
                                  << unlike +
                                         "the size is 2 x 2 pixels and was 3 x 2 pixels; take a new dark "
                                         "frame";
    QTest::newRow("another format") << Fault([](Frame&, Frame& dark) {
        dark.pixelType = 0x0108310C;
    }) << unlike + "the pixel format is Mono8 and was Mono8_FLExPacked; take a new dark frame";
    QTest::newRow("a frame with a byte too few")
        << Fault([](Frame& frame, Frame&) { frame.pixels.pop_back(); }) << unreadable;
    QTest::newRow("a dark frame with a byte too few")
        << Fault([](Frame&, Frame& dark) { dark.pixels.pop_back(); }) << unreadable;
}

void TestDarkFrame::whatIsNotAlikeIsRefused()
{
    QFETCH(std::function<void(Frame & frame, Frame & dark)>, fault);
    Frame frame = frameOf("Mono8", 3, 2, {1, 2, 3, 4, 5, 6});
    Frame dark = frame;
    fault(frame, dark);
    QTEST(refusalOf<std::invalid_argument>([&] { subtractDark(frame, dark); }), "refusal");
}

QTEST_APPLESS_MAIN(TestDarkFrame)
#include "tst_dark_frame.moc"
