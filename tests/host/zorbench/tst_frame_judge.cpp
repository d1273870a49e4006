#include "host/zorbench/FrameJudge.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

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

QTEST_GUILESS_MAIN(TestFrameJudge)
#include "tst_frame_judge.moc"
