#include "host/quality/NumberText.h"
#include "host/zorffc/Numbers.h"
#include "host/zorffc/Summary.h"
#include "host/zorffc/report/GreyPicture.h"

#include <QtTest>

#include <limits>
#include <new>
#include <vector>

using namespace zor;

namespace {

ConstImageView view8(const std::vector<std::uint8_t>& pixels, int width)
{
    return {pixels.data(), width, width, static_cast<std::int32_t>(pixels.size()) / width, 8};
}

} // namespace

Q_DECLARE_METATYPE(std::vector<std::uint8_t>)
Q_DECLARE_METATYPE(std::vector<int>)

class TestReportParts : public QObject
{
    Q_OBJECT

private slots:
    void greyRangeLeavesHalfAPercentOnEachSide();
    void greyRangeOfAnEvenImageIsAroundIt_data();
    void greyRangeOfAnEvenImageIsAroundIt();
    void greyPictureSpreadsItsRange();
    void greyPictureAveragesByArea_data();
    void greyPictureAveragesByArea();
    void largestSumsAreExact();
    void aPictureThatCannotBeHadIsAnError();
    void sizesAreRead_data();
    void sizesAreRead();
    void realNumbersAreRead_data();
    void realNumbersAreRead();
    void fixedTextIsTheSameEverywhere_data();
    void fixedTextIsTheSameEverywhere();
    void gainsThatAreNoNumberAreCounted();
    void significantTextKeepsSmallNumbers_data();
    void significantTextKeepsSmallNumbers();
};

void TestReportParts::greyRangeLeavesHalfAPercentOnEachSide()
{
    // 1000 pixels in both images together: five may stay outside on each side.
    std::vector<std::uint8_t> first(500, 100);
    std::vector<std::uint8_t> second(500, 120);
    std::fill_n(first.begin(), 5, std::uint8_t{3});
    std::fill_n(second.begin(), 5, std::uint8_t{250});
    GreyRange range = commonGreyRange(view8(first, 50), view8(second, 50));
    QCOMPARE(range.black, 100);
    QCOMPARE(range.white, 120);
    first[5] = 3;
    second[5] = 250;
    range = commonGreyRange(view8(first, 50), view8(second, 50));
    QCOMPARE(range.black, 3);
    QCOMPARE(range.white, 250);
}

void TestReportParts::greyRangeOfAnEvenImageIsAroundIt_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("black");
    QTest::addColumn<int>("white");
    QTest::addColumn<int>("grey");
    QTest::newRow("0 is black") << 0 << 0 << 1 << 0;
    QTest::newRow("a value is grey") << 7 << 6 << 8 << 128;
    QTest::newRow("full scale is white, and nothing lies beyond it") << 255 << 254 << 255 << 255;
}

void TestReportParts::greyRangeOfAnEvenImageIsAroundIt()
{
    QFETCH(int, value);
    const std::vector<std::uint8_t> pixels(6, static_cast<std::uint8_t>(value));
    const GreyRange range = commonGreyRange(view8(pixels, 3), view8(pixels, 3));
    QTEST(range.black, "black");
    QTEST(range.white, "white");
    QTEST(qGray(greyPicture(view8(pixels, 3), range, {3, 2}).pixel(0, 0)), "grey");
}

void TestReportParts::greyPictureSpreadsItsRange()
{
    std::vector<std::uint8_t> bytes(2 * 6);
    const ConstImageView image{bytes.data(), 6, 3, 2, 12};
    const std::uint16_t pixels[] = {999, 1000, 1255, 1510, 1511, 4095};
    for (int i = 0; i < 6; ++i)
        storeCell(bytes.data() + 6 * (i / 3), i % 3, pixels[i]);
    const QImage picture = greyPicture(image, {1000, 1510}, {3, 2});
    QCOMPARE(picture.size(), QSize(3, 2));
    const int expected[] = {0, 0, 128, 255, 255, 255};
    for (int i = 0; i < 6; ++i)
        QCOMPARE(qGray(picture.pixel(i % 3, i / 3)), expected[i]);
}

