#include "image/MonoTarget.h"
#include "tests/plugin/HostedDialog.h"
#include "tests/reference/RunReference.h"
#include "tests/support/Cursors.h"
#include "tests/support/PlotLook.h"

#include <QCheckBox>
#include <QGraphicsView>
#include <QLineEdit>
#include <QTest>

#include <algorithm>

namespace {

constexpr int Width = 61;
constexpr int Height = 37;

/// Stripes both ways, so that the two passes of the correction differ, and some cells that one of them
/// limits.
TestFrame stripedFrame(int width, int height, int depth)
{
    const unsigned full = (1U << depth) - 1;
    return TestFrame(width, height, depth, [full](int x, int y) {
        const unsigned column = static_cast<unsigned>(x * 7 % 31) * full / 120;
        const unsigned row = static_cast<unsigned>(y * 5 % 17) * full / 90;
        return x == 4 && y == 5 ? full : full / 4 + column + row;
    });
}

/// The frame as the converter delivers it: rows padded with zeros to whole groups of 4 bytes.
reference::Image deliveredImage(const TestFrame& frame)
{
    const int step = (frame.step + 3) / 4 * 4;
    reference::Image image{{}, step, frame.width, frame.height, frame.depth};
    for (int y = 0; y < frame.height; ++y) {
        const auto row = frame.bytes.begin() + y * frame.step;
        image.bytes.insert(image.bytes.end(), row, row + frame.step);
        image.bytes.resize(static_cast<std::size_t>((y + 1) * step));
    }
    return image;
}

reference::Run expectedRun(const TestFrame& frame, bool showRows, double value = 1.0)
{
    return reference::Run(deliveredImage(frame), {true, value, showRows, false, 0});
}

std::vector<unsigned> pixelsOf(reference::Image image, int depth, unsigned most)
{
    image.depth = depth;
    std::vector<unsigned> pixels;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x)
            pixels.push_back(std::min(image.pixel(x, y), most));
    }
    return pixels;
}

/// What the lower view has to show: cells of 16 bits, limited to a byte where the frame has bytes.
std::vector<unsigned> lowerPixels(const reference::Run& run, bool showRows, int depth)
{
    return pixelsOf(showRows ? run.flatY : run.flatX, 16, depth == 8 ? 255 : 65535);
}

/// Empty when equal, else the first place with both values.
template <typename Item>
QString difference(const std::vector<Item>& actual, const std::vector<Item>& expected, int width)
{
    if (actual.size() != expected.size())
        return QString("%1 values, expected %2").arg(actual.size()).arg(expected.size());
    const auto found = std::mismatch(actual.begin(), actual.end(), expected.begin());
    if (found.first == actual.end())
        return {};
    const auto place = static_cast<int>(found.first - actual.begin());
    return QString("(%1, %2): %3, expected %4")
        .arg(place % width)
        .arg(place / width)
        .arg(*found.first)
        .arg(*found.second);
}

/// Empty when the curve runs over the values from place 0 on.
QString curveDifference(const QwtPlot* plot, const char* title, const std::vector<std::uint16_t>& expected)
{
    const QwtPlotCurve* curve = curveIn(plot, title);
    if (!curve)
        return QString("there is no curve %1").arg(title);
    std::vector<double> values;
    for (std::size_t i = 0; i < curve->dataSize(); ++i) {
        const QPointF sample = curve->sample(static_cast<int>(i));
        if (sample.x() != static_cast<double>(i))
            return QString("%1: entry %2 stands at %3").arg(title).arg(i).arg(sample.x());
        values.push_back(sample.y());
    }
    const QString found = difference(values, std::vector<double>(expected.begin(), expected.end()),
                                     static_cast<int>(expected.size()));
    return found.isEmpty() ? found : QString("%1 %2").arg(title, found);
}

} // namespace

