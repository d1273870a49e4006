#include "engine/GainCode.h"
#include "tests/engine/EngineTesting.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

class TestGainCode : public QObject
{
    Q_OBJECT

private slots:
    void gainsHaveTheirCode_data();
    void gainsHaveTheirCode();
    void listsAreEncodedInTheirOrder_data();
    void listsAreEncodedInTheirOrder();
    void randomGainsEqualTheReference();
};

void TestGainCode::gainsHaveTheirCode_data()
{
    QTest::addColumn<double>("gain");
    QTest::addColumn<int>("code");
    QTest::newRow("0.0") << 0.0 << 0x0000;
    QTest::newRow("-0.0") << -0.0 << 0x0000;
    QTest::newRow("1.0") << 1.0 << 0x0100;
    QTest::newRow("1.5") << 1.5 << 0x0180;
    QTest::newRow("1.1 is truncated, not rounded") << 1.1 << 0x0119;
    QTest::newRow("a 256th") << 1.0 / 256 << 0x0001;
    QTest::newRow("just under a 256th") << 0.99 / 256 << 0x0000;
    QTest::newRow("15.999 is the largest code") << 15.999 << 0x0FFF;
    QTest::newRow("16.0 wraps to nothing") << 16.0 << 0x0000;
    QTest::newRow("16.5 keeps its fraction") << 16.5 << 0x0080;
    QTest::newRow("17.25 wraps to 1.25") << 17.25 << 0x0140;
    QTest::newRow("-1.5 loses its sign") << -1.5 << 0x0180;
    QTest::newRow("+infinity") << qInf() << 0x00FF;
    QTest::newRow("-infinity") << -qInf() << 0x00FF;
    QTest::newRow("no number") << qQNaN() << 0x0000;
    QTest::newRow("an integer part of 32767 still gives its fraction") << 32767.5 << 0x0F80;
    QTest::newRow("an integer part of 32768 reads as negative: all fraction bits") << 32768.0 << 0x00FF;
    QTest::newRow("an integer part of 65536 reads as 0: all fraction bits") << 65536.0 << 0x00FF;
    QTest::newRow("an integer part of 65541 keeps its low 4 bits") << 65541.0 << 0x05FF;
    QTest::newRow("an integer part of 32 bits and more becomes 0") << 1e12 << 0x00FF;
}

void TestGainCode::gainsHaveTheirCode()
{
    QFETCH(double, gain);
    QFETCH(int, code);
    for (const std::uint16_t before : {0xA5A5, 0x5A5A}) {
        std::uint16_t result = before;
        zor::EncodeGain(gain, result);
        QCOMPARE(int{result}, code);
    }
    QCOMPARE(int{reference::gainCode(gain)}, code);
}

void TestGainCode::listsAreEncodedInTheirOrder_data()
{
    QTest::addColumn<int>("gains");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("capacity");
    QTest::newRow("as many as columns") << 4 << 4 << 4;
    QTest::newRow("a shorter list leaves 1.0") << 2 << 4 << 4;
    QTest::newRow("a longer list is cut") << 6 << 4 << 4;
    QTest::newRow("the surplus of a wide step is 1.0") << 4 << 4 << 7;
    QTest::newRow("a longer list does not reach the surplus") << 7 << 4 << 7;
    QTest::newRow("no list") << 0 << 4 << 5;
    QTest::newRow("no columns") << 3 << 0 << 2;
    QTest::newRow("nothing at all") << 0 << 0 << 0;
}

void TestGainCode::listsAreEncodedInTheirOrder()
{
    QFETCH(int, gains);
    QFETCH(int, count);
    QFETCH(int, capacity);
    std::list<double> list;
    for (int i = 0; i < gains; ++i)
        list.push_back(2.0 + i);
    for (const std::uint16_t poison : {0xA5A5, 0x5A5A}) {
        std::vector<std::uint16_t> codes(static_cast<std::size_t>(capacity) + 1, poison);
        zor::encodeGains(list, codes.data(), count, capacity);
        for (int i = 0; i < capacity; ++i)
            QCOMPARE(int{codes[static_cast<std::size_t>(i)]},
                     i < std::min(gains, count) ? (2 + i) * 256 : 256);
        QCOMPARE(codes.back(), poison);
    }
}

void TestGainCode::randomGainsEqualTheReference()
{
    enginetest::Random random(1);
    for (int i = 0; i < 20000; ++i) {
        const double gain = random.gain();
        std::uint16_t code = 0xA5A5;
        zor::EncodeGain(gain, code);
        QVERIFY2(code == reference::gainCode(gain), qPrintable(QString("gain %1: expected %2, actual %3")
                                                                   .arg(gain, 0, 'g', 17)
                                                                   .arg(reference::gainCode(gain))
                                                                   .arg(code)));
    }
}

QTEST_APPLESS_MAIN(TestGainCode)
#include "tst_gain_code.moc"
