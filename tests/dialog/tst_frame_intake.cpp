#include "image/PixelTypeCode.h"
#include "tests/fakes/FakeConverter.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/ModalWatch.h"
#include "tests/support/RecordOf.h"

#include <QMessageBox>
#include <QTest>

/// What intake asks of the converter and what it takes over.
class TestFrameIntake : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void targetFollowsTheDepth_data();
    void targetFollowsTheDepth();
    void colourFrameGoesToTheMonoFormatOfItsDepth_data();
    void colourFrameGoesToTheMonoFormatOfItsDepth();
    void frameOfTheTargetFormatIsConvertedToo();
    void sizeIsTheHostsAndTheRestTheConverters();
    void convertedRecordIsGivenBack();
    void hostsRecordIsFreeAfterIntake();
    void smoothingIsSwitchedOff();
    void converterFailureShowsItsBox_data();
    void converterFailureShowsItsBox();
    void unusableRecordIsNotConverted_data();
    void unusableRecordIsNotConverted();
};

namespace {

_ZorImage hostRecord(std::uint32_t depth, std::uint32_t pixelType = zor::Mono8)
{
    static std::uint8_t pixels[64];
    _ZorImage record = recordOf(pixelType, 4, 2, 32, pixels);
    record.depth = depth;
    return record;
}

void deliver(TestFrame frame)
{
    fakeConverter.deliver(frame.record(), frame.bytes);
}

} // namespace

void TestFrameIntake::init()
{
    fakeConverter = FakeConverter();
    deliver(TestFrame::even(4, 2, 12, 1000));
}

void TestFrameIntake::cleanup()
{
    restoreAllCursors();
}

void TestFrameIntake::targetFollowsTheDepth_data()
{
    QTest::addColumn<unsigned>("depth");
    QTest::addColumn<unsigned>("target");
    QTest::newRow("8 bits") << 8U << zor::Mono8;
    QTest::newRow("10 bits") << 10U << zor::Mono10;
    QTest::newRow("12 bits") << 12U << zor::Mono12;
    QTest::newRow("14 bits come down to 8") << 14U << zor::Mono8;
    QTest::newRow("16 bits") << 16U << zor::Mono16;
    QTest::newRow("no depth") << 0U << zor::Mono8;
    QTest::newRow("an odd depth") << 11U << zor::Mono8;
    QTest::newRow("32 bits") << 32U << zor::Mono8;
}

void TestFrameIntake::targetFollowsTheDepth()
{
    QFETCH(unsigned, depth);
    QFETCH(unsigned, target);
    DialogProbe d;
    _ZorImage record = hostRecord(depth);
    d.SetFrame(&record);
    QCOMPARE(fakeConverter.conversions, 1);
    QCOMPARE(fakeConverter.askedType, static_cast<unsigned long>(target));
    QCOMPARE(fakeConverter.askedSource, static_cast<const _ZorImage*>(&record));
}

void TestFrameIntake::colourFrameGoesToTheMonoFormatOfItsDepth_data()
{
    QTest::addColumn<unsigned>("pixelType");
    QTest::addColumn<unsigned>("depth");
    QTest::addColumn<unsigned>("target");
    QTest::newRow("BayerRG8") << codeOf("BayerRG8") << 8U << zor::Mono8;
    QTest::newRow("YUV422_10") << codeOf("YUV422_10") << 10U << zor::Mono10;
    QTest::newRow("RGB12") << codeOf("RGB12") << 12U << zor::Mono12;
    QTest::newRow("BayerBG16") << codeOf("BayerBG16") << 16U << zor::Mono16;
}

void TestFrameIntake::colourFrameGoesToTheMonoFormatOfItsDepth()
{
    QFETCH(unsigned, pixelType);
    QFETCH(unsigned, depth);
    QFETCH(unsigned, target);
    DialogProbe d;
    deliver(TestFrame::even(4, 2, static_cast<int>(depth), 77));
    _ZorImage record = hostRecord(depth, pixelType);
    record.channels = 3;
    d.SetFrame(&record);
    QCOMPARE(fakeConverter.askedType, static_cast<unsigned long>(target));
    QCOMPARE(d.m_pixelFormat, target);
    QCOMPARE(d.m_depth, static_cast<std::int32_t>(depth));
    QCOMPARE(d.m_imageBytes, std::uint64_t{depth == 8 ? 8U : 16U});
}

