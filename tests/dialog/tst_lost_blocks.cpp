#include "tests/dialog/DialogData.h"
#include "tests/dialog/FailingAllocations.h"
#include "tests/dialog/RunAllocations.h"
#include "tests/fakes/FakeConverter.h"
#include "tests/fakes/FakeImageHeaders.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QCheckBox>
#include <QTest>

namespace {

/// The frame, both corrected images, the histogram, four means and four lines.
constexpr int MemberBlocks = 12;

} // namespace

/// Which blocks and records are still there after a run, a failure, the end of the dialog.
class TestLostBlocks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void goodRunKeepsItsMembersAlone_data();
    void goodRunKeepsItsMembersAlone();
    void endOfTheDialogGivesEverythingBack();
    void failedPassLosesItsCodesAlone_data();
    void failedPassLosesItsCodesAlone();
    void goodIntakeGivesTheConvertedRecordBack();
    void failedFrameBlockLosesTheConvertedRecord();
    void eachAdapterLosesItsHeaderAlone_data();
    void eachAdapterLosesItsHeaderAlone();
};

void TestLostBlocks::init()
{
    fakeConverter = FakeConverter();
    FakeImageHeaders::reset();
    FakeViewer::reset();
    failAllocation(0);
}

void TestLostBlocks::cleanup()
{
    restoreAllCursors();
}

void TestLostBlocks::goodRunKeepsItsMembersAlone_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("showRows");
    for (const int depth : {8, 10, 12, 16}) {
        QTest::addRow("%d bits, row box clear", depth) << depth << false;
        QTest::addRow("%d bits, row box ticked", depth) << depth << true;
    }
}

void TestLostBlocks::goodRunKeepsItsMembersAlone()
{
    QFETCH(int, depth);
    QFETCH(bool, showRows);
    const int before = liveBlocks();
    DialogProbe d;
    d.ui.chBShowY->setChecked(showRows);
    d.take(TestFrame::even(5, 4, depth, 100));
    QCOMPARE(liveBlocks() - before, 1);
    for (int run = 0; run < 3; ++run) {
        QVERIFY(d.RunCorrection());
        QCOMPARE(liveBlocks() - before, MemberBlocks);
    }
    d.ResetData(false);
    QCOMPARE(liveBlocks() - before, 0);
}

void TestLostBlocks::endOfTheDialogGivesEverythingBack()
{
    const int before = liveBlocks();
    {
        DialogProbe d;
        d.take(unevenFrame());
        d.take(unevenFrame());
        QVERIFY(d.RunCorrection());
        QCOMPARE(liveBlocks() - before, MemberBlocks);
    }
    QCOMPARE(liveBlocks() - before, 0);
}

void TestLostBlocks::failedPassLosesItsCodesAlone_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("lost");
    for (std::size_t place = Image + 1; place < PlaceCount; ++place) {
        const bool loses =
            place == FlatX1 || place == Offset1 || place == FlatX2 || place == Offset2 || place == FlatY;
        QTest::addRow("%s fails", PlaceNames[place]) << int(place) << (loses ? 1 : 0);
    }
}

void TestLostBlocks::failedPassLosesItsCodesAlone()
{
    QFETCH(int, place);
    QFETCH(int, lost);
    ModalWatch watch;
    const int before = liveBlocks();
    {
        DialogProbe d;
        d.ui.chBShowY->setChecked(true);
        d.take(unevenFrame());
        failAllocation(place);
        d.RunCorrection();
        failAllocation(0);
        QVERIFY(d.RunCorrection());
        QCOMPARE(liveBlocks() - before, MemberBlocks + lost);
    }
    QCOMPARE(liveBlocks() - before, lost);
}

void TestLostBlocks::goodIntakeGivesTheConvertedRecordBack()
{
    DialogProbe d;
    d.take(unevenFrame());
    QVERIFY(d.m_image);
    QCOMPARE(fakeConverter.conversions, 1);
    QCOMPARE(fakeConverter.live(), 0);
}

void TestLostBlocks::failedFrameBlockLosesTheConvertedRecord()
{
    ModalWatch watch;
    const int before = liveBlocks();
    DialogProbe d;
    failAllocation(1);
    d.take(unevenFrame());
    QVERIFY(!d.m_image);
    QCOMPARE(watch.texts, QStringList("Not enough memory for the operation!"));
    QCOMPARE(fakeConverter.live(), 1);
    QCOMPARE(liveBlocks() - before, 0);
}

void TestLostBlocks::eachAdapterLosesItsHeaderAlone_data()
{
    QTest::addColumn<QVector<int>>("widths");
    QTest::addColumn<int>("shows");
    QTest::addColumn<int>("lost");
    QTest::newRow("no image") << QVector<int>() << 1 << 0;
    QTest::newRow("one image") << QVector<int>({6}) << 1 << 2;
    QTest::newRow("images of one size") << QVector<int>({6, 6, 6}) << 1 << 2;
    QTest::newRow("images of other sizes") << QVector<int>({6, 7, 6, 9}) << 1 << 2;
    QTest::newRow("adapters made anew") << QVector<int>({6, 7}) << 3 << 6;
}

void TestLostBlocks::eachAdapterLosesItsHeaderAlone()
{
    QFETCH(QVector<int>, widths);
    QFETCH(int, shows);
    QFETCH(int, lost);
    const int before = liveBlocks();
    {
        DialogProbe d;
        for (int show = 0; show < shows; ++show) {
            d.show();
            for (const int width : widths) {
                d.take(TestFrame::even(width, 4, 12, 500));
                d.Update();
            }
            d.hide();
            d.ResetData(true);
        }
    }
    QCOMPARE(FakeImageHeaders::created() - FakeImageHeaders::released(), lost);
    QCOMPARE(liveBlocks() - before, 0);
}

QTEST_MAIN(TestLostBlocks)
#include "tst_lost_blocks.moc"
