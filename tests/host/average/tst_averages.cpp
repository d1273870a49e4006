#include "host/average/AverageOfFrames.h"
#include "host/average/SlidingAverage.h"
#include "tests/host/average/MadeFrames.h"
#include "tests/support/NewLimit.h"

#include <QtTest>

using namespace zor;

/// Averages of a stream: so many frames once, and the last ones at any time.
class TestAverages : public QObject
{
    Q_OBJECT

private slots:
    void averagesAreOfOneFrameToALimit_data();
    void averagesAreOfOneFrameToALimit();
    void anAverageSaysHowFarItIs();
    void anAverageThatIsDoneTakesNoMore();
    void aSlidingAverageIsThatOfTheLastFrames_data();
    void aSlidingAverageIsThatOfTheLastFrames();
    void aSlidingAverageHoldsTheFramesItNeedsAlone();
    void onlyTheFirstFrameNeedsMemory();
    void aFrameThatDoesNotFitLeavesASlidingAverageAsItIs();
    void heldFramesHaveALimit_data();
    void heldFramesHaveALimit();
    void framesThatTakeTooMuchMemoryAreRefused();
};

namespace {

std::shared_ptr<const Frame> grey(std::uint32_t value)
{
    return std::make_shared<Frame>(frameOf("Mono16", 1, 1, {value}));
}

std::uint32_t valueOf(const Frame& frame)
{
    return frame.pixels.at(0) + 256u * frame.pixels.at(1);
}

} // namespace

void TestAverages::averagesAreOfOneFrameToALimit_data()
{
    QTest::addColumn<quint32>("count");
    QTest::addColumn<QString>("refusal");
    const QString refusal = "an average is made of 1 to 1024 frames, not ";
    QTest::newRow("none") << 0u << refusal + "0";
    QTest::newRow("one") << 1u << "";
    QTest::newRow("the most") << 1024u << "";
    QTest::newRow("one more") << 1025u << refusal + "1025";
}

void TestAverages::averagesAreOfOneFrameToALimit()
{
    QFETCH(quint32, count);
    QTEST(refusalOf<std::invalid_argument>([&] { QCOMPARE(AverageOfFrames(count).wanted(), count); }),
          "refusal");
    QTEST(refusalOf<std::invalid_argument>([&] { QCOMPARE(SlidingAverage(count).wanted(), count); }),
          "refusal");
}

void TestAverages::anAverageSaysHowFarItIs()
{
    AverageOfFrames average(3);
    for (std::uint32_t i = 0; i < 3; ++i) {
        QCOMPARE(average.taken(), i);
        QVERIFY(!average.isDone());
        QCOMPARE(refusalOf<std::logic_error>([&] { average.result(); }),
                 QString("the average has %1 of 3 frames; add the others first").arg(i));
        average.add(*grey(100 * i));
    }
    QCOMPARE(average.taken(), 3u);
    QVERIFY(average.isDone());
    QCOMPARE(valueOf(average.result()), 100u);
}

void TestAverages::anAverageThatIsDoneTakesNoMore()
{
    AverageOfFrames average(1);
    average.add(*grey(5));
    QCOMPARE(refusalOf<std::logic_error>([&] { average.add(*grey(7)); }),
             QString("the average has all its frames; begin a new one"));
    QCOMPARE(valueOf(average.result()), 5u);
}

void TestAverages::aSlidingAverageIsThatOfTheLastFrames_data()
{
    QTest::addColumn<int>("wanted");
    for (const int wanted : {1, 2, 3, 4, 7, 100, 1024})
        QTest::addRow("over %d", wanted) << wanted;
}

void TestAverages::aSlidingAverageIsThatOfTheLastFrames()
{
    QFETCH(int, wanted);
    std::mt19937 random(static_cast<unsigned>(wanted));
    SlidingAverage average(static_cast<std::uint32_t>(wanted));
    QList<std::uint32_t> last;
    for (int i = 0; i < 2 * wanted + 10; ++i) {
        last.append(random() % 65536);
        average.add(grey(last.last()));
        if (last.size() > wanted)
            last.removeFirst();
        double sum = 0;
        for (const std::uint32_t value : qAsConst(last))
            sum += value;
        QCOMPARE(average.count(), std::uint32_t(last.size()));
        QCOMPARE(valueOf(average.mean()), std::uint32_t(std::floor(sum / last.size() + 0.5)));
    }
}