/// The dialog of the built plug-in with the real viewer, driven as a host and an operator do.
class TestWholeDialog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void viewsAndPlotsShowTheResult_data();
    void viewsAndPlotsShowTheResult();
    void entryAxisOfATallFrame();
    void tickingTheRowBoxChangesNothingBeforeUpdate();
    void typedNormalizeValueCounts();
    void aDroppedFrameStaysInSight();
    void viewsArePainted();
};

void TestWholeDialog::cleanup()
{
    QCOMPARE(restoreAllCursors(), 0);
}

void TestWholeDialog::viewsAndPlotsShowTheResult_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("showRows");
    for (const int depth : {8, 10, 12, 16}) {
        QTest::addRow("%d bits, column pass alone", depth) << depth << false;
        QTest::addRow("%d bits, both passes", depth) << depth << true;
    }
}

void TestWholeDialog::viewsAndPlotsShowTheResult()
{
    QFETCH(int, depth);
    QFETCH(bool, showRows);
    HostedDialog host;
    const TestFrame frame = stripedFrame(Width, Height, depth);
    if (showRows)
        host.click("chBShowY");
    QCOMPARE(host.find<QCheckBox>("chBShowY")->isChecked(), showRows);
    host.hand(frame);
    QVERIFY(!ViewerTap::imageIn(host.find("gVUp")));
    host.click("pBUpdate");

    const reference::Image delivered = deliveredImage(frame);
    const reference::Run expected = expectedRun(frame, showRows);
    const std::uint32_t code = zor::computeFormat(static_cast<std::uint32_t>(depth));
    for (const char* name : {"gVUp", "gVDown"}) {
        const _ZorImage* image = ViewerTap::imageIn(host.find(name));
        QVERIFY(image);
        QCOMPARE(image->pixelType, code);
        QCOMPARE(image->depth, static_cast<std::uint32_t>(depth));
        QCOMPARE(image->pitch, static_cast<std::uint32_t>(delivered.step));
    }
    const QString upper =
        difference(ViewerTap::pixelsIn(host.find("gVUp")), pixelsOf(delivered, depth, 65535), Width);
    QVERIFY2(upper.isEmpty(), qPrintable("upper view " + upper));
    const QString lower =
        difference(ViewerTap::pixelsIn(host.find("gVDown")), lowerPixels(expected, showRows, depth), Width);
    QVERIFY2(lower.isEmpty(), qPrintable("lower view " + lower));
    QVERIFY2(lowerPixels(expected, false, depth) != lowerPixels(expected, true, depth),
             "the two corrected images are alike, so the choice would not show");

    const auto* plotUp = host.find<QwtPlot>("PlotUp");
    const auto* plotDown = host.find<QwtPlot>("PlotDown");
    QStringList wrong{curveDifference(plotUp, "Up X", expected.columns.means),
                      curveDifference(plotUp, "Up Y", expected.rowsOfFrame.means),
                      curveDifference(plotDown, "Down X", expected.flatColumnMeans)};
    if (showRows)
        wrong << curveDifference(plotDown, "Down Y", expected.flatRowMeans);
    wrong.removeAll(QString());
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join("; ")));
    QCOMPARE(titlesIn(plotUp), (QStringList{"Up X", "Up Y"}));
    QCOMPARE(titlesIn(plotDown), showRows ? (QStringList{"Down X", "Down Y"}) : QStringList{"Down X"});
    for (const QwtPlot* plot : {plotUp, plotDown}) {
        QCOMPARE(limits(plot, QwtPlot::yLeft),
                 qMakePair(double(expected.range.least), double(expected.range.greatest)));
        QCOMPARE(limits(plot, QwtPlot::xBottom), qMakePair(0.0, Width + 1.0));
    }
}

