#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"
#include "tests/support/PlotLook.h"

#include "tests/fakes/FakeViewer.h"

#include <QCheckBox>
#include <QTest>

#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>

#include <algorithm>

namespace {

void compareSamples(const QwtPlotCurve* curve, const std::uint16_t* line, int count)
{
    QVERIFY(curve);
    QCOMPARE(int(curve->dataSize()), count);
    for (int i = 0; i < count; ++i)
        QCOMPARE(curve->sample(i), QPointF(i, line[i]));
}

unsigned sloped(int x, int y)
{
    return static_cast<unsigned>(60 + x % 90 + y % 70);
}

} // namespace

class TestProfilePlots : public QObject
{
    Q_OBJECT

private slots:
    void init() { FakeViewer::reset(); }
    void curvesAreTheFourLines_data();
    void curvesAreTheFourLines();
    void curvesAreDrawnFromTheLinesNotTheMeans();
    void rowCurveOfTheCorrectedImageIsShownOnRequest();
    void pensShowTheDirection();
    void canvasesAreWhite();
    void valueAxesAreTheRanges();
    void entryAxisIsOneBeyondTheLongerSide_data();
    void entryAxisIsOneBeyondTheLongerSide();
    void evenFrameGivesAnEmptyRange_data();
    void evenFrameGivesAnEmptyRange();
    void eightBitAxisFollowsCellsAbove255();
    void curvesAreRebuiltNotAdded();
    void curvesComeAndGoInTheirOrder();
    void curvesStayUntilTheNextRefresh();
    void missingLineLeavesThePlots_data();
    void missingLineLeavesThePlots();
    void removedCurvesAreDeleted();
    void otherItemsStay();
    void ticksAreLeftToQwt();
    void picturesAreDrawnAnew();
    void plotsSetNothingElse();
};

void TestProfilePlots::curvesAreTheFourLines_data()
{
    QTest::addColumn<int>("depth");
    for (const int depth : {8, 10, 12, 16})
        QTest::addRow("%d bits", depth) << depth;
}

void TestProfilePlots::curvesAreTheFourLines()
{
    QFETCH(int, depth);
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    d.show();
    d.take(TestFrame(7, 5, depth, sloped));
    d.Update();
    compareSamples(curveIn(d.ui.PlotUp, "Up X"), d.m_columnMean, 7);
    compareSamples(curveIn(d.ui.PlotUp, "Up Y"), d.m_rowMean, 5);
    compareSamples(curveIn(d.ui.PlotDown, "Down X"), d.m_flatColumnMean, 7);
    compareSamples(curveIn(d.ui.PlotDown, "Down Y"), d.m_flatRowMean, 5);
}

void TestProfilePlots::curvesAreDrawnFromTheLinesNotTheMeans()
{
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    d.show();
    d.take(TestFrame(3, 2, 12, sloped));
    d.Update();
    // Lines of a single row and column differ from the means.
    const std::vector<std::uint16_t> upX{1, 2, 3}, upY{4, 5}, downX{6, 7, 65535}, downY{0, 8};
    std::copy(upX.begin(), upX.end(), d.m_columnLine);
    std::copy(upY.begin(), upY.end(), d.m_rowLine);
    std::copy(downX.begin(), downX.end(), d.m_flatColumnLine);
    std::copy(downY.begin(), downY.end(), d.m_flatRowLine);
    d.ShowAll();
    compareSamples(curveIn(d.ui.PlotUp, "Up X"), upX.data(), 3);
    compareSamples(curveIn(d.ui.PlotUp, "Up Y"), upY.data(), 2);
    compareSamples(curveIn(d.ui.PlotDown, "Down X"), downX.data(), 3);
    compareSamples(curveIn(d.ui.PlotDown, "Down Y"), downY.data(), 2);
}

void TestProfilePlots::rowCurveOfTheCorrectedImageIsShownOnRequest()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    QCOMPARE(titlesIn(d.ui.PlotUp), (QStringList{"Up X", "Up Y"}));
    QCOMPARE(titlesIn(d.ui.PlotDown), QStringList{"Down X"});
    d.ui.chBShowY->setChecked(true);
    QCOMPARE(titlesIn(d.ui.PlotDown), QStringList{"Down X"});
    d.Update();
    QCOMPARE(titlesIn(d.ui.PlotDown), (QStringList{"Down X", "Down Y"}));
    d.ui.chBShowY->setChecked(false);
    d.Update();
    QCOMPARE(titlesIn(d.ui.PlotDown), QStringList{"Down X"});
}