void TestAverages::aSlidingAverageHoldsTheFramesItNeedsAlone()
{
    QList<std::weak_ptr<const Frame>> frames;
    SlidingAverage average(2);
    for (std::uint32_t i = 0; i < 5; ++i) {
        const auto frame = grey(i);
        frames.append(frame);
        average.add(frame);
    }
    for (int i = 0; i < 5; ++i)
        QCOMPARE(frames[i].expired(), i < 3);
}

/// An average that has no memory for a frame would have it in its sum and not among the frames that leave.
void TestAverages::onlyTheFirstFrameNeedsMemory()
{
    SlidingAverage average(20);
    std::vector<std::shared_ptr<const Frame>> frames;
    for (std::uint32_t i = 0; i < 50; ++i)
        frames.push_back(grey(i));
    average.add(frames.front());
    tooLarge = 1;
    try {
        for (std::size_t i = 1; i < frames.size(); ++i)
            average.add(frames[i]);
    } catch (const std::bad_alloc&) {
        tooLarge = NoLimit;
        QFAIL("a frame was refused");
    }
    tooLarge = NoLimit;
    // 30 to 49.
    QCOMPARE(valueOf(average.mean()), 40u);
}

void TestAverages::aFrameThatDoesNotFitLeavesASlidingAverageAsItIs()
{
    const auto larger = std::make_shared<Frame>(frameOf("Mono16", 2, 1, {9, 9}));
    SlidingAverage average(2);
    for (const std::uint32_t value : {10, 20, 30}) {
        average.add(grey(value));
        QVERIFY(!refusalOf<std::invalid_argument>([&] { average.add(larger); }).isEmpty());
    }
    QCOMPARE(average.count(), 2u);
    QCOMPARE(valueOf(average.mean()), 25u);
    average.add(grey(40));
    QCOMPARE(valueOf(average.mean()), 35u);
    average.add(grey(70));
    QCOMPARE(valueOf(average.mean()), 55u);
}

void TestAverages::heldFramesHaveALimit_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<quint32>("fitting");
    constexpr quint64 gibibyte = 1024 * 1024 * 1024;
    QTest::newRow("no frame is without bytes, but none is divided by") << quint64(0) << 1024u;
    QTest::newRow("small ones: as many as an average has") << quint64(1) << 1024u;
    QTest::newRow("1 MiB each") << gibibyte / 1024 << 1024u;
    QTest::newRow("a byte more") << gibibyte / 1024 + 1 << 1023u;
    QTest::newRow("5 megapixels of 16 bits") << quint64(2448 * 2048 * 2) << 107u;
    QTest::newRow("half of it each") << gibibyte / 2 << 2u;
    QTest::newRow("all of it") << gibibyte << 1u;
    QTest::newRow("more than there is") << gibibyte + 1 << 0u;
}

void TestAverages::heldFramesHaveALimit()
{
    QFETCH(quint64, bytes);
    QTEST(SlidingAverage::framesThatFit(bytes), "fitting");
}

void TestAverages::framesThatTakeTooMuchMemoryAreRefused()
{
    const auto frame = std::make_shared<Frame>(frameOf("Mono8", 1, 1, {7}));
    SlidingAverage average(1024);
    frame->pixels.resize(1024 * 1024);
    average.add(frame);
    const auto larger = std::make_shared<Frame>(*frame);
    larger->pixels.push_back(0);
    QCOMPARE(refusalOf<std::length_error>([&] { average.add(larger); }),
             QString("the last 1024 frames take more than 1 GiB, in which 1023 of 1048577 bytes fit; average "
                     "fewer frames, or take the average once"));
    QCOMPARE(average.count(), 1u);
    QCOMPARE(refusalOf<std::length_error>([&] { SlidingAverage(1023).add(larger); }), QString());
}

QTEST_APPLESS_MAIN(TestAverages)
#include "tst_averages.moc"
