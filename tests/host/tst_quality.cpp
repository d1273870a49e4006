#include "host/quality/CorrectedFrame.h"
#include "host/quality/FrameGains.h"
#include "host/quality/MonoFrame.h"
#include "host/quality/NonUniformity.h"
#include "image/PixelTypeCode.h"
#include "tests/host/MonoSamples.h"
#include "tests/support/RecordOf.h"

#include <QtTest>

#include <cmath>

using namespace zor;

Q_DECLARE_METATYPE(std::vector<double>)

class TestQuality : public QObject
{
    Q_OBJECT

private slots:
    void variationIsDeviationOverMean_data();
    void variationIsDeviationOverMean();
    void meansAreExactAndSkipPadding();
    void nonUniformityOfColumnsAndRows();
    void saturatedPixelsAreThoseAtTheLimit();
    void newlySaturatedPixelsWereBelowTheLimitBefore();
    void gainsFollowTheColumnPass();
    void aWrappedCellIsFoundInEveryColumn_data();
    void aWrappedCellIsFoundInEveryColumn();
    void correctedFrameAppliesBothTables();
    void monoFrameBringsARecordToItsTarget_data();
    void monoFrameBringsARecordToItsTarget();
    void monoFrameCanHaveAnotherTarget_data();
    void monoFrameCanHaveAnotherTarget();
    void monoFrameRefusesWhatCannotBeConverted();
};

void TestQuality::variationIsDeviationOverMean_data()
{
    QTest::addColumn<std::vector<double>>("values");
    QTest::addColumn<double>("percent");
    QTest::newRow("even values") << std::vector<double>{5, 5, 5} << 0.0;
    QTest::newRow("one value") << std::vector<double>{5} << 0.0;
    QTest::newRow("1 and 3: deviation 1 of 2") << std::vector<double>{1, 3} << 50.0;
    QTest::newRow("the deviation is the population's: 2 of 5")
        << std::vector<double>{2, 4, 4, 4, 5, 5, 7, 9} << 40.0;
    QTest::newRow("a mean below 0.1") << std::vector<double>{0.02, 0.06} << 50.0;
    QTest::newRow("no light") << std::vector<double>{0, 0} << std::nan("");
    QTest::newRow("no values") << std::vector<double>{} << std::nan("");
}

void TestQuality::variationIsDeviationOverMean()
{
    QFETCH(std::vector<double>, values);
    QFETCH(double, percent);
    const double actual = variationPercent(values);
    if (std::isnan(percent))
        QVERIFY2(std::isnan(actual), qPrintable(QString::number(actual)));
    else
        QCOMPARE(actual, percent);
}

void TestQuality::meansAreExactAndSkipPadding()
{
    const MonoSamples narrow(8, 3, 2, {0, 255, 10, 1, 255, 20});
    QCOMPARE(columnMeans(narrow.view()), (std::vector<double>{0.5, 255.0, 15.0}));
    QCOMPARE(rowMeans(narrow.view()), (std::vector<double>{265.0 / 3, 92.0}));
    const MonoSamples wide(16, 2, 2, {65535, 1, 65534, 2});
    QCOMPARE(columnMeans(wide.view()), (std::vector<double>{65534.5, 1.5}));
    QCOMPARE(rowMeans(wide.view()), (std::vector<double>{32768.0, 32768.0}));
}

void TestQuality::nonUniformityOfColumnsAndRows()
{
    // Column means 100, 200: 50 of 150. Row means 125, 175: 25 of 150.
    const MonoSamples image(10, 2, 2, {75, 175, 125, 225});
    const NonUniformity figures = nonUniformity(image.view());
    QCOMPARE(figures.columns, 100.0 / 3);
    QCOMPARE(figures.rows, 50.0 / 3);
}

