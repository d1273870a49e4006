#include "host/zorbench/FrameJudge.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <functional>

Q_DECLARE_METATYPE(std::function<void(zor::FrameJudge&)>)

namespace {

/// A frame of 4 pixels of one value.
std::shared_ptr<const zor::Frame> even(std::uint8_t value, std::uint32_t pitch = 2)
{
    auto frame = std::make_shared<zor::Frame>();
    frame->width = 2;
    frame->height = 2;
    frame->pitch = pitch;
    frame->pixelType = codeOf("Mono8");
    frame->pixels.assign(4, value);
    return frame;
}

/// Notes the darkest values that a judge found, -1 for each refusal.
struct Noted
{
    explicit Noted(zor::FrameJudge& judge)
    {
        QObject::connect(&judge, &zor::FrameJudge::judged, &judge,
                         [this](const zor::FrameFigures& figures, const zor::Judgement& judgement) {
                             values.append(int(figures.darkestRow.mean));
                             verdicts.append(int(judgement.verdict));
                         });
        QObject::connect(&judge, &zor::FrameJudge::refused, &judge, [this](const QString& text) {
            values.append(-1);
            reason = text;
        });
    }

    QList<int> values;
    QList<int> verdicts;
    QString reason;
};

} // namespace

/// When the frames of a workbench are judged.
class TestFrameJudge : public QObject
{
    Q_OBJECT

private slots:
    void aFrameIsJudgedAtOnce();
    void aStreamIsJudgedNowAndThen();
    void aSingleFrameDoesNotWaitForTheStream();
    void aFrameWithoutAMonoFormIsRefused();
    void noiseIsMeasuredBetweenFramesOfAStream();
    void noiseNeedsTwoFramesOfAStream_data();
    void noiseNeedsTwoFramesOfAStream();
};

void TestFrameJudge::aFrameIsJudgedAtOnce()
{
    zor::FrameJudge judge;
    Noted noted(judge);
    for (const int value : {100, 0, 40})
        judge.judge(even(static_cast<std::uint8_t>(value)));
    QCOMPARE(noted.values, (QList<int>{100, 0, 40}));
    QCOMPARE(noted.verdicts,
             (QList<int>{int(zor::Verdict::Green), int(zor::Verdict::Red), int(zor::Verdict::Amber)}));
}

void TestFrameJudge::aStreamIsJudgedNowAndThen()
{
    zor::FrameJudge judge;
    Noted noted(judge);
    for (const int value : {100, 101, 102})
        judge.follow(even(static_cast<std::uint8_t>(value)));
    QCOMPARE(noted.values, QList<int>{100});
    // The last one is not left out, and judged once.
    QTRY_COMPARE(noted.values, (QList<int>{100, 102}));
    judge.follow(even(103));
    QCOMPARE(noted.values, (QList<int>{100, 102}));
    QTRY_COMPARE(noted.values, (QList<int>{100, 102, 103}));
}

void TestFrameJudge::aSingleFrameDoesNotWaitForTheStream()
{
    zor::FrameJudge judge;
    Noted noted(judge);
    judge.follow(even(100));
    judge.follow(even(101));
    judge.judge(even(50));
    QCOMPARE(noted.values, (QList<int>{100, 50}));
    judge.follow(even(60));
    QTRY_COMPARE(noted.values, (QList<int>{100, 50, 60}));
}

void TestFrameJudge::aFrameWithoutAMonoFormIsRefused()
{
    zor::FrameJudge judge;
    Noted noted(judge);
    judge.judge(even(1, 1));
    QCOMPARE(noted.values, QList<int>{-1});
    QCOMPARE(noted.reason,
             QString("a frame of 2 x 2 pixels could not be brought from Mono8 to Mono8; check its "
                     "size and pitch, use a smaller frame or close other programs"));
}

void TestFrameJudge::noiseIsMeasuredBetweenFramesOfAStream()
{
    zor::FrameJudge judge;
    QList<double> variances;
    QObject::connect(&judge, &zor::FrameJudge::noiseMeasured, &judge,
                     [&](const zor::FrameNoise& noise, quint32 width, quint32 height) {
                         variances.append(noise.variance);
                         QCOMPARE(width, 2u);
                         QCOMPARE(height, 2u);
                     });
    auto second = std::make_shared<zor::Frame>(*even(100));
    second->pixels = {106, 94, 100, 100};
    judge.follow(even(100));
    judge.follow(second);
    // Half of (6 * 6 + 6 * 6) / 4.
    QTRY_COMPARE(variances, QList<double>{9.0});
    // A frame that is brighter as a whole has no noise.
    auto third = std::make_shared<zor::Frame>(*second);
    third->pixels = {107, 95, 101, 101};
    judge.follow(third);
    QTRY_COMPARE(variances, (QList<double>{9.0, 0.0}));
}

void TestFrameJudge::noiseNeedsTwoFramesOfAStream_data()
{
    using Use = std::function<void(zor::FrameJudge&)>;
    QTest::addColumn<Use>("between");
    QTest::newRow("a file comes between them") << Use([](zor::FrameJudge& judge) { judge.judge(even(50)); });
    QTest::newRow("one without a mono form comes between them")
        << Use([](zor::FrameJudge& judge) { judge.judge(even(1, 1)); });
    QTest::newRow("averages are not measured")
        << Use([](zor::FrameJudge& judge) { judge.setMeasuresNoise(false); });
    QTest::newRow("they are averages no more") << Use([](zor::FrameJudge& judge) {
        judge.setMeasuresNoise(false);
        judge.setMeasuresNoise(true);
    });
    QTest::newRow("another size comes between them") << Use([](zor::FrameJudge& judge) {
        auto wide = std::make_shared<zor::Frame>(*even(60));
        wide->width = 4;
        wide->height = 1;
        wide->pitch = 4;
        judge.follow(wide);
        QTest::qWait(300);
    });
}

void TestFrameJudge::noiseNeedsTwoFramesOfAStream()
{
    using Use = std::function<void(zor::FrameJudge&)>;
    QFETCH(Use, between);
    zor::FrameJudge judge;
    int measured = 0;
    int unknown = 0;
    int judged = 0;
    QObject::connect(&judge, &zor::FrameJudge::noiseMeasured, &judge, [&] { ++measured; });
    QObject::connect(&judge, &zor::FrameJudge::noiseUnknown, &judge, [&] { ++unknown; });
    QObject::connect(&judge, &zor::FrameJudge::judged, &judge, [&] { ++judged; });
    judge.follow(even(100));
    between(judge);
    const int before = judged;
    judge.follow(even(101));
    QTRY_COMPARE(judged, before + 1);
    QCOMPARE(measured, 0);
    QVERIFY(unknown > 0);
}

QTEST_GUILESS_MAIN(TestFrameJudge)
#include "tst_frame_judge.moc"