void TestReportParts::greyPictureAveragesByArea_data()
{
    QTest::addColumn<std::vector<std::uint8_t>>("pixels");
    QTest::addColumn<int>("width");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<std::vector<int>>("greys");
    using Pixels = std::vector<std::uint8_t>;
    using Greys = std::vector<int>;
    QTest::newRow("two pixels below one") << Pixels{10, 20, 200, 100} << 4 << QSize(2, 1) << Greys{15, 150};
    QTest::newRow("two rows below one") << Pixels{10, 200, 20, 100} << 2 << QSize(2, 1) << Greys{15, 150};
    QTest::newRow("one and a half below each") << Pixels{30, 60, 90} << 3 << QSize(2, 1) << Greys{40, 80};
    QTest::newRow("one and a half rows below each")
        << Pixels{30, 60, 90} << 1 << QSize(1, 2) << Greys{40, 80};
    QTest::newRow("both sides shrink unevenly")
        << Pixels{0, 0, 90, 0, 90, 0, 90, 0, 0} << 3 << QSize(2, 2) << Greys{10, 50, 50, 10};
    QTest::newRow("halves are rounded up, once") << Pixels{1, 0, 0, 1} << 2 << QSize(1, 1) << Greys{1};
    QTest::newRow("below a half is rounded down") << Pixels{1, 0, 0} << 3 << QSize(1, 1) << Greys{0};
    QTest::newRow("pixels are repeated as squares")
        << Pixels{1, 2, 3, 4} << 2 << QSize(4, 4) << Greys{1, 1, 2, 2, 1, 1, 2, 2, 3, 3, 4, 4, 3, 3, 4, 4};
    QTest::newRow("a pixel is repeated where its middle is nearest")
        << Pixels{1, 2} << 2 << QSize(5, 1) << Greys{1, 1, 2, 2, 2};
    QTest::newRow("one side shrinks, the other one grows")
        << Pixels{10, 20, 30, 40} << 4 << QSize(2, 2) << Greys{15, 35, 15, 35};
    QTest::newRow("as large as the image")
        << Pixels{1, 2, 3, 4, 5, 6} << 3 << QSize(3, 2) << Greys{1, 2, 3, 4, 5, 6};
}

void TestReportParts::greyPictureAveragesByArea()
{
    QFETCH(std::vector<std::uint8_t>, pixels);
    QFETCH(int, width);
    QFETCH(QSize, size);
    QFETCH(std::vector<int>, greys);
    const QImage picture = greyPicture(view8(pixels, width), {0, 255}, size);
    QCOMPARE(picture.size(), size);
    std::vector<int> drawn;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            drawn.push_back(qGray(picture.pixel(x, y)));
    QCOMPARE(drawn, greys);
}

void TestReportParts::largestSumsAreExact()
{
    // The longest column of the brightest pixels, one in two of them.
    constexpr int longest = 65535;
    std::vector<std::uint8_t> bytes(2 * longest, 0xFF);
    for (int y = 0; y < longest; y += 2)
        storeCell(bytes.data(), y, 0);
    const QImage picture = greyPicture({bytes.data(), 2, 1, longest, 16}, {0, longest}, {1, 3});
    // 21845 pixels below each: 10922 white ones below the first and last, 10923 below the middle one.
    for (int y = 0; y < 3; ++y)
        QCOMPARE(qGray(picture.pixel(0, y)), y == 1 ? 128 : 127);
}

void TestReportParts::aPictureThatCannotBeHadIsAnError()
{
    constexpr int beyond = 2000000000;
    QVERIFY_EXCEPTION_THROWN(greyPicture(view8({1}, 1), {0, 255}, {beyond, beyond}), std::bad_alloc);
}