void TestQuality::saturatedPixelsAreThoseAtTheLimit()
{
    QCOMPARE(saturatedShare(MonoSamples(8, 2, 2, {255, 254, 0, 255}).view()), 0.5);
    QCOMPARE(saturatedShare(MonoSamples(10, 2, 2, {1023, 1022, 255, 0}).view()), 0.25);
    QCOMPARE(saturatedShare(MonoSamples(16, 1, 2, {65534, 0}).view()), 0.0);
}

void TestQuality::newlySaturatedPixelsWereBelowTheLimitBefore()
{
    const MonoSamples before(8, 2, 2, {255, 254, 0, 255});
    QCOMPARE(newlySaturatedShare(before.view(), MonoSamples(8, 2, 2, {255, 255, 254, 100}).view()), 0.25);
    QCOMPARE(newlySaturatedShare(before.view(), before.view()), 0.0);
    QCOMPARE(newlySaturatedShare(MonoSamples(12, 2, 1, {1, 4094}).view(),
                                 MonoSamples(12, 2, 1, {4095, 4095}).view()),
             1.0);
}

void TestQuality::gainsFollowTheColumnPass()
{
    std::vector<std::uint8_t> pixels{135, 255, 0, 0, 115, 195, 0, 0};
    const ConstImageView frame{pixels.data(), 4, 2, 2, 8};
    const FrameGains gains = computeFrameGains(frame, pixels.size(), GainRule{});
    // Means 125 and 225; 1.8 becomes the code 0x01CC: 135 x 460 / 256 = 242.58 to 243, 115 to 206.64 to 207.
    QCOMPARE(gains.columns, (std::list<double>{225.0 / 125.0, 1.0}));
    // Row sums 243 + 255 and 207 + 195.
    QCOMPARE(gains.rows, (std::list<double>{1.0, 249.0 / 201.0}));
}

void TestQuality::aWrappedCellIsFoundInEveryColumn_data()
{
    QTest::addColumn<QList<int>>("pixels");
    QTest::addColumn<bool>("wraps");
    QTest::newRow("none") << QList<int>{32000, 16000, 31000, 16000} << false;
    QTest::newRow("in the first column alone") << QList<int>{33000, 48000, 31000, 48000} << true;
    QTest::newRow("in the last column alone") << QList<int>{48000, 33000, 48000, 31000} << true;
}

