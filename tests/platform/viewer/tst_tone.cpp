#include "platform/viewer/picture/Tone.h"

#include <QColor>
#include <QTest>

using namespace zor::viewer;

/// How a sample becomes a grey or a colour of the screen.
class TestTone : public QObject
{
    Q_OBJECT

private slots:
    void tonesFollowTheDepth_data();
    void tonesFollowTheDepth();
    void falseColoursRunFromBlackToWhite_data();
    void falseColoursRunFromBlackToWhite();
};

void TestTone::tonesFollowTheDepth_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("sample");
    QTest::addColumn<int>("level");
    QTest::newRow("8 bits stay") << 8 << 200 << 200;
    QTest::newRow("10 bits, full scale") << 10 << 1023 << 255;
    QTest::newRow("12 bits, half scale") << 12 << 2048 << 128;
    QTest::newRow("12 bits, a value beyond the depth is white") << 12 << 5000 << 255;
    QTest::newRow("14 bits, one above half scale") << 14 << 8193 << 128;
    QTest::newRow("16 bits, full scale") << 16 << 65535 << 255;
    QTest::newRow("16 bits, below one step") << 16 << 255 << 0;
    QTest::newRow("4 bits are spread") << 4 << 15 << 240;
}

void TestTone::tonesFollowTheDepth()
{
    QFETCH(int, depth);
    QFETCH(int, sample);
    QFETCH(int, level);
    PixelShape shape;
    shape.bytes = 2;
    shape.depth = depth;
    const auto cellValue = static_cast<std::uint16_t>(sample);
    std::uint32_t colour = 0;
    toneRow(makeTone(shape, false), &cellValue, &colour, 1);
    QCOMPARE(colour, QRgb(qRgb(level, level, level)));
    toneRow(makeTone(shape, true), &cellValue, &colour, 1);
    QCOMPARE(colour, makeTone(shape, true).table[static_cast<std::size_t>(level)]);
}

void TestTone::falseColoursRunFromBlackToWhite_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QColor>("colour");
    const auto row = [](const char* name, int level, const QColor& colour) {
        QTest::newRow(name) << level << colour;
    };
    row("the darkest is black", 0, QColor(0, 0, 0));
    row("towards blue", 25, QColor(0, 0, 125));
    row("blue", 51, QColor(0, 0, 255));
    row("towards cyan", 76, QColor(0, 125, 255));
    row("cyan", 102, QColor(0, 255, 255));
    row("towards yellow", 127, QColor(125, 255, 130));
    row("yellow", 153, QColor(255, 255, 0));
    row("towards red", 178, QColor(255, 130, 0));
    row("red", 204, QColor(255, 0, 0));
    row("towards white", 229, QColor(255, 125, 125));
    row("the brightest is white", 255, QColor(255, 255, 255));
}

void TestTone::falseColoursRunFromBlackToWhite()
{
    QFETCH(int, level);
    QFETCH(QColor, colour);
    PixelShape shape;
    shape.depth = 8;
    const auto sample = static_cast<std::uint16_t>(level);
    std::uint32_t shown = 0;
    toneRow(makeTone(shape, true), &sample, &shown, 1);
    QCOMPARE(QColor::fromRgb(shown), colour);
}

QTEST_GUILESS_MAIN(TestTone)
#include "tst_tone.moc"
