#include "image/ChannelIndex.h"

#include <QtTest>

/// The six functions from a channel letter to its position.
class TestChannelIndex : public QObject
{
    Q_OBJECT

private slots:
    void lettersHaveTheirPositions_data();
    void lettersHaveTheirPositions();
};

using Function = int (*)(char16_t);
Q_DECLARE_METATYPE(Function)

void TestChannelIndex::lettersHaveTheirPositions_data()
{
    QTest::addColumn<Function>("function");
    QTest::addColumn<QList<int>>("positions"); // of Y R G B A U V
    const auto add = [](const char* name, Function function, QList<int> positions) {
        QTest::newRow(name) << function << positions;
    };
    add("mono, Bayer and TrueSense know Y only", zor::channelIndexY, {0, -1, -1, -1, -1, -1, -1});
    add("RGB", zor::channelIndexRgb, {-1, 0, 1, 2, -1, -1, -1});
    add("BGR", zor::channelIndexBgr, {-1, 2, 1, 0, -1, -1, -1});
    add("RGBa", zor::channelIndexRgba, {-1, 0, 1, 2, 3, -1, -1});
    add("BGRa", zor::channelIndexBgra, {-1, 2, 1, 0, 3, -1, -1});
    add("YUV knows no A", zor::channelIndexYuv, {0, -1, -1, -1, -1, 1, 2});
}

void TestChannelIndex::lettersHaveTheirPositions()
{
    QFETCH(Function, function);
    QFETCH(QList<int>, positions);
    const QString letters = "YRGBAUV";
    for (int letter = 0; letter <= 0xFFFF; ++letter) {
        const int place = letters.indexOf(QChar(ushort(letter)));
        const int expected = place < 0 ? -1 : positions[place];
        if (function(char16_t(letter)) != expected)
            QFAIL(qPrintable(QString("letter 0x%1: expected %2, got %3")
                                 .arg(letter, 4, 16)
                                 .arg(expected)
                                 .arg(function(char16_t(letter)))));
    }
}

QTEST_APPLESS_MAIN(TestChannelIndex)
#include "tst_channel_index.moc"