void TestProfilePlots::pensShowTheDirection()
{
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    const QPen amber(QColor(255, 192, 0, 255));
    const QPen lilac(QColor(160, 160, 255, 255));
    QCOMPARE(curveIn(d.ui.PlotUp, "Up X")->pen(), amber);
    QCOMPARE(curveIn(d.ui.PlotDown, "Down X")->pen(), amber);
    QCOMPARE(curveIn(d.ui.PlotUp, "Up Y")->pen(), lilac);
    QCOMPARE(curveIn(d.ui.PlotDown, "Down Y")->pen(), lilac);
}

void TestProfilePlots::canvasesAreWhite()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown})
        QCOMPARE(plot->canvasBackground(), QBrush(QColor(255, 255, 255, 255)));
}

void TestProfilePlots::valueAxesAreTheRanges()
{
    DialogProbe d;
    d.show();
    // Pixels 37 to 240; the brightest column's mean is 240, so nothing goes above it.
    d.take(TestFrame(2, 1, 12, [](int x, int) { return x ? 240u : 37u; }));
    d.Update();
    QCOMPARE(d.m_rangeYMin, 20);
    QCOMPARE(d.m_rangeYMax, 240);
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown})
        QCOMPARE(limits(plot, QwtPlot::yLeft), qMakePair(20.0, 240.0));
}

void TestProfilePlots::entryAxisIsOneBeyondTheLongerSide_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<double>("end");
    QTest::newRow("100 wide and 2000 high") << 100 << 2000 << 2001.0;
    QTest::newRow("30 wide and 20 high") << 30 << 20 << 31.0;
    QTest::newRow("one pixel") << 1 << 1 << 2.0;
}

void TestProfilePlots::entryAxisIsOneBeyondTheLongerSide()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(double, end);
    DialogProbe d;
    d.show();
    d.take(TestFrame(width, height, 8, sloped));
    d.Update();
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown})
        QCOMPARE(limits(plot, QwtPlot::xBottom), qMakePair(0.0, end));
    const QwtPlotCurve* columns = curveIn(d.ui.PlotUp, "Up X");
    QCOMPARE(columns->sample(int(columns->dataSize()) - 1).x(), width - 1.0);
    QCOMPARE(curveIn(d.ui.PlotUp, "Up Y")->maxXValue(), height - 1.0);
}

void TestProfilePlots::evenFrameGivesAnEmptyRange_data()
{
    QTest::addColumn<unsigned>("value");
    QTest::newRow("a grey frame") << 100U;
    QTest::newRow("a black frame") << 0U;
}

void TestProfilePlots::evenFrameGivesAnEmptyRange()
{
    QFETCH(unsigned, value);
    DialogProbe d;
    d.show();
    d.take(TestFrame::even(6, 4, 12, value));
    d.Update();
    QCOMPARE(d.m_rangeYMin, int(value));
    QCOMPARE(d.m_rangeYMax, int(value));
    // The axis is neither widened nor left to find limits of its own: it is what Qwt makes of such a range.
    QwtPlot expected;
    expected.setAxisScale(QwtPlot::yLeft, value, value, 0);
    expected.replot();
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown}) {
        QVERIFY(!plot->axisAutoScale(QwtPlot::yLeft));
        QCOMPARE(limits(plot, QwtPlot::yLeft), limits(&expected, QwtPlot::yLeft));
    }
    compareSamples(curveIn(d.ui.PlotUp, "Up X"), d.m_columnMean, 6);
}

void TestProfilePlots::eightBitAxisFollowsCellsAbove255()
{
    DialogProbe d;
    d.show();
    // The left column's mean is half the right one's, so its pixel of 200 becomes 400.
    d.take(TestFrame(2, 2, 8, [](int x, int y) { return x ? 200u : (y ? 200u : 0u); }));
    d.Update();
    QCOMPARE(d.m_flatMax, 400);
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown})
        QCOMPARE(limits(plot, QwtPlot::yLeft), qMakePair(0.0, 400.0));
}

void TestProfilePlots::curvesAreRebuiltNotAdded()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    d.take(TestFrame(3, 9, 12, sloped));
    d.Update();
    QCOMPARE(titlesIn(d.ui.PlotUp), (QStringList{"Up X", "Up Y"}));
    compareSamples(curveIn(d.ui.PlotUp, "Up X"), d.m_columnLine, 3);
    compareSamples(curveIn(d.ui.PlotUp, "Up Y"), d.m_rowLine, 9);
}

