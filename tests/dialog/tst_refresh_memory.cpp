#include "tests/dialog/FailingAllocations.h"
#include "tests/fakes/FakeConverter.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/LinkedViews.h"
#include "tests/support/ModalWatch.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QTest>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_div.h>

namespace {

const char* const NotEnough = "Not enough memory for the operation!";

constexpr int Width = 7;
constexpr int Height = 5;

/// The allocations of a refresh in their order.
enum RefreshPlace
{
    UpperImage = 1,
    LowerImage,
    UpX,
    UpY,
    DownX,
    DownY,
    Columns,
    Rows
};

/// Allocations of a correction without the row box.
constexpr int OfACorrection = 20;

TestFrame slopedFrame(unsigned base = 60)
{
    return TestFrame(Width, Height, 12,
                     [base](int x, int y) { return base + static_cast<unsigned>(5 * x + 3 * y); });
}

/// What both plots show: their curves, samples and axes.
QStringList plotted(const DialogProbe& d)
{
    QStringList texts;
    for (const QwtPlot* plot : {d.ui.PlotUp, d.ui.PlotDown}) {
        for (const QwtPlotItem* item : plot->itemList()) {
            QString text = item->title().text();
            const auto* curve = static_cast<const QwtPlotCurve*>(item);
            for (int i = 0; i < static_cast<int>(curve->dataSize()); ++i)
                text += QString(" %1:%2").arg(curve->sample(i).x()).arg(curve->sample(i).y());
            texts << text;
        }
        for (const int axis : {QwtPlot::yLeft, QwtPlot::xBottom}) {
            const QwtScaleDiv& scale = plot->axisScaleDiv(axis);
            texts << QString("%1 to %2").arg(scale.lowerBound()).arg(scale.upperBound());
        }
    }
    return texts;
}

/// A shown dialog with one frame in its views and plots, and another one computed but not shown.
struct Prepared
{
    Prepared()
    {
        dialog.show();
        dialog.take(slopedFrame());
        dialog.Update();
        before = plotted(dialog);
        dialog.take(slopedFrame(900));
        computed = dialog.RunCorrection();
        FakeViewer::calls().clear();
        blocks = liveBlocks();
    }

    DialogProbe dialog;
    QStringList before;
    bool computed = false;
    int blocks = 0;
};

} // namespace

/// Each allocation of a refresh fails in turn, and the box that reports it runs an event loop inside the
/// refresh.
class TestRefreshMemory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void goodRefreshTakesEightBlocksAndGivesThemBack();
    void upperBlockIsGivenBackBeforeTheLowerViewStarts();
    void failingImageShowsABoxAndLeavesTheSight_data();
    void failingImageShowsABoxAndLeavesTheSight();
    void failingImageOfAnUpdate();
    void failingPlotArrayLeavesThePlots_data();
    void failingPlotArrayLeavesThePlots();
    void everyPlotArrayFails();
    void viewChangeInsideTheBoxIsDropped_data();
    void viewChangeInsideTheBoxIsDropped();
    void requestsInsideTheBoxComeAfterIt();
    void nextRefreshIsWhole();
};

void TestRefreshMemory::init()
{
    FakeViewer::reset();
    fakeConverter = FakeConverter();
    failAllocation(0);
}

void TestRefreshMemory::cleanup()
{
    failAllocation(0);
    restoreAllCursors();
}

void TestRefreshMemory::goodRefreshTakesEightBlocksAndGivesThemBack()
{
    Prepared p;
    QVERIFY(p.computed);
    failAllocation(0);
    p.dialog.ShowAll();
    constexpr int image = Width * Height * 2;
    QCOMPARE(allocationSizes(), QVector<int>({image, image, Width * 8, Height * 8, Width * 8, Height * 8,
                                              Width * 8, Height * 8}));
    QCOMPARE(liveBlocks(), p.blocks);
    QVERIFY(plotted(p.dialog) != p.before);
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{2});
}

void TestRefreshMemory::upperBlockIsGivenBackBeforeTheLowerViewStarts()
{
    DialogProbe d;
    d.show();
    d.take(slopedFrame());
    QVERIFY(d.RunCorrection());
    const int before = liveBlocks();
    QVector<int> held;
    FakeViewer::script().onConfigure = [&](QWidget*) { held << liveBlocks() - before; };
    d.ShowAll();
    QCOMPARE(held, (QVector<int>{2, 1}));
    QCOMPARE(liveBlocks(), before);
}

void TestRefreshMemory::failingImageShowsABoxAndLeavesTheSight_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("lost");
    QTest::newRow("the upper image") << int(UpperImage) << 0;
    QTest::newRow("the lower image: the upper one is lost") << int(LowerImage) << 1;
}

void TestRefreshMemory::failingImageShowsABoxAndLeavesTheSight()
{
    QFETCH(int, place);
    QFETCH(int, lost);
    Prepared p;
    ModalWatch watch;
    bool isHeld = false;
    bool hasCursor = true;
    watch.onBox = [&](QMessageBox& box) {
        isHeld = p.dialog.m_viewLock.heldByThisThread();
        hasCursor = QGuiApplication::overrideCursor() != nullptr;
        QVERIFY(box.isModal() && !box.parent());
    };
    failAllocation(place);
    p.dialog.ShowAll();
    QCOMPARE(allocationCount(), place);
    QCOMPARE(watch.texts, QStringList(NotEnough));
    QVERIFY(isHeld);
    QVERIFY(!hasCursor);
    QVERIFY(!p.dialog.m_viewLock.heldByThisThread());
    QCOMPARE(restoreAllCursors(), 0);
    QVERIFY(FakeViewer::calls().empty());
    QCOMPARE(plotted(p.dialog), p.before);
    QCOMPARE(liveBlocks() - p.blocks, lost);
}