void TestWholeDialog::entryAxisOfATallFrame()
{
    HostedDialog host;
    host.show(stripedFrame(100, 2000, 10));
    for (const char* name : {"PlotUp", "PlotDown"})
        QCOMPARE(limits(host.find<QwtPlot>(name), QwtPlot::xBottom), qMakePair(0.0, 2001.0));
    QCOMPARE(curveIn(host.find<QwtPlot>("PlotUp"), "Up X")->maxXValue(), 99.0);
    QCOMPARE(curveIn(host.find<QwtPlot>("PlotDown"), "Down X")->maxXValue(), 99.0);
    QCOMPARE(curveIn(host.find<QwtPlot>("PlotUp"), "Up Y")->maxXValue(), 1999.0);
}

void TestWholeDialog::tickingTheRowBoxChangesNothingBeforeUpdate()
{
    HostedDialog host;
    const TestFrame frame = stripedFrame(Width, Height, 12);
    host.show(frame);
    QWidget* lower = host.find("gVDown");
    const auto* plot = host.find<QwtPlot>("PlotDown");
    for (const bool showRows : {true, false}) {
        const std::vector<unsigned> before = ViewerTap::pixelsIn(lower);
        const QStringList titles = titlesIn(plot);
        host.click("chBShowY");
        QCOMPARE(host.find<QCheckBox>("chBShowY")->isChecked(), showRows);
        HostedDialog::pause();
        QCOMPARE(difference(ViewerTap::pixelsIn(lower), before, Width), QString());
        QCOMPARE(titlesIn(plot), titles);
        host.click("pBUpdate");
        QCOMPARE(difference(ViewerTap::pixelsIn(lower),
                            lowerPixels(expectedRun(frame, showRows), showRows, 12), Width),
                 QString());
        QCOMPARE(titlesIn(plot).contains("Down Y"), showRows);
    }
}

void TestWholeDialog::typedNormalizeValueCounts()
{
    HostedDialog host;
    const TestFrame frame = stripedFrame(Width, Height, 12);
    host.show(frame);
    auto* field = host.find<QLineEdit>("lENormFFC");
    host.click("lENormFFC");
    QVERIFY(field->hasFocus());
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, "0.5");
    host.click("pBUpdate");
    const reference::Run expected = expectedRun(frame, false, 0.5);
    QCOMPARE(difference(ViewerTap::pixelsIn(host.find("gVDown")), lowerPixels(expected, false, 12), Width),
             QString());
    QVERIFY(lowerPixels(expected, false, 12) != lowerPixels(expectedRun(frame, false), false, 12));
}

void TestWholeDialog::aDroppedFrameStaysInSight()
{
    HostedDialog host;
    host.show(stripedFrame(Width, Height, 12));
    const std::vector<unsigned> before = ViewerTap::pixelsIn(host.find("gVDown"));
    host.plugIn().Reset();
    host.click("pBUpdate");
    QCOMPARE(ViewerTap::pixelsIn(host.find("gVDown")), before);
    QCOMPARE(curveIn(host.find<QwtPlot>("PlotUp"), "Up X")->dataSize(), std::size_t{Width});
}

// Two halves of different brightness above, one even picture below.
void TestWholeDialog::viewsArePainted()
{
    HostedDialog host;
    host.show(TestFrame(80, 60, 12, [](int x, int) { return x < 40 ? 1000U : 3000U; }));
    const auto halves = [&](const char* name) {
        QWidget* viewport = host.find<QGraphicsView>(name)->viewport();
        const QImage painted = viewport->grab().toImage();
        const int y = painted.height() / 2;
        const auto grey = [&](int x) { return qGray(painted.pixel(painted.width() / 2 + x, y)); };
        return qMakePair(grey(-40), grey(40));
    };
    const auto upper = halves("gVUp");
    QVERIFY2(upper.second - upper.first > 90,
             qPrintable(QString("%1 and %2").arg(upper.first).arg(upper.second)));
    const auto lower = halves("gVDown");
    QCOMPARE(lower.first, lower.second);
    QVERIFY2(lower.first > 150, qPrintable(QString::number(lower.first)));
}

QTEST_MAIN(TestWholeDialog)
#include "tst_whole_dialog.moc"
