#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/ModalWatch.h"

#include "image/PixelTypeCode.h"
#include "tests/dialog/DialogData.h"
#include "tests/support/RecordOf.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

#include <cmath>

namespace {

/// Counts the calls that come through the virtual operation.
class ResetCounter : public DialogProbe
{
public:
    void ResetFrame() override
    {
        ++resets;
        DialogProbe::ResetFrame();
    }

    int resets = 0;
};

} // namespace

/// What the members hold after each operation.
class TestDialogState : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void membersHaveTheirStartValues();
    void frameIsHeldAfterIntake();
    void packedAndDeepFramesComeDown_data();
    void packedAndDeepFramesComeDown();
    void frameThatTheConverterRefusesShowsItsBox();
    void nothingUsableKeepsTheHeldFrame_data();
    void nothingUsableKeepsTheHeldFrame();
    void updateWithoutAFrameReadsNoWidget();
    void updateReadsTheNormaliseSettings_data();
    void updateReadsTheNormaliseSettings();
    void unreadableValueMakesEveryGainZero();
    void updateLeavesAResult();
    void updateCanRunAgainOnTheSameFrame();
    void resetDropsTheFrameAndKeepsTheGains();
    void resetKeepsTextsAndSettings();
    void resetSetsRangesAndHistogramWordsToZero();
    void resetCallsTheOverride();
    void newFrameDropsTheResultAndKeepsTheGains();
    void hostInfoIsCopied();
    void hasNoResultToGive();
};

void TestDialogState::cleanup()
{
    restoreAllCursors();
}

void TestDialogState::membersHaveTheirStartValues()
{
    DialogProbe d;
    QVERIFY(!d.m_hostCallback && !d.m_hostContext && !d.m_plugIn);
    QVERIFY(!d.m_adapterUp && !d.m_adapterDown && !d.m_highLight);
    QVERIFY(!d.m_reservedPointers[0] && !d.m_reservedPointers[1]);
    QVERIFY(!d.m_shown);
    QVERIFY(!d.m_image && !d.m_flatX && !d.m_flatY && !d.m_histogram);
    QVERIFY(!d.m_columnMean && !d.m_rowMean && !d.m_flatColumnMean && !d.m_flatRowMean);
    QVERIFY(!d.m_columnLine && !d.m_rowLine && !d.m_flatColumnLine && !d.m_flatRowLine);
    QCOMPARE(d.m_step, 0);
    QCOMPARE(d.m_depth, 0);
    QCOMPARE(d.m_imageBytes, std::uint64_t{0});
    QCOMPARE(d.m_flatXStep, 0);
    QCOMPARE(d.m_flatYStep, 0);
    for (const std::int32_t word :
         {d.m_histogramLevels, d.m_histogramPeak, d.m_histogramReserved, d.m_histogramFloor, d.m_rangeXMax,
          d.m_rangeXMin, d.m_rangeYMax, d.m_rangeYMin, d.m_imageMax, d.m_imageMin, d.m_flatMax, d.m_flatMin})
        QCOMPARE(word, -1);
    QVERIFY(d.m_columnGains.empty() && d.m_rowGains.empty());
    QVERIFY(d.m_title.isEmpty() && d.m_camera.isEmpty() && d.m_date.isEmpty());
    QVERIFY(d.m_hostInfo.text.isEmpty());
    QCOMPARE(d.m_normalize, 1);
    QCOMPARE(d.m_normalizeValue, 1.0);
    QCOMPARE(d.m_reservedValue, std::int64_t{0});
    QCOMPARE(d.m_reservedFlag, 1);
    QVERIFY(d.m_viewClock.isValid());
}

void TestDialogState::frameIsHeldAfterIntake()
{
    DialogProbe d;
    d.take(unevenFrame());
    QCOMPARE(d.m_width, 6);
    QCOMPARE(d.m_height, 4);
    QCOMPARE(d.m_depth, 12);
    QCOMPARE(d.m_step, 12);
    QCOMPARE(d.m_imageBytes, std::uint64_t{48});
    QCOMPARE(d.m_pixelFormat, zor::Mono12);
    QCOMPARE(d.m_pairSmoothing, 0);
    QVERIFY(d.m_image);
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(d.m_image), 48),
             QByteArray(reinterpret_cast<const char*>(unevenFrame().bytes.data()), 48));
    QVERIFY(!d.m_flatX && !d.m_flatY);
}

