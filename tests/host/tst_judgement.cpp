#include "host/quality/Judgement.h"

#include <QtTest>

#include <cmath>
#include <cstring>
#include <random>

using namespace zor;

Q_DECLARE_METATYPE(zor::JudgementLimits)

/// Whether a frame is good for gains.
class TestJudgement : public QObject
{
    Q_OBJECT

private slots:
    void figuresAreThoseOfThePixels_data();
    void figuresAreThoseOfThePixels();
    void figuresOfKnownFrames();
    void limitsAreExact_data();
    void limitsAreExact();
    void limitsCanBeSet_data();
    void limitsCanBeSet();
    void reasonsComeWorstFirst_data();
    void reasonsComeWorstFirst();
    void reasonsSayWhatToDo_data();
    void reasonsSayWhatToDo();
};

namespace {

/// A mono frame whose rows end in padding that must never count.
class MonoPixels
{
public:
    MonoPixels(int depth, int width, int height)
        : m_depth(depth)
        , m_width(width)
        , m_height(height)
        , m_step(width * pixelBytes() + 3)
        , m_bytes(static_cast<std::size_t>(m_step * height), 0xFF)
    {
    }

    void set(int x, int y, int value)
    {
        std::memcpy(m_bytes.data() + y * m_step + x * pixelBytes(), &value, std::size_t(pixelBytes()));
    }
    int at(int x, int y) const
    {
        int value = 0;
        std::memcpy(&value, m_bytes.data() + y * m_step + x * pixelBytes(), std::size_t(pixelBytes()));
        return value;
    }
    ConstImageView view() const { return {m_bytes.data(), m_step, m_width, m_height, m_depth}; }

private:
    int pixelBytes() const { return m_depth == 8 ? 1 : 2; }

    int m_depth, m_width, m_height, m_step;
    std::vector<std::uint8_t> m_bytes;
};

/// Pixels of one value but for `others` of another one, spread over rows and columns.
MonoPixels mixed(int depth, int width, int height, int value, int others, int other)
{
    MonoPixels pixels(depth, width, height);
    for (int i = 0; i < width * height; ++i)
        pixels.set(i % width, i / width, i < others ? other : value);
    return pixels;
}

QString letterOf(Verdict verdict)
{
    return verdict == Verdict::Red ? "red" : verdict == Verdict::Amber ? "amber" : "green";
}

QString textOf(const Judgement& judgement)
{
    static const char* const names[] = {"saturated", "dark", "bright", "columns", "rows"};
    QStringList texts(letterOf(judgement.verdict));
    for (const JudgementReason& reason : judgement.reasons)
        texts.append(QString(names[reason.code]) + " " + letterOf(reason.level));
    return texts.join(", ");
}

/// A frame without a fault.
FrameFigures goodFigures()
{
    FrameFigures figures;
    figures.meanPercent = 60.0;
    return figures;
}

double variation(const std::vector<double>& means)
{
    double mean = 0.0;
    double squares = 0.0;
    for (const double of : means)
        mean += of / double(means.size());
    for (const double of : means)
        squares += (of - mean) * (of - mean) / double(means.size());
    return std::sqrt(squares) / mean * 100.0;
}

bool near(double actual, double expected)
{
    return std::abs(actual - expected) <= 1e-9 * std::abs(expected);
}

} // namespace

void TestJudgement::figuresAreThoseOfThePixels_data()
{
    QTest::addColumn<int>("depth");
    for (int depth = 8; depth <= 16; ++depth)
        QTest::addRow("%d bits", depth) << depth;
}

/// Random frames with dark columns and rows, against sums of each pixel.
void TestJudgement::figuresAreThoseOfThePixels()
{
    QFETCH(int, depth);
    std::mt19937 random(static_cast<unsigned>(depth));
    const int full = (1 << depth) - 1;
    for (int round = 0; round < 30; ++round) {
        const int width = 1 + int(random() % 40);
        const int height = 1 + int(random() % 30);
        MonoPixels pixels(depth, width, height);
        std::vector<double> columns(std::size_t(width), 0.0);
        std::vector<double> rows(std::size_t(height), 0.0);
        double sum = 0.0;
        int saturated = 0;
        const auto darkColumn = int(random() % 50);
        const auto darkRow = int(random() % 40);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int bright = random() % 8 == 0 ? full : int(random() % unsigned(full));
                const int value = x == darkColumn || y == darkRow ? 0 : bright;
                pixels.set(x, y, value);
                columns[std::size_t(x)] += double(value) / height;
                rows[std::size_t(y)] += double(value) / width;
                sum += value;
                saturated += value == full;
            }
        }
        const FrameFigures figures = frameFigures(pixels.view());
        QVERIFY(near(figures.saturatedPercent, 100.0 * saturated / (width * height)));
        QVERIFY(near(figures.meanPercent, 100.0 * sum / full / (width * height)));
        const auto column = std::min_element(columns.begin(), columns.end());
        const auto row = std::min_element(rows.begin(), rows.end());
        QVERIFY(near(figures.darkestColumn.mean, *column));
        QVERIFY(near(columns[std::size_t(figures.darkestColumn.index)], *column));
        QVERIFY(near(figures.darkestRow.mean, *row));
        QVERIFY(near(rows[std::size_t(figures.darkestRow.index)], *row));
        QCOMPARE(figures.columnsWithoutLight, int(std::count(columns.begin(), columns.end(), 0.0)));
        QCOMPARE(figures.rowsWithoutLight, int(std::count(rows.begin(), rows.end(), 0.0)));
        if (sum > 0.0) {
            QVERIFY(near(figures.columnVariation + 1.0, variation(columns) + 1.0));
            QVERIFY(near(figures.rowVariation + 1.0, variation(rows) + 1.0));
        }
    }
}