void TestFrameIntake::frameOfTheTargetFormatIsConvertedToo()
{
    DialogProbe d;
    TestFrame frame = TestFrame::even(4, 2, 12, 1000);
    d.take(frame);
    QCOMPARE(fakeConverter.conversions, 1);
}

void TestFrameIntake::sizeIsTheHostsAndTheRestTheConverters()
{
    DialogProbe d;
    TestFrame delivered = TestFrame(
        7, 5, 10, [](int, int) { return 3U; }, 20);
    deliver(delivered);
    _ZorImage record = hostRecord(16, zor::Mono16);
    record.pitch = 8;
    d.SetFrame(&record);
    QCOMPARE(d.m_width, 4);
    QCOMPARE(d.m_height, 2);
    QCOMPARE(d.m_depth, 10);
    QCOMPARE(d.m_step, 20);
    QCOMPARE(d.m_imageBytes, std::uint64_t{100});
    QCOMPARE(d.m_pixelFormat, zor::Mono10);
}

void TestFrameIntake::convertedRecordIsGivenBack()
{
    DialogProbe d;
    _ZorImage record = hostRecord(12);
    d.SetFrame(&record);
    QCOMPARE(fakeConverter.live(), 0);
    QVERIFY(d.m_image);
}

void TestFrameIntake::hostsRecordIsFreeAfterIntake()
{
    DialogProbe d;
    fakeConverter = FakeConverter();
    TestFrame frame = TestFrame::even(4, 2, 12, 1000);
    _ZorImage record = frame.record();
    d.SetFrame(&record);
    record = _ZorImage{};
    frame.bytes.assign(frame.bytes.size(), 0);
    QCOMPARE(d.m_width, 4);
    QCOMPARE(int(d.m_image[0]) + 256 * int(d.m_image[1]), 1000);
}

void TestFrameIntake::smoothingIsSwitchedOff()
{
    DialogProbe d;
    d.m_pairSmoothing = 1;
    _ZorImage record = hostRecord(12);
    d.SetFrame(&record);
    QCOMPARE(d.m_pairSmoothing, 0);
}

void TestFrameIntake::converterFailureShowsItsBox_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("a positive answer") << 1;
    QTest::newRow("a negative answer") << -5;
}

void TestFrameIntake::converterFailureShowsItsBox()
{
    QFETCH(int, answer);
    DialogProbe d;
    d.take(TestFrame::even(4, 2, 12, 1000));
    d.Update();
    QVERIFY(d.m_flatY);

    fakeConverter.answer = answer;
    ModalWatch watch;
    bool modal = false;
    bool orphan = false;
    watch.onBox = [&](QMessageBox& box) {
        modal = box.isModal();
        orphan = box.parent() == nullptr;
    };
    _ZorImage record = hostRecord(12);
    record.width = 9;
    record.height = 7;
    d.SetFrame(&record);
    QCOMPARE(watch.texts, QStringList("Converter error!"));
    QVERIFY(modal);
    QVERIFY(orphan);
    QVERIFY(!d.m_image && !d.m_flatX && !d.m_flatY);
    QCOMPARE(d.m_width, 9);
    QCOMPARE(d.m_height, 7);
    QCOMPARE(d.m_depth, 0);
    d.Update();
    QVERIFY(!d.m_flatY);
    QCOMPARE(watch.texts.size(), 1);
}

void TestFrameIntake::unusableRecordIsNotConverted_data()
{
    QTest::addColumn<bool>("data");
    QTest::newRow("null pixels") << false;
    QTest::newRow("size 0") << true;
}

void TestFrameIntake::unusableRecordIsNotConverted()
{
    QFETCH(bool, data);
    DialogProbe d;
    _ZorImage record = hostRecord(12);
    if (data)
        record.imageSize = 0;
    else
        record.data = nullptr;
    d.SetFrame(&record);
    QCOMPARE(fakeConverter.conversions, 0);
    QVERIFY(!d.m_image);
}

QTEST_MAIN(TestFrameIntake)
#include "tst_frame_intake.moc"