void TestDialogState::packedAndDeepFramesComeDown_data()
{
    QTest::addColumn<unsigned>("pixelType");
    QTest::addColumn<unsigned>("depth");
    QTest::addColumn<QByteArray>("pixels");
    QTest::addColumn<int>("heldDepth");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::newRow("Mono14 comes to 8 bits")
        << codeOf("Mono14") << 14U << QByteArray("\xFF\x3F\x40\x10", 4) << 8 << 255 << 65;
    QTest::newRow("Mono12p has depth 10")
        << Mono12p << 10U << QByteArray("\xBC\x3A\x12", 3) << 10 << 0xABC / 4 << 0x123 / 4;
    QTest::newRow("Mono12Packed") << Mono12Packed << 12U << QByteArray("\xAB\xC3\x12", 3) << 12 << 0xABC
                                  << 0x123;
    QTest::newRow("Mono8") << zor::Mono8 << 8U << QByteArray("\x07\x09", 2) << 8 << 7 << 9;
}

void TestDialogState::packedAndDeepFramesComeDown()
{
    QFETCH(unsigned, pixelType);
    QFETCH(unsigned, depth);
    QFETCH(QByteArray, pixels);
    QFETCH(int, heldDepth);
    QFETCH(int, first);
    QFETCH(int, second);
    std::vector<std::uint8_t> memory(pixels.begin(), pixels.end());
    _ZorImage record = recordOf(pixelType, 2, 1, static_cast<std::uint32_t>(memory.size()), memory);
    record.depth = depth;
    DialogProbe d;
    d.SetFrame(&record);
    QVERIFY(d.m_image);
    QCOMPARE(d.m_depth, heldDepth);
    const bool bytes = heldDepth == 8;
    QCOMPARE(bytes ? int(d.m_image[0]) : d.m_image[0] + 256 * d.m_image[1], first);
    QCOMPARE(bytes ? int(d.m_image[1]) : d.m_image[2] + 256 * d.m_image[3], second);
}

void TestDialogState::frameThatTheConverterRefusesShowsItsBox()
{
    DialogProbe d;
    d.take(unevenFrame());
    TestFrame frame = unevenFrame();
    _ZorImage record = frame.record();
    record.pixelType = 0;
    ModalWatch watch;
    d.SetFrame(&record);
    QCOMPARE(watch.texts, QStringList("Converter error!"));
    QVERIFY(!d.m_image);
    QCOMPARE(d.m_width, 6);
}

void TestDialogState::nothingUsableKeepsTheHeldFrame_data()
{
    QTest::addColumn<bool>("record");
    QTest::addColumn<bool>("data");
    QTest::addColumn<bool>("size");
    QTest::newRow("null record") << false << true << true;
    QTest::newRow("null pixels") << true << false << true;
    QTest::newRow("size 0") << true << true << false;
}

void TestDialogState::nothingUsableKeepsTheHeldFrame()
{
    QFETCH(bool, record);
    QFETCH(bool, data);
    QFETCH(bool, size);
    DialogProbe d;
    d.take(unevenFrame());
    d.Update();
    const std::uint8_t* image = d.m_image;
    TestFrame other = TestFrame::even(3, 3, 8, 9);
    _ZorImage bad = other.record();
    if (!data)
        bad.data = nullptr;
    if (!size)
        bad.imageSize = 0;
    d.SetFrame(record ? &bad : nullptr);
    QCOMPARE(static_cast<const std::uint8_t*>(d.m_image), image);
    QCOMPARE(d.m_width, 6);
    QVERIFY(d.m_flatY);
}

void TestDialogState::updateWithoutAFrameReadsNoWidget()
{
    DialogProbe d;
    d.ui.chBNormFFC->setChecked(false);
    d.ui.lENormFFC->setText(QStringLiteral("0.5"));
    d.Update();
    QCOMPARE(d.m_normalize, 1);
    QCOMPARE(d.m_normalizeValue, 1.0);
    QVERIFY(d.m_columnGains.empty());
}

