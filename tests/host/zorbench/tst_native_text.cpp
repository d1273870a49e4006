#include "host/zorbench/NativeText.h"

#include "image/Pitch.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/RecordOf.h"

#include <QtTest>

/// What the status bar says of the pixel under the cursor.
class TestNativeText : public QObject
{
    Q_OBJECT

private slots:
    void codesOfAPixel_data();
    void codesOfAPixel();
    void everyFormatHasAText_data();
    void everyFormatHasAText();
    void thereIsNoTextBeyondTheEdges_data();
    void thereIsNoTextBeyondTheEdges();
};

void TestNativeText::codesOfAPixel_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("row"); ///< in hexadecimal
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("x");
    QTest::addColumn<QString>("expected");
    QTest::newRow("mono") << QByteArray("Mono8") << QByteArray("0aff") << 2 << 1 << "255";
    QTest::newRow("mono of 12 bits") << QByteArray("Mono12") << QByteArray("0000bc0a") << 2 << 1 << "2748";
    QTest::newRow("the odd pixel of a packed pair")
        << QByteArray("Mono12Packed") << QByteArray("01a3ff") << 2 << 1 << "4083";
    QTest::newRow("the site of a colour filter")
        << QByteArray("BayerRG8") << QByteArray("0102") << 2 << 1 << "G 2";
    QTest::newRow("a colour filter that begins with blue")
        << QByteArray("BayerBG8") << QByteArray("0102") << 2 << 0 << "B 1";
    QTest::newRow("a colour filter that begins with red")
        << QByteArray("BayerRG8") << QByteArray("0102") << 2 << 0 << "R 1";
    QTest::newRow("RGB") << QByteArray("RGB8") << QByteArray("010203") << 1 << 0 << "R 1  G 2  B 3";
    QTest::newRow("BGR in its own order")
        << QByteArray("BGR8") << QByteArray("010203") << 1 << 0 << "B 1  G 2  R 3";
    QTest::newRow("BGR with alpha") << QByteArray("BGRa8") << QByteArray("01020304") << 1 << 0
                                    << "B 1  G 2  R 3  A 4";
    QTest::newRow("4:2:2 that begins with a difference")
        << QByteArray("YUV422_8_UYVY") << QByteArray("01020304") << 2 << 1 << "Y 4  U 1  V 3";
    QTest::newRow("the odd last pixel of 4:2:2")
        << QByteArray("YUV422_8") << QByteArray("010203040506") << 3 << 2 << "Y 5  U 6";
    QTest::newRow("4:4:4") << QByteArray("YUV444_8") << QByteArray("01020304") << 1 << 0
                           << "Y 1  U 2  V 3  A 4";
    QTest::newRow("differences of another name")
        << QByteArray("YCbCr422_8") << QByteArray("01020304") << 2 << 0 << "Y 1  Cb 2  Cr 4";
}

void TestNativeText::codesOfAPixel()
{
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, row);
    QFETCH(int, width);
    QFETCH(int, x);
    QFETCH(QString, expected);
    QByteArray bytes = QByteArray::fromHex(row);
    const _ZorImage image =
        recordOf(codeOf(format.constData()), static_cast<std::uint32_t>(width), 1,
                 static_cast<std::uint32_t>(bytes.size()), reinterpret_cast<std::uint8_t*>(bytes.data()),
                 static_cast<std::size_t>(bytes.size()));
    QCOMPARE(zor::nativeText(image, QPoint(x, 0)), expected);
}

void TestNativeText::everyFormatHasAText_data()
{
    QTest::addColumn<std::uint32_t>("code");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        QTest::newRow(row.name) << row.code;
}

void TestNativeText::everyFormatHasAText()
{
    QFETCH(std::uint32_t, code);
    const auto pitch = static_cast<std::uint32_t>(zor::tightPitch(code, 4));
    std::vector<std::uint8_t> bytes(2 * pitch);
    const _ZorImage image = recordOf(code, 4, 2, pitch, bytes.data(), bytes.size());
    const QRegularExpression expected("^(0|[RGBW] 0|[A-Z][a-z]? 0(  [A-Z][a-z]? 0){2,3})$");
    const QString text = zor::nativeText(image, QPoint(3, 1));
    QVERIFY2(expected.match(text).hasMatch(), qPrintable(text));
}

void TestNativeText::thereIsNoTextBeyondTheEdges_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::newRow("left") << QPoint(-1, 0);
    QTest::newRow("above") << QPoint(0, -1);
    QTest::newRow("right") << QPoint(4, 0);
    QTest::newRow("below") << QPoint(0, 2);
}

void TestNativeText::thereIsNoTextBeyondTheEdges()
{
    QFETCH(QPoint, place);
    std::vector<std::uint8_t> bytes(8);
    const _ZorImage image = recordOf(codeOf("Mono8"), 4, 2, 4, bytes.data(), bytes.size());
    QCOMPARE(zor::nativeText(image, place), QString());
}

QTEST_APPLESS_MAIN(TestNativeText)
#include "tst_native_text.moc"