void TestProfilePlots::curvesComeAndGoInTheirOrder()
{
    QStringList order;
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown}) {
        connect(plot, &QwtPlot::itemAttached, [&order](const QwtPlotItem* item, bool isOn) {
            order << (isOn ? "+ " : "- ") + item->title().text();
        });
    }
    d.Update();
    QCOMPARE(order, (QStringList{"- Down X", "- Down Y", "- Up X", "- Up Y", "+ Up X", "+ Up Y", "+ Down X",
                                 "+ Down Y"}));
}

void TestProfilePlots::curvesStayUntilTheNextRefresh()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    d.take(TestFrame(3, 9, 12, sloped));
    QCOMPARE(int(curveIn(d.ui.PlotUp, "Up X")->dataSize()), 7);
    d.ResetData(false);
    QCOMPARE(int(curveIn(d.ui.PlotUp, "Up X")->dataSize()), 7);
}

void TestProfilePlots::missingLineLeavesThePlots_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("the frame's column line") << 0;
    QTest::newRow("the frame's row line") << 1;
    QTest::newRow("the corrected image's column line") << 2;
    QTest::newRow("the corrected image's row line") << 3;
}

void TestProfilePlots::missingLineLeavesThePlots()
{
    QFETCH(int, line);
    DialogProbe d;
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    const QwtPlotCurve* before = curveIn(d.ui.PlotUp, "Up X");
    std::uint16_t** const lines[] = {&d.m_columnLine, &d.m_rowLine, &d.m_flatColumnLine, &d.m_flatRowLine};
    std::uint16_t* const taken = std::exchange(*lines[line], nullptr);
    d.ShowAll();
    *lines[line] = taken;
    QCOMPARE(curveIn(d.ui.PlotUp, "Up X"), before);
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{4});
    QVERIFY(!d.m_viewLock.heldByThisThread());
}

void TestProfilePlots::removedCurvesAreDeleted()
{
    struct NotedCurve : QwtPlotCurve
    {
        explicit NotedCurve(int& count)
            : ended(count)
        {
        }
        ~NotedCurve() override { ++ended; }
        int& ended;
    };
    int ended = 0;
    DialogProbe d;
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    for (QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown})
        (new NotedCurve(ended))->attach(plot);
    d.Update();
    QCOMPARE(ended, 2);
}

void TestProfilePlots::otherItemsStay()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    for (QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown}) {
        (new QwtPlotMarker)->attach(plot);
        (new QwtPlotGrid)->attach(plot);
    }
    d.Update();
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown}) {
        QCOMPARE(plot->itemList(QwtPlotItem::Rtti_PlotMarker).size(), 1);
        QCOMPARE(plot->itemList(QwtPlotItem::Rtti_PlotGrid).size(), 1);
    }
}

void TestProfilePlots::ticksAreLeftToQwt()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown}) {
        QCOMPARE(plot->axisStepSize(QwtPlot::yLeft), 0.0);
        QCOMPARE(plot->axisStepSize(QwtPlot::xBottom), 0.0);
    }
}

void TestProfilePlots::picturesAreDrawnAnew()
{
    DialogProbe d;
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    const auto pictures = [&d] {
        return QList<QImage>{d.ui.PlotUp->grab().toImage(), d.ui.PlotDown->grab().toImage()};
    };
    const QList<QImage> old = pictures();
    d.take(TestFrame(9, 4, 12, [](int x, int) { return 900u + unsigned(100 * (x % 3)); }));
    d.Update();
    const QList<QImage> shown = pictures();
    d.ui.PlotUp->replot();
    d.ui.PlotDown->replot();
    const QList<QImage> anew = pictures();
    for (int i = 0; i < 2; ++i) {
        QVERIFY(shown.at(i) != old.at(i));
        QCOMPARE(shown.at(i), anew.at(i));
    }
}

void TestProfilePlots::plotsSetNothingElse()
{
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    d.show();
    d.take(TestFrame(7, 5, 12, sloped));
    d.Update();
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown}) {
        QCOMPARE(plot->itemList().size(), 2);
        QVERIFY(plot->title().isEmpty());
        for (const int axis : {QwtPlot::yLeft, QwtPlot::xBottom})
            QVERIFY(plot->axisEnabled(axis) && plot->axisTitle(axis).isEmpty());
        QVERIFY(!plot->axisEnabled(QwtPlot::yRight) && !plot->axisEnabled(QwtPlot::xTop));
        QVERIFY(!plot->legend());
    }
}

QTEST_MAIN(TestProfilePlots)
#include "tst_profile_plots.moc"
