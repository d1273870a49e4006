#include "tests/host/zorbench/Bench.h"

#include "host/zorbench/FrameJudge.h"

#include <QLineEdit>
#include <QtTest>

namespace {

constexpr int Side = 100;

/// A frame of 100 x 100 pixels of 8 bits.
QByteArray pgm(const std::function<int(int x, int y)>& pixel)
{
    QByteArray bytes = "P5 100 100 255\n";
    for (int y = 0; y < Side; ++y) {
        for (int x = 0; x < Side; ++x)
            bytes.append(static_cast<char>(pixel(x, y)));
    }
    return bytes;
}

/// The first pixels have a value of their own.
QByteArray some(int count, int value, int others)
{
    return pgm([=](int x, int y) { return y * Side + x < count ? value : others; });
}

} // namespace

/// The judgement of the current frame, as the operator reads it.
class TestBenchJudgement : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theLineHasItsColour_data();
    void theLineHasItsColour();
    void theDescriptionSaysAll();
    void nonUniformityIsBelowIt_data();
    void nonUniformityIsBelowIt();
    void noFrameNoJudgement();
    void aFrameThatCannotBeJudgedSaysWhy();
};

void TestBenchJudgement::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestBenchJudgement::theLineHasItsColour_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("hue");
    constexpr int green = 120;
    constexpr int amber = 42;
    constexpr int red = 0;
    QTest::newRow("0.09 % saturated")
        << some(9, 255, 200) << "Green: mean 78.5 % of full scale, 0.09 % saturated" << green;
    QTest::newRow("0.1 % saturated") << some(10, 255, 200) << "Amber: 0.10 % of the pixels are saturated; "
                                     << amber;
    QTest::newRow("0.99 % saturated")
        << some(99, 255, 200) << "Amber: 0.99 % of the pixels are saturated; " << amber;
    QTest::newRow("1 % saturated") << some(100, 255, 200) << "Red: 1.00 % of the pixels are saturated; "
                                   << red;
    QTest::newRow("a mean of 20 %") << some(0, 0, 51) << "Green: mean 20.0 % " << green;
    QTest::newRow("a mean just below 20 %")
        << some(1, 50, 51) << "Amber: the mean is 20.0 % of full scale; " << amber;
    QTest::newRow("a mean of 5 %") << some(2500, 12, 13) << "Amber: the mean is 5.0 % of full scale; "
                                   << amber;
    QTest::newRow("a mean just below 5 %")
        << some(2501, 12, 13) << "Red: the mean is 5.0 % of full scale; " << red;
    QTest::newRow("a mean of 90 %") << some(5000, 229, 230) << "Green: mean 90.0 % " << green;
    QTest::newRow("a mean just above 90 %")
        << some(4999, 229, 230) << "Amber: the mean is 90.0 % of full scale; " << amber;
    QTest::newRow("a column without light")
        << pgm([](int x, int) { return x == 7 ? 0 : 200; }) << "Red: 1 column without light, " << red;
    QTest::newRow("a row without light")
        << pgm([](int, int y) { return y == 7 ? 0 : 200; }) << "Red: 1 row without light, " << red;
}

void TestBenchJudgement::theLineHasItsColour()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, text);
    QFETCH(int, hue);
    Bench bench;
    // What was there before leaves nothing behind.
    bench.open(bench.write("black.pgm", some(0, 0, 0)));
    bench.open(bench.write("flat.pgm", file));
    QVERIFY2(bench.status("Judgement").startsWith(text), qPrintable(bench.status("Judgement")));
    const QPalette palette = controlOf(&bench.window(), "Judgement")->palette();
    const QColor colour = palette.color(QPalette::Base);
    const int distance = std::abs(colour.hslHue() - hue);
    QVERIFY2(distance <= 10, qPrintable(colour.name()));
    QVERIFY(colour.hslSaturation() > 60);
    // Letters that can be read on it.
    QVERIFY(qGray(colour.rgb()) - qGray(palette.color(QPalette::Text).rgb()) > 150);
}

void TestBenchJudgement::theDescriptionSaysAll()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", pgm([](int x, int y) { return x == 7 ? 0 : (y == 3 ? 20 : 40); })));
    QWidget* line = controlOf(&bench.window(), "Judgement");
    const QStringList lines = line->accessibleDescription().split('\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[0], QString("Gains from this frame would be wrong."));
    QVERIFY2(lines[1].startsWith("1 column without light, "), qPrintable(lines[1]));
    QVERIFY2(lines[2].startsWith("the mean is 15.5 % of full scale; "), qPrintable(lines[2]));
    QCOMPARE(lines[3], QString("mean 15.5 % of full scale, 0.00 % saturated"));
    QCOMPARE(lines[4], QString("darkest column 7 with a mean of 0.0, darkest row 3 with a mean of 19.8"));
    QCOMPARE(line->toolTip(), line->accessibleDescription());
}

void TestBenchJudgement::nonUniformityIsBelowIt_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("rows");
    QTest::newRow("even") << some(0, 0, 90) << "0.000 %"
                          << "0.000 %";
    QTest::newRow("uneven columns") << pgm([](int x, int) { return x % 2 ? 50 : 100; }) << "33.333 %"
                                    << "0.000 %";
    QTest::newRow("uneven rows") << pgm([](int, int y) { return y < 50 ? 60 : 100; }) << "0.000 %"
                                 << "25.000 %";
    QTest::newRow("black, which has none") << some(0, 0, 0) << ""
                                           << "";
}

void TestBenchJudgement::nonUniformityIsBelowIt()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, columns);
    QFETCH(QString, rows);
    Bench bench;
    bench.open(bench.write("flat.pgm", file));
    QCOMPARE(bench.status("Column non-uniformity"), columns);
    QCOMPARE(bench.status("Row non-uniformity"), rows);
}

void TestBenchJudgement::noFrameNoJudgement()
{
    Bench bench;
    for (const char* name : {"Judgement", "Column non-uniformity", "Row non-uniformity"})
        QCOMPARE(bench.status(name), QString());
}

void TestBenchJudgement::aFrameThatCannotBeJudgedSaysWhy()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", some(0, 0, 200)));
    emit bench.window().findChild<zor::FrameJudge*>()->refused("it is too large");
    const QWidget* line = controlOf(&bench.window(), "Judgement");
    QCOMPARE(bench.status("Judgement"), QString("None: it is too large"));
    QCOMPARE(line->accessibleDescription(), QString("None: it is too large"));
    QCOMPARE(line->palette().color(QPalette::Base), QColor(Qt::transparent));
    QCOMPARE(bench.status("Column non-uniformity"), QString());
    QCOMPARE(bench.status("Row non-uniformity"), QString());
}

QTEST_MAIN(TestBenchJudgement)
#include "tst_bench_judgement.moc"