void TestJudgement::figuresOfKnownFrames()
{
    MonoPixels pixels(8, 3, 2);
    const int values[] = {0, 255, 0, 0, 51, 0};
    for (int i = 0; i < 6; ++i)
        pixels.set(i % 3, i / 3, values[i]);
    const FrameFigures figures = frameFigures(pixels.view());
    QCOMPARE(figures.saturatedPercent, 100.0 / 6);
    QCOMPARE(figures.meanPercent, 20.0);
    QCOMPARE(figures.darkestColumn.index, 0);
    QCOMPARE(figures.darkestColumn.mean, 0.0);
    QCOMPARE(figures.columnsWithoutLight, 2);
    QCOMPARE(figures.darkestRow.index, 1);
    QCOMPARE(figures.darkestRow.mean, 17.0);
    QCOMPARE(figures.rowsWithoutLight, 0);

    const FrameFigures black = frameFigures(mixed(12, 4, 3, 0, 0, 0).view());
    QCOMPARE(black.meanPercent, 0.0);
    QCOMPARE(black.columnsWithoutLight, 4);
    QCOMPARE(black.rowsWithoutLight, 3);
    QVERIFY(std::isnan(black.columnVariation));
    QVERIFY(std::isnan(black.rowVariation));
}

void TestJudgement::limitsAreExact_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("others");
    QTest::addColumn<int>("other");
    QTest::addColumn<QString>("verdict");
    // Of 3000 pixels.
    const auto row = [](const char* name, int depth, int value, int others, int other, const char* verdict) {
        QTest::newRow(name) << depth << value << others << other << verdict;
    };
    row("nothing wrong", 12, 2000, 0, 0, "green");
    row("saturated, below 0.1 %", 8, 150, 2, 255, "green");
    row("saturated, 0.1 %", 8, 150, 3, 255, "amber, saturated amber");
    row("saturated, below 1 %", 8, 150, 29, 255, "amber, saturated amber");
    row("saturated, 1 %", 8, 150, 30, 255, "red, saturated red");
    row("saturated at 10 bits", 10, 700, 3, 1023, "amber, saturated amber");
    row("next to saturated at 10 bits", 10, 700, 3, 1022, "green");
    row("saturated at 12 bits", 12, 2700, 3, 4095, "amber, saturated amber");
    row("next to saturated at 12 bits", 12, 2700, 3, 4094, "green");
    row("saturated at 16 bits", 16, 40000, 30, 65535, "red, saturated red");
    row("next to saturated at 16 bits", 16, 40000, 30, 65534, "green");
    row("above saturation", 12, 2700, 3, 65535, "amber, saturated amber");
    row("a mean of 20 %", 8, 51, 0, 0, "green");
    row("a mean below 20 %", 8, 51, 1, 50, "amber, dark amber");
    row("a mean of 20 % at 16 bits", 16, 13107, 0, 0, "green");
    row("a mean below 20 % at 16 bits", 16, 13107, 1, 13106, "amber, dark amber");
    row("a mean of 5 %", 8, 13, 750, 12, "amber, dark amber");
    row("a mean below 5 %", 8, 13, 751, 12, "red, dark red");
    row("a mean of 5 % at 12 bits", 12, 205, 750, 204, "amber, dark amber");
    row("a mean below 5 % at 12 bits", 12, 205, 751, 204, "red, dark red");
    row("a mean of 90 %", 8, 229, 1500, 230, "green");
    row("a mean above 90 %", 8, 229, 1501, 230, "amber, bright amber");
    row("a mean of 90 % at 10 bits", 10, 920, 2100, 921, "green");
    row("a mean above 90 % at 10 bits", 10, 920, 2101, 921, "amber, bright amber");
    row("a row with a little light", 8, 150, 59, 0, "green");
    row("a row without light", 8, 150, 60, 0, "red, rows red");
    row("black", 8, 0, 0, 0, "red, dark red, columns red, rows red");
    row("white", 8, 255, 0, 0, "red, saturated red, bright amber");
}

