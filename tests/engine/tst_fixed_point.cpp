#include "engine/FixedPoint.h"

#include <QtTest>

#include <limits>

namespace {

constexpr int Lowest = std::numeric_limits<int>::min();

} // namespace

class TestFixedPoint : public QObject
{
    Q_OBJECT

private slots:
    void doublesAreTruncatedOrBecomeTheLowestNumber_data();
    void doublesAreTruncatedOrBecomeTheLowestNumber();
    void lowSixteenBitsHaveASign_data();
    void lowSixteenBitsHaveASign();
};

void TestFixedPoint::doublesAreTruncatedOrBecomeTheLowestNumber_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("mean");
    QTest::newRow("a fraction is cut off") << 1234.999 << 1234 << 1234;
    QTest::newRow("a negative fraction is cut off") << -1.9 << -1 << 0xFFFF;
    QTest::newRow("the largest mean") << 65535.0 << 65535 << 65535;
    QTest::newRow("a mean keeps 16 bits") << 65537.5 << 65537 << 1;
    QTest::newRow("the largest that fits") << 2147483647.9 << 2147483647 << 0xFFFF;
    QTest::newRow("one too large") << 2147483648.0 << Lowest << 0;
    QTest::newRow("the lowest that fits") << -2147483648.9 << Lowest << 0;
    QTest::newRow("one too low") << -2147483649.0 << Lowest << 0;
    QTest::newRow("far too large") << 1e300 << Lowest << 0;
    QTest::newRow("infinity") << qInf() << Lowest << 0;
    QTest::newRow("minus infinity") << -qInf() << Lowest << 0;
    QTest::newRow("no number") << qQNaN() << Lowest << 0;
}

void TestFixedPoint::doublesAreTruncatedOrBecomeTheLowestNumber()
{
    QFETCH(double, value);
    QFETCH(int, result);
    QFETCH(int, mean);
    QCOMPARE(zor::truncateToInt32(value), result);
    QCOMPARE(int{zor::truncateToMean(value)}, mean);
}

void TestFixedPoint::lowSixteenBitsHaveASign_data()
{
    QTest::addColumn<uint>("value");
    QTest::addColumn<int>("result");
    QTest::newRow("0") << 0u << 0;
    QTest::newRow("the largest positive") << 0x7FFFu << 32767;
    QTest::newRow("bit 15 makes it negative") << 0x8000u << -32768;
    QTest::newRow("all bits are -1") << 0xFFFFu << -1;
    QTest::newRow("higher bits do not count") << 0x12340005u << 5;
    QTest::newRow("the lowest 32-bit number is 0") << 0x80000000u << 0;
}

void TestFixedPoint::lowSixteenBitsHaveASign()
{
    QFETCH(uint, value);
    QFETCH(int, result);
    QCOMPARE(zor::signedLow16(value), result);
}

QTEST_APPLESS_MAIN(TestFixedPoint)
#include "tst_fixed_point.moc"