void TestDialogState::updateReadsTheNormaliseSettings_data()
{
    QTest::addColumn<bool>("ticked");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("normalize");
    QTest::addColumn<double>("value");
    QTest::newRow("defaults") << true << "1" << 1 << 1.0;
    QTest::newRow("a fraction can be typed") << true << "0.75" << 1 << 0.75;
    QTest::newRow("negative") << true << "-2" << 1 << -2.0;
    QTest::newRow("not ticked, the value is read all the same") << false << "3" << 0 << 3.0;
    QTest::newRow("no number") << true << "one" << 1 << 0.0;
    QTest::newRow("empty") << true << "" << 1 << 0.0;
}

void TestDialogState::updateReadsTheNormaliseSettings()
{
    QFETCH(bool, ticked);
    QFETCH(QString, text);
    QFETCH(int, normalize);
    QFETCH(double, value);
    DialogProbe d;
    d.take(unevenFrame());
    d.ui.chBNormFFC->setChecked(ticked);
    d.ui.lENormFFC->setText(text);
    d.Update();
    QCOMPARE(d.m_normalize, normalize);
    QCOMPARE(d.m_normalizeValue, value);
}

void TestDialogState::unreadableValueMakesEveryGainZero()
{
    ModalWatch watch;
    DialogProbe d;
    // Column 2 is black, and one pixel is at the limit and is exempt.
    d.take(TestFrame(4, 2, 12, [](int x, int y) { return x == 2 ? 0U : x == 3 && y == 1 ? 4095U : 500U; }));
    d.ui.lENormFFC->setText(QStringLiteral("bright"));
    d.Update();
    const QVector<double> gains = listed(d.m_columnGains);
    QCOMPARE(gains.size(), 4);
    QCOMPARE(gains[0], 0.0);
    QCOMPARE(gains[1], 0.0);
    QVERIFY(std::isnan(gains[2]));
    QCOMPARE(gains[3], 0.0);
    for (int i = 0; i < 8; ++i)
        QCOMPARE(int(d.m_flatX[i]), i == 7 ? 4095 : 0);
    QVERIFY(watch.texts.isEmpty());
}

void TestDialogState::updateLeavesAResult()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.Update();
    QVERIFY(d.m_flatX && d.m_flatY && d.m_histogram);
    QVERIFY(d.m_columnMean && d.m_rowMean && d.m_flatColumnMean && d.m_flatRowMean);
    QVERIFY(d.m_columnLine && d.m_rowLine && d.m_flatColumnLine && d.m_flatRowLine);
    QCOMPARE(int(d.m_columnGains.size()), 6);
    QCOMPARE(int(d.m_rowGains.size()), 4);
    // Column 5 has the largest mean, so with the defaults its gain is 1 and no gain is below.
    QCOMPARE(d.m_columnGains.back(), 1.0);
    QVERIFY(*std::min_element(d.m_columnGains.begin(), d.m_columnGains.end()) >= 1.0);
    QCOMPARE(d.m_rangeXMin, 0);
    QCOMPARE(d.m_rangeXMax, 6);
    QCOMPARE(d.m_imageMin, 1000);
    QCOMPARE(d.m_imageMax, 1000 + 37 * 5 + 11 * 3);
    QCOMPARE(d.m_rangeYMin, 1000);
    QCOMPARE(d.m_rangeYMax, 1220);
}

void TestDialogState::updateCanRunAgainOnTheSameFrame()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.Update();
    const QVector<double> first = listed(d.m_columnGains);
    d.ui.lENormFFC->setText(QStringLiteral("0.5"));
    d.Update();
    d.ui.lENormFFC->setText(QStringLiteral("1"));
    d.Update();
    QCOMPARE(listed(d.m_columnGains), first);
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(d.m_image), 48),
             QByteArray(reinterpret_cast<const char*>(unevenFrame().bytes.data()), 48));
}