void TestRefreshMemory::failingImageOfAnUpdate()
{
    Prepared p;
    ModalWatch watch;
    failAllocation(OfACorrection + UpperImage);
    p.dialog.Update();
    QCOMPARE(watch.texts, QStringList(NotEnough));
    QVERIFY(FakeViewer::calls().empty());
    QCOMPARE(plotted(p.dialog), p.before);
    QVERIFY(p.dialog.m_flatY);
    QCOMPARE(restoreAllCursors(), 0);
}

void TestRefreshMemory::failingPlotArrayLeavesThePlots_data()
{
    QTest::addColumn<int>("place");
    QTest::newRow("values of Up X") << int(UpX);
    QTest::newRow("values of Up Y") << int(UpY);
    QTest::newRow("values of Down X") << int(DownX);
    QTest::newRow("values of Down Y") << int(DownY);
    QTest::newRow("places of columns") << int(Columns);
    QTest::newRow("places of rows") << int(Rows);
}

void TestRefreshMemory::failingPlotArrayLeavesThePlots()
{
    QFETCH(int, place);
    Prepared p;
    ModalWatch watch;
    failAllocation(place);
    p.dialog.ShowAll();
    QVERIFY(allocationCount() >= place);
    QVERIFY(watch.texts.isEmpty());
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{2});
    QCOMPARE(plotted(p.dialog), p.before);
    QVERIFY(!p.dialog.m_viewLock.heldByThisThread());
    QCOMPARE(restoreAllCursors(), 0);
    QCOMPARE(liveBlocks(), p.blocks);
}

void TestRefreshMemory::everyPlotArrayFails()
{
    Prepared p;
    failAllocation(UpX, true);
    p.dialog.ShowAll();
    QCOMPARE(plotted(p.dialog), p.before);
    QVERIFY(!p.dialog.m_viewLock.heldByThisThread());
    QCOMPARE(restoreAllCursors(), 0);
    QCOMPARE(liveBlocks(), p.blocks);
}

void TestRefreshMemory::viewChangeInsideTheBoxIsDropped_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<bool>("upper");
    QTest::newRow("upper image fails, upper view changes") << int(UpperImage) << true;
    QTest::newRow("lower image fails, lower view changes") << int(LowerImage) << false;
}

void TestRefreshMemory::viewChangeInsideTheBoxIsDropped()
{
    QFETCH(int, place);
    QFETCH(bool, upper);
    Prepared p;
    _ZorImage stage{};
    setStage(stage, Width, Height, 2.5);
    DisplayView* const view = upper ? p.dialog.ui.gVUp : p.dialog.ui.gVDown;
    int elapsed = -1;
    ModalWatch watch;
    watch.onBox = [&](QMessageBox&) {
        QT_WARNING_PUSH
        QT_WARNING_DISABLE_DEPRECATED
        // Long past the throttle, so that only the lock is in the way.
        p.dialog.m_viewClock = QTime::currentTime().addSecs(-60);
        emit view->sigViewChanged(view);
        elapsed = p.dialog.m_viewClock.elapsed();
        QT_WARNING_POP
    };
    failAllocation(place);
    p.dialog.ShowAll();
    QCOMPARE(watch.texts.size(), 1);
    QVERIFY(FakeViewer::calls().empty());
    QVERIFY2(elapsed >= 0 && elapsed < 60000, qPrintable(QString("the clock shows %1 ms").arg(elapsed)));

    // The same change after the box is followed.
    p.dialog.m_viewClock = QTime::currentTime().addSecs(-10);
    emit view->sigViewChanged(view);
    QCOMPARE(FakeViewer::callsOf("cmd.display.view.at").size(), std::size_t{1});
}

void TestRefreshMemory::requestsInsideTheBoxComeAfterIt()
{
    Prepared p;
    const std::uint8_t* const image = p.dialog.m_image;
    bool isKept = false;
    ModalWatch watch;
    watch.onBox = [&](QMessageBox&) {
        failAllocation(0);
        p.dialog.highLightSlot();
        p.dialog.Update();
        p.dialog.take(TestFrame::even(3, 2, 8, 100));
        QShowEvent event;
        p.dialog.showEvent(&event);
        isKept = FakeViewer::calls().empty() && p.dialog.m_width == Width && p.dialog.m_image == image;
    };
    failAllocation(UpperImage);
    p.dialog.ShowAll();
    QVERIFY(isKept);
    QCOMPARE(FakeViewer::callsOf("run").size(), std::size_t{1});
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{4});
    QVERIFY(plotted(p.dialog) != p.before);
    QCOMPARE(p.dialog.m_width, Width);
    QCOMPARE(watch.texts.size(), 1);
    QVERIFY(!p.dialog.m_viewLock.heldByThisThread());
    QCOMPARE(restoreAllCursors(), 0);
}

void TestRefreshMemory::nextRefreshIsWhole()
{
    Prepared p;
    ModalWatch watch;
    for (int place = UpperImage; place <= Rows; ++place) {
        failAllocation(place);
        p.dialog.ShowAll();
    }
    failAllocation(0);
    FakeViewer::calls().clear();
    p.dialog.ShowAll();
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{2});
    QVERIFY(plotted(p.dialog) != p.before);
    QCOMPARE(watch.texts.size(), 2);
}

QTEST_MAIN(TestRefreshMemory)
#include "tst_refresh_memory.moc"
