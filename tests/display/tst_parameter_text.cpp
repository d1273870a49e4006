#include "display/ParameterText.h"
#include "tests/display/AdapterTools.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <clocale>
#include <limits>

class TestParameterText : public QObject
{
    Q_OBJECT

private slots:
    void integersGoOutAndComeBack_data();
    void integersGoOutAndComeBack();
    void integersAreReadLeniently_data();
    void integersAreReadLeniently();
    void realNumbersTakeTheirFormat_data();
    void realNumbersTakeTheirFormat();
    void realNumbersHaveAPointInEveryLocale();
    void coloursArePacked_data();
    void coloursArePacked();
    void pointersGoOutAndComeBack();
    void writersRefuseNull();
    void readersOfNullGiveNothing();
    void readersNeverAddAKey();
    void indexedReadsAddTheKey();
    void keysAreOrderedByteByByte();
};

void TestParameterText::integersGoOutAndComeBack_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0 << "0";
    QTest::newRow("a negative integer keeps its sign") << -17 << "-17";
    QTest::newRow("largest") << std::numeric_limits<int>::max() << "2147483647";
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << "-2147483648";
}

void TestParameterText::integersGoOutAndComeBack()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    ParameterMap map;
    QVERIFY(paramSetInt(&map, "key", value));
    QCOMPARE(QString::fromStdString(map.at("key")), text);
    QCOMPARE(QString::fromStdString(textFromInt(value)), text);
    QCOMPARE(paramInt(&map, "key"), value);
}

void TestParameterText::integersAreReadLeniently_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("the empty text is 0") << "" << 0;
    QTest::newRow("no number is 0") << "left" << 0;
    QTest::newRow("only the leading integer counts") << "12.75" << 12;
    QTest::newRow("letters after the number") << "-3px" << -3;
    QTest::newRow("a number after letters") << "x7" << 0;
    QTest::newRow("beyond the largest") << "99999999999" << std::numeric_limits<int>::max();
    QTest::newRow("beyond the smallest") << "-99999999999" << std::numeric_limits<int>::min();
    QTest::newRow("beyond 64 bits") << "99999999999999999999999" << std::numeric_limits<int>::max();
}

void TestParameterText::integersAreReadLeniently()
{
    QFETCH(QString, text);
    QFETCH(int, value);
    ParameterMap map = {{"key", text.toStdString()}};
    QCOMPARE(paramInt(&map, "key"), value);
    QCOMPARE(zor::paramIndexedInt(map, "key"), value);
}

void TestParameterText::realNumbersTakeTheirFormat_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QString>("text");
    QTest::newRow("no format keeps six decimals") << 0.5 << QByteArray() << "0.500000";
    QTest::newRow("negative") << -1.25 << QByteArray() << "-1.250000";
    QTest::newRow("the seventh decimal is rounded") << 0.1234567 << QByteArray() << "0.123457";
    QTest::newRow("two decimals") << 2.0 / 3.0 << QByteArray("%.2f") << "0.67";
    QTest::newRow("an exponent") << 12345.0 << QByteArray("%.1e") << "1.2e+04";
    QTest::newRow("a text longer than the buffer ends at 255 characters")
        << 1.0 << QByteArray("%.300f") << "1." + QString(253, '0');
}

void TestParameterText::realNumbersTakeTheirFormat()
{
    QFETCH(double, value);
    QFETCH(QByteArray, format);
    QFETCH(QString, text);
    const char* given = format.isEmpty() ? nullptr : format.constData();
    ParameterMap map;
    QVERIFY(paramSetDouble(&map, "key", value, given));
    QCOMPARE(QString::fromStdString(map.at("key")), text);
    QCOMPARE(QString::fromStdString(textFromDouble(value, given)), text);
}

void TestParameterText::realNumbersHaveAPointInEveryLocale()
{
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QProcess localedef;
    localedef.setProcessChannelMode(QProcess::MergedChannels);
    localedef.start("localedef", {"-i", "de_DE", "-f", "UTF-8", folder.filePath("de_DE.UTF-8")});
    QVERIFY2(localedef.waitForFinished(-1), "localedef cannot be run");
    qputenv("LOCPATH", folder.path().toLocal8Bit());
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    const bool german = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
    qunsetenv("LOCPATH");
    QVERIFY2(german, "no locale with a decimal comma could be made: " + localedef.readAll());
    char plain[32] = {};
    std::snprintf(plain, sizeof plain, "%f", 0.5);
    const std::string text = textFromDouble(0.5);
    char afterwards[32] = {};
    std::snprintf(afterwards, sizeof afterwards, "%f", 0.5);
    std::setlocale(LC_NUMERIC, before.c_str());
    QCOMPARE(plain, "0,500000");
    QCOMPARE(text.c_str(), "0.500000");
    QCOMPARE(afterwards, "0,500000");
}

