#include "tests/plugin/HostedDialog.h"

#include "display/ZorDisplayProcessor.h"
#include "image/ZorImage.h"

#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QImage>
#include <QTest>

#include <vector>

namespace {

constexpr int Width = 24;
constexpr int Height = 12;
constexpr double Scale = 4.0;

/// Grey levels of a frame's pixels as a view paints them, row by row.
using Levels = std::vector<int>;

int valueAt(const TestFrame& frame, int x, int y)
{
    const std::uint8_t* row = frame.bytes.data() + y * frame.step;
    return frame.depth == 8 ? row[x] : row[2 * x] + 256 * row[2 * x + 1];
}

/// How bright a value is painted.
int levelOf(int value, int depth)
{
    return value >> (depth - 8);
}

Levels levelsOf(const TestFrame& frame)
{
    Levels levels;
    for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x)
            levels.push_back(levelOf(valueAt(frame, x, y), frame.depth));
    }
    return levels;
}

/// The same with marks: every value from 128 on blackens the two samples after it, those that are bright
/// themselves excepted. Rows are padded to four bytes, where marks go too.
Levels markedLevelsOf(const TestFrame& frame)
{
    const int sampleBytes = frame.depth == 8 ? 1 : 2;
    const int stride = (frame.width * sampleBytes + 3) / 4 * 4 / sampleBytes;
    Levels samples(static_cast<std::size_t>(stride * frame.height + 2), 0);
    std::vector<bool> isBright(samples.size(), false);
    for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x) {
            const auto at = static_cast<std::size_t>(y * stride + x);
            samples[at] = levelOf(valueAt(frame, x, y), frame.depth);
            isBright[at] = valueAt(frame, x, y) >= 128;
        }
    }
    Levels marked;
    for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x) {
            const auto at = static_cast<std::size_t>(y * stride + x);
            const bool isAfterBright = (at >= 1 && isBright[at - 1]) || (at >= 2 && isBright[at - 2]);
            marked.push_back(isAfterBright && !isBright[at] ? 0 : samples[at]);
        }
    }
    return marked;
}

QImage painted(HostedDialog& host, const char* view)
{
    QCoreApplication::processEvents();
    return host.find<QAbstractScrollArea>(view)->viewport()->grab().toImage().convertToFormat(
        QImage::Format_RGB32);
}

/// What is painted in the middle of each image pixel; -1 where it is no grey.
Levels paintedLevels(HostedDialog& host, const char* name, const TestFrame& frame)
{
    auto* view = host.find<QAbstractScrollArea>(name);
    const QImage image = painted(host, name);
    Levels levels;
    for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x) {
            ParameterMap map{{"pos.x", std::to_string(x)},
                             {"pos.y", std::to_string(y)},
                             {"cs.src", "img"},
                             {"cs.dst", "win"}};
            ViewerTap::viewerOf(view)->command("cmd.display.view.translate", &map);
            const QPoint place = view->viewport()->mapFrom(
                view, QPoint(std::stoi(map.at("pos.x")), std::stoi(map.at("pos.y"))));
            const QRgb colour = image.rect().contains(place) ? image.pixel(place) : qRgb(1, 2, 3);
            levels.push_back(qRed(colour) == qGreen(colour) && qRed(colour) == qBlue(colour) ? qRed(colour)
                                                                                             : -1);
        }
    }
    return levels;
}

/// Empty when equal, else the first place that differs.
QString difference(const Levels& actual, const Levels& expected, int width)
{
    if (actual.size() != expected.size())
        return QString("%1 pixels, expected %2").arg(actual.size()).arg(expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (actual[i] != expected[i])
            return QString("pixel (%1, %2): %3, expected %4")
                .arg(int(i) % width)
                .arg(int(i) / width)
                .arg(actual[i])
                .arg(expected[i]);
    }
    return {};
}

/// Dark, with a bright area, single bright pixels, and bright ones at the ends of two rows.
TestFrame spotted(int width, int depth, int shift = 0)
{
    const unsigned bright = depth == 8 ? 200 : 2000;
    return TestFrame(width, Height, depth, [=](int x, int y) {
        const bool isArea = x >= 5 + shift && x < 9 + shift && y >= 2 && y < 6;
        const bool isSpot = (x == 14 && y == 3) || (x == 15 && y == 8);
        const bool isEnd = (x == width - 1 && y == 4) || (x == width - 2 && y == 9);
        return isArea || isEnd ? bright : isSpot ? 130U : 90U + unsigned(x % 3) * 16;
    });
}