void TestDialogState::resetDropsTheFrameAndKeepsTheGains()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.Update();
    d.ResetData(false);
    QCOMPARE(d.m_width, 0);
    QCOMPARE(d.m_height, 0);
    QCOMPARE(d.m_step, 0);
    QCOMPARE(d.m_depth, 0);
    QCOMPARE(d.m_flatXStep, 0);
    QCOMPARE(d.m_flatYStep, 0);
    QVERIFY(!d.m_image && !d.m_flatX && !d.m_flatY && !d.m_histogram);
    QVERIFY(!d.m_columnMean && !d.m_rowMean && !d.m_flatColumnMean && !d.m_flatRowMean);
    QVERIFY(!d.m_columnLine && !d.m_rowLine && !d.m_flatColumnLine && !d.m_flatRowLine);
    QCOMPARE(int(d.m_columnGains.size()), 6);
    QCOMPARE(int(d.m_rowGains.size()), 4);
    QCOMPARE(d.m_imageBytes, std::uint64_t{48});
    QCOMPARE(d.m_pixelFormat, zor::Mono12);
}

void TestDialogState::resetKeepsTextsAndSettings()
{
    DialogProbe d;
    d.m_title = QStringLiteral("line 3");
    d.m_camera = QStringLiteral("CAM-12");
    d.m_date = QStringLiteral("7/01/24");
    d.m_normalize = 1;
    d.m_normalizeValue = 0.75;
    d.m_pairSmoothing = 5;
    d.ResetFrame();
    QCOMPARE(d.m_title, QStringLiteral("line 3"));
    QCOMPARE(d.m_camera, QStringLiteral("CAM-12"));
    QCOMPARE(d.m_date, QStringLiteral("7/01/24"));
    QCOMPARE(d.m_normalize, 1);
    QCOMPARE(d.m_normalizeValue, 0.75);
    QCOMPARE(d.m_pairSmoothing, 5);
}

void TestDialogState::resetSetsRangesAndHistogramWordsToZero()
{
    DialogProbe d;
    d.ResetData(false);
    for (const std::int32_t word :
         {d.m_histogramLevels, d.m_histogramPeak, d.m_histogramReserved, d.m_histogramFloor, d.m_rangeXMax,
          d.m_rangeXMin, d.m_rangeYMax, d.m_rangeYMin, d.m_imageMax, d.m_imageMin, d.m_flatMax, d.m_flatMin})
        QCOMPARE(word, 0);
}

void TestDialogState::resetCallsTheOverride()
{
    ResetCounter d;
    d.ResetData(false);
    QCOMPARE(d.resets, 1);
    d.take(unevenFrame());
    QCOMPARE(d.resets, 2);
    d.ResetData(true);
    QCOMPARE(d.resets, 3);
    QVERIFY(!d.m_image);
}

void TestDialogState::newFrameDropsTheResultAndKeepsTheGains()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.Update();
    d.take(TestFrame::even(3, 2, 8, 90));
    QVERIFY(!d.m_flatX && !d.m_flatY && !d.m_columnLine);
    QCOMPARE(int(d.m_columnGains.size()), 6);
    d.Update();
    QCOMPARE(listed(d.m_columnGains), QVector<double>(3, 1.0));
    QCOMPARE(listed(d.m_rowGains), QVector<double>(2, 1.0));
}

void TestDialogState::hostInfoIsCopied()
{
    DialogProbe d;
    ZBKHostInfo info;
    info.leadingWords[2] = 7;
    info.value = 8;
    info.trailingWords[5] = 9;
    info.text = QStringLiteral("bench");
    d.SetHostInfo(info);
    QCOMPARE(d.m_hostInfo.leadingWords[2], 7U);
    QCOMPARE(int(d.m_hostInfo.value), 8);
    QCOMPARE(d.m_hostInfo.trailingWords[5], 9U);
    QCOMPARE(d.m_hostInfo.text, QStringLiteral("bench"));
}

void TestDialogState::hasNoResultToGive()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.Update();
    QVERIFY(!d.HasResult());
    void* result = &d;
    d.GetResult(&result);
    QVERIFY(!result);
}

QTEST_MAIN(TestDialogState)
#include "tst_dialog_state.moc"
