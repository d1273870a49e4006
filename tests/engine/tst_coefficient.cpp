#include "engine/Coefficient.h"
#include "tests/engine/EngineTesting.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

#include <limits>

class TestCoefficient : public QObject
{
    Q_OBJECT

private slots:
    void gainsHaveTheirCoefficient_data();
    void gainsHaveTheirCoefficient();
    void otherFractionBits_data();
    void otherFractionBits();
    void randomGainsEqualTheReference();
};

void TestCoefficient::gainsHaveTheirCoefficient_data()
{
    QTest::addColumn<double>("gain");
    QTest::addColumn<int>("at8");
    QTest::addColumn<int>("at12");
    QTest::newRow("0.0: only the shift") << 0.0 << 0 << 0;
    QTest::newRow("1.0") << 1.0 << 256 << 4096;
    QTest::newRow("1.5") << 1.5 << 384 << 6144;
    QTest::newRow("1.1") << 1.1 << 281 << 4505;
    QTest::newRow("0.996") << 0.996 << 254 << 4079;
    QTest::newRow("16.0 is not limited") << 16.0 << 4096 << 65536;
    QTest::newRow("300.7 is not limited") << 300.7 << 76979 << 1231667;
    QTest::newRow("+infinity has all fraction bits") << qInf() << 255 << 4095;
    QTest::newRow("-infinity likewise") << -qInf() << 255 << 4095;
    QTest::newRow("no number") << qQNaN() << 0 << 0;
    QTest::newRow("-0.5 loses its sign") << -0.5 << 128 << 2048;
    QTest::newRow("-1.0 fills its fraction") << -1.0 << -1 << -1;
    QTest::newRow("-1.5") << -1.5 << -1 << -1;
    QTest::newRow("-2.25") << -2.25 << -257 << -4097;
    QTest::newRow("an integer part beyond the top bit wraps")
        << 8388608.0 << std::numeric_limits<int>::min() << 0;
    QTest::newRow("the largest integer part wraps") << 2147483647.0 << -256 << -4096;
}

void TestCoefficient::gainsHaveTheirCoefficient()
{
    QFETCH(double, gain);
    QFETCH(int, at8);
    QFETCH(int, at12);
    QCOMPARE(zor::EncodeCoefficient(gain, 8), at8);
    QCOMPARE(zor::EncodeCoefficient(gain, 12), at12);
    QCOMPARE(reference::coefficient(gain, 8), at8);
    QCOMPARE(reference::coefficient(gain, 12), at12);
}

void TestCoefficient::otherFractionBits_data()
{
    QTest::addColumn<double>("gain");
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("result");
    QTest::newRow("no fraction") << 3.75 << 0 << 3;
    QTest::newRow("one bit") << 3.75 << 1 << 7;
    QTest::newRow("31 bits of a half") << 0.5 << 31 << 0x40000000;
    QTest::newRow("31 bits of 1.0 wrap") << 1.0 << 31 << std::numeric_limits<int>::min();
    QTest::newRow("32 bits give 0") << 1.5 << 32 << 0;
    QTest::newRow("255 bits give 0") << 1.5 << 255 << 0;
    QTest::newRow("infinity without fraction is the lowest number")
        << qInf() << 0 << std::numeric_limits<int>::min();
}

void TestCoefficient::otherFractionBits()
{
    QFETCH(double, gain);
    QFETCH(int, bits);
    QFETCH(int, result);
    QCOMPARE(zor::EncodeCoefficient(gain, static_cast<std::uint8_t>(bits)), result);
}

void TestCoefficient::randomGainsEqualTheReference()
{
    enginetest::Random random(2);
    for (int i = 0; i < 20000; ++i) {
        const double gain = random.gain();
        const int bits = random.between(0, 33);
        const std::int32_t actual = zor::EncodeCoefficient(gain, static_cast<std::uint8_t>(bits));
        QVERIFY2(actual == reference::coefficient(gain, bits),
                 qPrintable(QString("gain %1, %2 bits: expected %3, actual %4")
                                .arg(gain, 0, 'g', 17)
                                .arg(bits)
                                .arg(reference::coefficient(gain, bits))
                                .arg(actual)));
    }
}

QTEST_APPLESS_MAIN(TestCoefficient)
#include "tst_coefficient.moc"