void TestParameterText::coloursArePacked_data()
{
    QTest::addColumn<int>("red");
    QTest::addColumn<int>("green");
    QTest::addColumn<int>("blue");
    QTest::addColumn<QString>("text");
    QTest::newRow("olive yellow") << 196 << 196 << 0 << "50372";
    QTest::newRow("azure") << 0 << 140 << 250 << "16419840";
    QTest::newRow("white leaves the top byte 0") << 255 << 255 << 255 << "16777215";
    QTest::newRow("red is in the low byte") << 1 << 0 << 0 << "1";
    QTest::newRow("black") << 0 << 0 << 0 << "0";
}

void TestParameterText::coloursArePacked()
{
    QFETCH(int, red);
    QFETCH(int, green);
    QFETCH(int, blue);
    QFETCH(QString, text);
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    QCOMPARE(QString::fromStdString(textFromColor(byte(red), byte(green), byte(blue))), text);
}

void TestParameterText::pointersGoOutAndComeBack()
{
    int target = 0;
    char expected[64] = {};
    std::snprintf(expected, sizeof expected, "%p", static_cast<void*>(&target));
    QCOMPARE(textFromPointer(&target).c_str(), expected);
    ParameterMap map = {
        {"there", textFromPointer(&target)}, {"null", textFromPointer(nullptr)}, {"empty", ""}};
    QCOMPARE(paramPointer(&map, "there"), static_cast<void*>(&target));
    QVERIFY(!paramPointer(&map, "null"));
    QVERIFY(!paramPointer(&map, "empty"));
    QVERIFY(!paramPointer(&map, "absent"));
    QVERIFY(!map.count("absent"));
}

void TestParameterText::writersRefuseNull()
{
    ParameterMap map = {{"old", "1"}};
    QVERIFY(!paramSetInt(nullptr, "key", 1));
    QVERIFY(!paramSetInt(&map, nullptr, 1));
    QVERIFY(!paramSetDouble(nullptr, "key", 1));
    QVERIFY(!paramSetDouble(&map, nullptr, 1));
    QVERIFY(!paramSetText(nullptr, "key", "text"));
    QVERIFY(!paramSetText(&map, nullptr, "text"));
    QCOMPARE(textOf(map), QStringList{"old=1"});
    QVERIFY(paramSetText(&map, "old", nullptr));
    QCOMPARE(textOf(map), QStringList{"old="});
}

void TestParameterText::readersOfNullGiveNothing()
{
    const ParameterMap map = {{"key", "5"}};
    QCOMPARE(paramInt(nullptr, "key"), 0);
    QCOMPARE(paramInt(&map, nullptr), 0);
    QVERIFY(paramText(nullptr, "key").empty());
    QVERIFY(paramText(&map, nullptr).empty());
    QVERIFY(!paramPointer(nullptr, "key"));
    QVERIFY(!paramPointer(&map, nullptr));
}

void TestParameterText::readersNeverAddAKey()
{
    const ParameterMap map = {{"empty", ""}};
    QCOMPARE(paramInt(&map, "empty"), 0);
    QCOMPARE(paramInt(&map, "absent"), 0);
    QVERIFY(paramText(&map, "absent").empty());
    QCOMPARE(textOf(map), QStringList{"empty="});
}

void TestParameterText::indexedReadsAddTheKey()
{
    ParameterMap map;
    QCOMPARE(zor::paramIndexedInt(map, "left"), 0);
    QCOMPARE(textOf(map), QStringList{"left="});
}

void TestParameterText::keysAreOrderedByteByByte()
{
    ParameterMap map;
    for (const char* key : {"pos.y", "\xc3\xa4", "pos", "cs.src", "Zoom", "cs", "pos.x"})
        paramSetText(&map, key, "");
    const QStringList expected = {"Zoom=", "cs=", "cs.src=", "pos=", "pos.x=", "pos.y=", "\u00e4="};
    QCOMPARE(textOf(map), expected);
}

ZOR_DISPLAY_TEST_MAIN(TestParameterText)
#include "tst_parameter_text.moc"