void TestReportParts::sizesAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<uint>("width");
    QTest::addColumn<uint>("height");
    QTest::newRow("a size") << QByteArray("1392x1040") << 1392u << 1040u;
    QTest::newRow("the largest") << QByteArray("65535x65535") << 65535u << 65535u;
    QTest::newRow("no cross") << QByteArray("1392") << 0u << 0u;
    QTest::newRow("a blank") << QByteArray("1 x1") << 0u << 0u;
    QTest::newRow("a capital cross") << QByteArray("1X1") << 0u << 0u;
    QTest::newRow("three sides") << QByteArray("1x1x1") << 0u << 0u;
    QTest::newRow("no height") << QByteArray("1x") << 0u << 0u;
    QTest::newRow("the widest") << QByteArray("65535x1") << 65535u << 1u;
    QTest::newRow("too wide") << QByteArray("65536x1") << 0u << 0u;
    QTest::newRow("too tall") << QByteArray("1x65536") << 0u << 0u;
    QTest::newRow("beyond 64 bits") << QByteArray("99999999999999999999x1") << 0u << 0u;
}

void TestReportParts::sizesAreRead()
{
    QFETCH(QByteArray, text);
    QFETCH(uint, width);
    QFETCH(uint, height);
    const FrameSize size = parseSize(text.toStdString()).value_or(FrameSize{});
    QCOMPARE(size.width, width);
    QCOMPARE(size.height, height);
}

void TestReportParts::realNumbersAreRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("value");
    const double none = -12345.0;
    QTest::newRow("a fraction") << QByteArray("0.5") << 0.5;
    QTest::newRow("without a leading digit") << QByteArray(".25") << 0.25;
    QTest::newRow("negative") << QByteArray("-2.5") << -2.5;
    QTest::newRow("with a plus") << QByteArray("+3") << 3.0;
    QTest::newRow("a fraction with a plus") << QByteArray("+1.5") << 1.5;
    QTest::newRow("with an exponent") << QByteArray("1e-3") << 0.001;
    QTest::newRow("two signs") << QByteArray("+-3") << none;
    QTest::newRow("a comma") << QByteArray("0,5") << none;
    QTest::newRow("nothing") << QByteArray() << none;
    QTest::newRow("a plus alone") << QByteArray("+") << none;
    QTest::newRow("a blank at the end") << QByteArray("1 ") << none;
    QTest::newRow("infinity") << QByteArray("inf") << none;
    QTest::newRow("not a number") << QByteArray("nan") << none;
    QTest::newRow("too large") << QByteArray("1e400") << none;
}

void TestReportParts::realNumbersAreRead()
{
    QFETCH(QByteArray, text);
    QFETCH(double, value);
    QCOMPARE(parseReal(text.toStdString()).value_or(-12345.0), value);
}

void TestReportParts::fixedTextIsTheSameEverywhere_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("a gain") << 1.30859375 << QByteArray("1.3086");
    QTest::newRow("negative") << -0.5 << QByteArray("-0.5000");
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << QByteArray("inf");
    QTest::newRow("not a number, of either sign")
        << -std::numeric_limits<double>::quiet_NaN() << QByteArray("nan");
    QTest::newRow("a large number") << 1e20 << QByteArray("100000000000000000000.0000");
}

void TestReportParts::fixedTextIsTheSameEverywhere()
{
    QFETCH(double, value);
    QFETCH(QByteArray, text);
    QCOMPARE(QByteArray::fromStdString(fixedText(value, 4)), text);
}

void TestReportParts::gainsThatAreNoNumberAreCounted()
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(gainRange({2.0, none, 1.0, none}), std::string("1.0000 to 2.0000, 2 nan"));
    QCOMPARE(gainRange({none}), std::string("nan"));
    QCOMPARE(gainRange({1.5}), std::string("1.5000 to 1.5000"));
}

void TestReportParts::significantTextKeepsSmallNumbers_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("a system gain") << 0.20475 << QByteArray("0.20475");
    QTest::newRow("a small one") << 4.095e-6 << QByteArray("4.095e-06");
    QTest::newRow("a whole number") << 4095.0 << QByteArray("4095");
    QTest::newRow("more digits than asked for") << 1.0 / 3 << QByteArray("0.33333");
}

void TestReportParts::significantTextKeepsSmallNumbers()
{
    QFETCH(double, value);
    QFETCH(QByteArray, text);
    QCOMPARE(QByteArray::fromStdString(significantText(value, 5)), text);
}

QTEST_GUILESS_MAIN(TestReportParts)
#include "tst_report_parts.moc"