void TestQuality::aWrappedCellIsFoundInEveryColumn()
{
    QFETCH(QList<int>, pixels);
    QFETCH(bool, wraps);
    std::vector<std::uint8_t> bytes;
    for (const int pixel : pixels) {
        bytes.push_back(static_cast<std::uint8_t>(pixel & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(pixel >> 8));
    }
    const ConstImageView frame{bytes.data(), 4, 2, 2, 16};
    QCOMPARE(computeFrameGains(frame, bytes.size(), GainRule{}).rowError > 0.0, wraps);
}

void TestQuality::correctedFrameAppliesBothTables()
{
    const MonoSamples image(12, 2, 2, {1000, 2000, 500, 3000});
    const CorrectedFrame corrected(image.view(), {512, 256}, {256, 384}, 8);
    const ConstImageView view = corrected.view();
    QCOMPARE(view.width, 2);
    QCOMPARE(view.height, 2);
    QCOMPARE(view.depth, 12);
    QCOMPARE(int(loadCell(view.row(0), 0)), 2000);
    QCOMPARE(int(loadCell(view.row(0), 1)), 2000);
    QCOMPARE(int(loadCell(view.row(1), 0)), 1500);
    QCOMPARE(int(loadCell(view.row(1), 1)), 4095);
    QCOMPARE(coefficientTable({1.0, 1.1, -1.5}, 12), (std::vector<std::int32_t>{4096, 4505, -1}));
}

void TestQuality::monoFrameBringsARecordToItsTarget_data()
{
    QTest::addColumn<uint>("source");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("first");
    QTest::newRow("Mono8 stays") << uint(zor::Mono8) << QByteArray("\x12\x34", 2) << 8 << 0x12;
    QTest::newRow("Mono12 stays") << uint(zor::Mono12) << QByteArray("\x23\x01\x56\x04", 4) << 12 << 0x123;
    QTest::newRow("Mono16 stays") << uint(zor::Mono16) << QByteArray("\x23\xF1\x56\x04", 4) << 16 << 0xF123;
}

void TestQuality::monoFrameBringsARecordToItsTarget()
{
    QFETCH(uint, source);
    QFETCH(QByteArray, bytes);
    QFETCH(int, depth);
    QFETCH(int, first);
    std::vector<std::uint8_t> pixels(bytes.begin(), bytes.end());
    const MonoFrame mono(recordOf(source, 2, 1, static_cast<std::uint32_t>(pixels.size()), pixels));
    const ConstImageView view = mono.view();
    QCOMPARE(view.width, 2);
    QCOMPARE(view.height, 1);
    QCOMPARE(view.depth, depth);
    QCOMPARE(mono.pixelType(), source);
    QVERIFY(mono.bytes() >= static_cast<std::size_t>(view.step));
    QCOMPARE(depth == 8 ? int(view.row(0)[0]) : int(loadCell(view.row(0), 0)), first);
}

void TestQuality::monoFrameCanHaveAnotherTarget_data()
{
    QTest::addColumn<uint>("target");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("first");
    QTest::newRow("Mono8") << uint(zor::Mono8) << 8 << 0x12;
    QTest::newRow("Mono10") << uint(zor::Mono10) << 10 << 0x48;
    QTest::newRow("Mono12") << uint(zor::Mono12) << 12 << 0x123;
    QTest::newRow("Mono16") << uint(zor::Mono16) << 16 << 0x1231;
}

void TestQuality::monoFrameCanHaveAnotherTarget()
{
    QFETCH(uint, target);
    QFETCH(int, depth);
    QFETCH(int, first);
    std::vector<std::uint8_t> pixels{0x23, 0x01, 0xFF, 0x0F};
    const MonoFrame mono(recordOf(zor::Mono12, 2, 1, pixels), target);
    QCOMPARE(mono.pixelType(), target);
    QCOMPARE(mono.record().width, 2u);
    QCOMPARE(mono.view().depth, depth);
    QCOMPARE(depth == 8 ? int(mono.view().row(0)[0]) : int(loadCell(mono.view().row(0), 0)), first);
}

void TestQuality::monoFrameRefusesWhatCannotBeConverted()
{
    std::vector<std::uint8_t> pixels(2, 0);
    const auto problem = [&pixels](std::uint32_t type, std::uint32_t width, std::uint32_t height,
                                   std::uint32_t pitch) {
        try {
            MonoFrame(recordOf(type, width, height, pitch, pixels));
            return QString("none");
        } catch (const std::runtime_error& error) {
            return QString(error.what());
        }
    };
    constexpr std::uint32_t otherBits = 0x01100101;
    QVERIFY2(problem(otherBits, 1, 1, 2).startsWith("there is no conversion from "),
             qPrintable(problem(otherBits, 1, 1, 2)));
    QCOMPARE(problem(zor::Mono8, 3, 1, 3),
             QString("a frame of 3 x 1 pixels could not be brought from Mono8 to "
                     "Mono8; check its size and pitch, use a smaller frame or "
                     "close other programs"));
    QCOMPARE(
        problem(zor::Mono12, 65535, 32769, 131070),
        QString("a frame of 65535 x 32769 pixels is too large to be brought from Mono12 to Mono12; use a "
                "smaller frame"));
    QCOMPARE(QString(pixelTypeName(zor::Mono12)), QString("Mono12"));
    QCOMPARE(QString(pixelTypeName(0)), QString("unknown format"));
    QCOMPARE(QString(pixelTypeName(0x010801FF)), QString("unknown format"));
}

QTEST_GUILESS_MAIN(TestQuality)
#include "tst_quality.moc"