void TestJudgement::limitsAreExact()
{
    QFETCH(int, depth);
    QFETCH(int, value);
    QFETCH(int, others);
    QFETCH(int, other);
    const MonoPixels pixels = mixed(depth, 60, 50, value, others, other);
    QTEST(textOf(judge(frameFigures(pixels.view()))), "verdict");
}

void TestJudgement::limitsCanBeSet_data()
{
    QTest::addColumn<JudgementLimits>("limits");
    QTest::addColumn<QString>("verdict");
    const auto row = [](const char* name, double JudgementLimits::*limit, double value, const char* verdict) {
        JudgementLimits limits;
        limits.*limit = value;
        QTest::newRow(name) << limits << verdict;
    };
    row("the usual ones", &JudgementLimits::saturatedAmber, 0.1, "green");
    row("amber for fewer saturated pixels", &JudgementLimits::saturatedAmber, 0.05, "amber, saturated amber");
    row("red for fewer saturated pixels", &JudgementLimits::saturatedRed, 0.05, "red, saturated red");
    row("amber for more light", &JudgementLimits::darkAmber, 60.1, "amber, dark amber");
    row("red for more light", &JudgementLimits::darkRed, 60.1, "red, dark red");
    row("bright for less light", &JudgementLimits::brightAmber, 59.9, "amber, bright amber");
}

void TestJudgement::limitsCanBeSet()
{
    QFETCH(JudgementLimits, limits);
    FrameFigures figures = goodFigures();
    figures.saturatedPercent = 0.05;
    QTEST(textOf(judge(figures, limits)), "verdict");
}

void TestJudgement::reasonsComeWorstFirst_data()
{
    QTest::addColumn<double>("saturated");
    QTest::addColumn<double>("mean");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("verdict");
    QTest::newRow("none") << 0.0 << 60.0 << 0 << 0 << "green";
    QTest::newRow("equals in the order of their codes")
        << 2.0 << 1.0 << 1 << 1 << "red, saturated red, dark red, columns red, rows red";
    QTest::newRow("two ambers") << 0.5 << 95.0 << 0 << 0 << "amber, saturated amber, bright amber";
    QTest::newRow("a red one before the ambers")
        << 0.5 << 10.0 << 0 << 1 << "red, rows red, saturated amber, dark amber";
    QTest::newRow("red saturation before a bright mean")
        << 1.0 << 95.0 << 0 << 0 << "red, saturated red, bright amber";
    QTest::newRow("a dark column alone") << 0.0 << 60.0 << 2 << 0 << "red, columns red";
}

void TestJudgement::reasonsComeWorstFirst()
{
    QFETCH(double, saturated);
    QFETCH(double, mean);
    QFETCH(int, columns);
    QFETCH(int, rows);
    FrameFigures figures;
    figures.saturatedPercent = saturated;
    figures.meanPercent = mean;
    figures.columnsWithoutLight = columns;
    figures.rowsWithoutLight = rows;
    QTEST(textOf(judge(figures)), "verdict");
}

void TestJudgement::reasonsSayWhatToDo_data()
{
    QTest::addColumn<double>("saturated");
    QTest::addColumn<double>("mean");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("text");
    QTest::newRow("saturated")
        << 0.125 << 60.0 << 0 << 0
        << "0.12 % of the pixels are saturated; take the frame with less light or exposure";
    QTest::newRow("dark")
        << 0.0 << 12.34 << 0 << 0
        << "the mean is 12.3 % of full scale; uncover the lens or give the frame more light, "
           "20 % at least";
    QTest::newRow("bright")
        << 0.0 << 93.0 << 0 << 0
        << "the mean is 93.0 % of full scale; take the frame with less light or exposure, 90 % at most";
    QTest::newRow("one column")
        << 0.0 << 60.0 << 1 << 0
        << "1 column without light, where no gain helps, the first is column 17; light the whole frame";
    QTest::newRow("rows")
        << 0.0 << 60.0 << 0 << 3
        << "3 rows without light, where no gain helps, the first is row 4; light the whole frame";
}

void TestJudgement::reasonsSayWhatToDo()
{
    QFETCH(double, saturated);
    QFETCH(double, mean);
    QFETCH(int, columns);
    QFETCH(int, rows);
    FrameFigures figures;
    figures.saturatedPercent = saturated;
    figures.meanPercent = mean;
    figures.columnsWithoutLight = columns;
    figures.rowsWithoutLight = rows;
    figures.darkestColumn.index = 17;
    figures.darkestRow.index = 4;
    QTEST(QString::fromStdString(judge(figures).reasons.at(0).text), "text");
}

QTEST_APPLESS_MAIN(TestJudgement)
#include "tst_judgement.moc"