void showAtScale(HostedDialog& host, const TestFrame& frame)
{
    host.show(frame);
    for (const char* name : {"gVUp", "gVDown"})
        ViewerTap::setScale(host.find(name), Scale);
}

} // namespace

/// Marks on bright pixels as the operator sees them: the built plug-in, the real viewer, a mouse on the box.
class TestPaintedHighlights : public QObject
{
    Q_OBJECT

private slots:
    void marksComeAndGoWithTheBox_data();
    void marksComeAndGoWithTheBox();
    void laterFramesAreMarkedToo();
    void boxClickedWithoutAFrameMarksWhatComes();
};

void TestPaintedHighlights::marksComeAndGoWithTheBox_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("depth");
    QTest::newRow("8 bits, tight rows") << Width << 8;
    QTest::newRow("12 bits, tight rows") << Width << 12;
    QTest::newRow("8 bits, padded rows") << Width - 1 << 8;
    QTest::newRow("12 bits, padded rows") << Width - 1 << 12;
}

void TestPaintedHighlights::marksComeAndGoWithTheBox()
{
    QFETCH(int, width);
    QFETCH(int, depth);
    HostedDialog host;
    const TestFrame frame = spotted(width, depth);
    showAtScale(host, frame);
    QCOMPARE(ViewerTap::scaleOf(host.find("gVUp")), Scale);
    const QImage upper = painted(host, "gVUp");
    const QImage lower = painted(host, "gVDown");
    QCOMPARE(difference(paintedLevels(host, "gVUp", frame), levelsOf(frame), width), QString());

    host.click("chBHighlights");
    QVERIFY(host.find<QCheckBox>("chBHighlights")->isChecked());
    QCOMPARE(difference(paintedLevels(host, "gVUp", frame), markedLevelsOf(frame), width), QString());
    QVERIFY(markedLevelsOf(frame) != levelsOf(frame));
    QVERIFY(painted(host, "gVDown") == lower);
    // The viewer's copy of the frame has no marks either.
    const std::vector<unsigned> source = ViewerTap::pixelsIn(host.find("gVUp"));
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < width; ++x)
            QCOMPARE(int(source[static_cast<std::size_t>(y * width + x)]), valueAt(frame, x, y));
    }

    host.click("chBHighlights");
    QVERIFY(!host.find<QCheckBox>("chBHighlights")->isChecked());
    QVERIFY(painted(host, "gVUp") == upper);
    QVERIFY(painted(host, "gVDown") == lower);
}

void TestPaintedHighlights::laterFramesAreMarkedToo()
{
    HostedDialog host;
    showAtScale(host, spotted(Width, 12));
    host.click("chBHighlights");
    for (const int shift : {1, 4}) {
        const TestFrame next = spotted(Width, 12, shift);
        host.show(next);
        QCOMPARE(difference(paintedLevels(host, "gVUp", next), markedLevelsOf(next), Width), QString());
    }
    // Off and on again: one processor of the two is left, and marks as before.
    host.click("chBHighlights");
    host.click("chBHighlights");
    const TestFrame last = spotted(Width, 12, 2);
    host.show(last);
    QCOMPARE(difference(paintedLevels(host, "gVUp", last), markedLevelsOf(last), Width), QString());
}

// The frame on the screen stays as it is until the next one comes.
void TestPaintedHighlights::boxClickedWithoutAFrameMarksWhatComes()
{
    HostedDialog host;
    const TestFrame frame = spotted(Width, 8);
    showAtScale(host, frame);
    host.plugIn().Reset();
    host.click("chBHighlights");
    QCOMPARE(difference(paintedLevels(host, "gVUp", frame), levelsOf(frame), Width), QString());
    const TestFrame next = spotted(Width, 8, 3);
    host.show(next);
    QCOMPARE(difference(paintedLevels(host, "gVUp", next), markedLevelsOf(next), Width), QString());
}

QTEST_MAIN(TestPaintedHighlights)
#include "tst_painted_highlights.moc"
