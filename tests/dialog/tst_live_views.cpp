#include "display/DisplayAdapter.h"
#include "image/PixelTypeCode.h"
#include "tests/fakes/FakeConverter.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QTest>

#include <cstring>

namespace {

/// The images that a view was given, the last one last.
std::vector<ViewerCall> shownIn(QWidget* view)
{
    std::vector<ViewerCall> found;
    for (const ViewerCall& call : FakeViewer::callsOf("display")) {
        if (call.target == view)
            found.push_back(call);
    }
    return found;
}

unsigned sloped(int x, int y)
{
    return static_cast<unsigned>(60 + 5 * x + 3 * y);
}

} // namespace

class TestLiveViews : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstShowMakesBothAdapters();
    void adaptersOutliveAClose();
    void resetOfTheFrameKeepsTheAdapters();
    void upperViewGetsTheFrame_data();
    void upperViewGetsTheFrame();
    void lowerViewGetsTheChosenImage_data();
    void lowerViewGetsTheChosenImage();
    void sameGeometryStartsNoViewerAgain();
    void boxTickedAloneChangesNothing();
    void lowerImageAboveEightBitsIsOneBlock();
    void narrowingTakesTheSecondPassesStep();
    void upperImageIsDoneBeforeTheLowerStarts();
    void recordsBelongToTheRefresh();
    void withoutResultNothingIsShown_data();
    void withoutResultNothingIsShown();
    void bothImagesMakeAResult_data();
    void bothImagesMakeAResult();
    void withoutAdaptersTheWaitCursorStays();
    void refreshGivesCursorAndLockBack();
    void viewerThatFailsIsNotAsked();
    void failedImageIsIgnored();
    void framesAndViewChangesFromWithinARefreshAreDropped();
    void adaptersEndInTheirOrder();
    void formatsDepthDecidesOnTheNarrowing_data();
    void formatsDepthDecidesOnTheNarrowing();
};

void TestLiveViews::init()
{
    FakeViewer::reset();
    fakeConverter = FakeConverter();
}

void TestLiveViews::cleanup()
{
    restoreAllCursors();
}

void TestLiveViews::firstShowMakesBothAdapters()
{
    DialogProbe d;
    QVERIFY(!d.m_adapterUp && !d.m_adapterDown);
    d.show();
    QVERIFY(d.m_adapterUp && d.m_adapterDown);
    for (DisplayAdapter* adapter : {d.m_adapterUp, d.m_adapterDown}) {
        QVERIFY(!adapter->isGpuViewer());
        QCOMPARE(adapter->featureFlags(), 13u);
        QVERIFY(!adapter->hasViewer());
    }

    d.take(TestFrame(4, 3, 8, sloped));
    d.Update();
    QCOMPARE(FakeViewer::callsOf("create CPU").size(), std::size_t{2});
    QCOMPARE(FakeViewer::callsOf("create CPU").at(0).argument, static_cast<const void*>(d.ui.gVUp));
    QCOMPARE(FakeViewer::callsOf("create CPU").at(1).argument, static_cast<const void*>(d.ui.gVDown));
}

void TestLiveViews::adaptersOutliveAClose()
{
    DialogProbe d;
    d.show();
    DisplayAdapter* const upper = d.m_adapterUp;
    d.close();
    QCOMPARE(d.m_adapterUp, upper);
    d.show();
    QCOMPARE(d.m_adapterUp, upper);
}

void TestLiveViews::resetOfTheFrameKeepsTheAdapters()
{
    DialogProbe d;
    d.show();
    d.ResetData(false);
    QVERIFY(d.m_adapterUp && d.m_adapterDown);
    d.ResetData(true);
    QVERIFY(!d.m_adapterUp && !d.m_adapterDown);
}

void TestLiveViews::upperViewGetsTheFrame_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<uint>("pixelType");
    QTest::newRow("8 bits") << 8 << zor::Mono8;
    QTest::newRow("10 bits") << 10 << zor::Mono10;
    QTest::newRow("12 bits") << 12 << zor::Mono12;
    QTest::newRow("16 bits") << 16 << zor::Mono16;
}

void TestLiveViews::upperViewGetsTheFrame()
{
    QFETCH(int, depth);
    QFETCH(uint, pixelType);
    DialogProbe d;
    d.show();
    const TestFrame frame(6, 4, depth, sloped);
    d.take(frame);
    d.Update();

    const std::vector<ViewerCall> shown = shownIn(d.ui.gVUp);
    QCOMPARE(shown.size(), std::size_t{1});
    const _ZorImage& record = shown.at(0).record;
    QCOMPARE(record.recordSize, 96u);
    QCOMPARE(record.recordVersion, 0x20000u);
    QCOMPARE(record.width, 6u);
    QCOMPARE(record.height, 4u);
    QCOMPARE(record.pitch, static_cast<std::uint32_t>(d.m_step));
    QCOMPARE(record.imageSize, static_cast<std::uint32_t>(d.m_imageBytes));
    QCOMPARE(record.pixelType, pixelType);
    QCOMPARE(record.depth, static_cast<std::uint32_t>(depth));
    QCOMPARE(record.channels, 1u);
    QCOMPARE(record.isSigned, std::uint8_t{0});
    QCOMPARE(shown.at(0).pixels, std::vector<std::uint8_t>(d.m_image, d.m_image + d.m_imageBytes));
}

void TestLiveViews::lowerViewGetsTheChosenImage_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("both");
    for (const int depth : {8, 10, 12, 16}) {
        QTest::addRow("%d bits, column pass alone", depth) << depth << false;
        QTest::addRow("%d bits, both passes", depth) << depth << true;
    }
}

void TestLiveViews::lowerViewGetsTheChosenImage()
{
    QFETCH(int, depth);
    QFETCH(bool, both);
    DialogProbe d;
    d.ui.chBShowY->setChecked(both);
    d.show();
    d.take(TestFrame(6, 4, depth, sloped));
    d.Update();

    const std::vector<ViewerCall> shown = shownIn(d.ui.gVDown);
    QCOMPARE(shown.size(), std::size_t{1});
    const ViewerCall& lower = shown.at(0);
    ViewerCall upper = shownIn(d.ui.gVUp).at(0);
    upper.record.data = lower.record.data;
    QCOMPARE(std::memcmp(&upper.record, &lower.record, sizeof lower.record), 0);

    const std::uint16_t* chosen = both ? d.m_flatY : d.m_flatX;
    int differing = 0;
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x) {
            const std::uint16_t cell = chosen[y * d.m_flatXStep / 2 + x];
            const std::uint8_t* row = lower.pixels.data() + y * static_cast<int>(lower.record.pitch);
            if (depth == 8) {
                QCOMPARE(int(row[x]), std::min<int>(cell, 255));
            } else {
                std::uint16_t pixel;
                std::memcpy(&pixel, row + 2 * x, 2);
                QCOMPARE(pixel, cell);
            }
            differing += d.m_flatX[y * d.m_flatXStep / 2 + x] != d.m_flatY[y * d.m_flatYStep / 2 + x];
        }
    }
    QVERIFY2(differing > 0, "the two images are alike, so the choice would not show");
}

void TestLiveViews::sameGeometryStartsNoViewerAgain()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    d.Update();
    QCOMPARE(FakeViewer::callsOf("configure").size(), std::size_t{2});
    d.Update();
    QCOMPARE(FakeViewer::callsOf("configure").size(), std::size_t{2});
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{4});
}

void TestLiveViews::boxTickedAloneChangesNothing()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    d.Update();
    QTest::mouseClick(d.ui.chBShowY, Qt::LeftButton, {}, QPoint(8, d.ui.chBShowY->height() / 2));
    QVERIFY(d.ui.chBShowY->isChecked());
    QCOMPARE(shownIn(d.ui.gVDown).size(), std::size_t{1});
    d.Update();
    QCOMPARE(shownIn(d.ui.gVDown).size(), std::size_t{2});
    QVERIFY(shownIn(d.ui.gVDown).at(0).pixels != shownIn(d.ui.gVDown).at(1).pixels);
}

// At odd widths an unpadded frame and the padded working image disagree, and the copy goes on regardless.
void TestLiveViews::lowerImageAboveEightBitsIsOneBlock()
{
    DialogProbe d;
    d.show();
    const TestFrame frame(5, 3, 12, sloped);
    d.take(frame);
    QCOMPARE(d.m_step, 10);
    d.Update();
    const ViewerCall lower = shownIn(d.ui.gVDown).at(0);
    QCOMPARE(lower.pixels.size(), std::size_t{30});
    QCOMPARE(std::memcmp(lower.pixels.data(), d.m_flatX, 30), 0);

    // A frame with long rows gets black after the cells.
    const TestFrame longLines(5, 3, 12, sloped, 40);
    d.take(longLines);
    d.Update();
    const ViewerCall padded = shownIn(d.ui.gVDown).at(1);
    QCOMPARE(padded.pixels.size(), std::size_t{120});
    QCOMPARE(std::memcmp(padded.pixels.data(), d.m_flatX, 36), 0);
    for (std::size_t i = 36; i < padded.pixels.size(); ++i)
        QCOMPARE(int(padded.pixels.at(i)), 0);
}

// Rows of 10 bytes that hold 5 pixels, from the first working image with the step of the second.
void TestLiveViews::narrowingTakesTheSecondPassesStep()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(5, 3, 8, sloped, 10));
    QVERIFY(d.RunCorrection());
    QCOMPARE(d.m_step, 10);
    // Both working images have 6 cells a row; a step of 5 shows which of the two is looked at.
    QCOMPARE(d.m_flatXStep, 12);
    QCOMPARE(d.m_flatYStep, 12);
    d.m_flatYStep = 10;
    d.ShowAll();
    const ViewerCall lower = shownIn(d.ui.gVDown).at(0);
    QCOMPARE(lower.record.pitch, 10u);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x)
            QCOMPARE(int(lower.pixels.at(std::size_t(10 * y + x))), std::min(int(d.m_flatX[5 * y + x]), 255));
    }
}

void TestLiveViews::upperImageIsDoneBeforeTheLowerStarts()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    d.Update();
    std::vector<std::string> order;
    for (const ViewerCall& call : FakeViewer::calls()) {
        if (call.name == "create CPU" || call.name == "display")
            order.push_back(call.name);
    }
    QCOMPARE(order, (std::vector<std::string>{"create CPU", "display", "create CPU", "display"}));
}

void TestLiveViews::recordsBelongToTheRefresh()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    d.Update();
    QVERIFY(shownIn(d.ui.gVUp).at(0).record.data != d.m_image);
    const void* lower = shownIn(d.ui.gVDown).at(0).record.data;
    QVERIFY(lower != d.m_flatX && lower != d.m_flatY);
}

void TestLiveViews::withoutResultNothingIsShown_data()
{
    QTest::addColumn<bool>("frame");
    QTest::newRow("no frame") << false;
    QTest::newRow("a frame that is not computed") << true;
}

void TestLiveViews::withoutResultNothingIsShown()
{
    QFETCH(bool, frame);
    DialogProbe d;
    d.show();
    if (frame)
        d.take(TestFrame(6, 4, 12, sloped));
    d.ShowAll();
    QVERIFY(FakeViewer::calls().empty());
    QCOMPARE(restoreAllCursors(), 0);
    QVERIFY(!d.m_viewLock.heldByThisThread());
}

void TestLiveViews::bothImagesMakeAResult_data()
{
    QTest::addColumn<bool>("columnsMissing");
    QTest::addColumn<bool>("rowsMissing");
    QTest::addColumn<bool>("both");
    QTest::addColumn<bool>("shown");
    QTest::newRow("the column pass's image is chosen and missing") << true << false << false << false;
    QTest::newRow("it is missing and the other one is chosen") << true << false << true << true;
    QTest::newRow("the other one is missing and not chosen") << false << true << false << false;
    QTest::newRow("the other one is missing and chosen") << false << true << true << false;
}

void TestLiveViews::bothImagesMakeAResult()
{
    QFETCH(bool, columnsMissing);
    QFETCH(bool, rowsMissing);
    QFETCH(bool, both);
    QFETCH(bool, shown);
    DialogProbe d;
    d.ui.chBShowY->setChecked(both);
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    QVERIFY(d.RunCorrection());
    std::uint16_t* const columns = d.m_flatX;
    std::uint16_t* const rows = d.m_flatY;
    if (columnsMissing)
        d.m_flatX = nullptr;
    if (rowsMissing)
        d.m_flatY = nullptr;
    d.ShowAll();
    d.m_flatX = columns;
    d.m_flatY = rows;
    QCOMPARE(shownIn(d.ui.gVUp).size(), std::size_t{shown});
    QCOMPARE(shownIn(d.ui.gVDown).size(), std::size_t{shown});
    QCOMPARE(restoreAllCursors(), 0);
    QVERIFY(!d.m_viewLock.heldByThisThread());
}

void TestLiveViews::withoutAdaptersTheWaitCursorStays()
{
    DialogProbe d;
    d.take(TestFrame(6, 4, 12, sloped));
    d.Update();
    QVERIFY(d.m_flatY);
    QVERIFY(QGuiApplication::overrideCursor());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QCOMPARE(restoreAllCursors(), 1);
    QVERIFY(!d.m_viewLock.heldByThisThread());
    QVERIFY(FakeViewer::calls().empty());
}

void TestLiveViews::refreshGivesCursorAndLockBack()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    bool held = false;
    Qt::CursorShape shape = Qt::ArrowCursor;
    FakeViewer::script().onConfigure = [&](QWidget*) {
        held = d.m_viewLock.heldByThisThread();
        shape = QGuiApplication::overrideCursor()->shape();
    };
    d.Update();
    QVERIFY(held);
    QCOMPARE(shape, Qt::WaitCursor);
    QVERIFY(!d.m_viewLock.heldByThisThread());
    QCOMPARE(restoreAllCursors(), 0);
}

void TestLiveViews::viewerThatFailsIsNotAsked()
{
    FakeViewer::script().canCreate = false;
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    d.Update();
    QVERIFY(FakeViewer::callsOf("display").empty());
    QCOMPARE(FakeViewer::callsOf("create CPU").size(), std::size_t{2});
    QCOMPARE(restoreAllCursors(), 0);
}

void TestLiveViews::failedImageIsIgnored()
{
    FakeViewer::script().displayStatus = 5;
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    ModalWatch watch;
    d.Update();
    QCOMPARE(shownIn(d.ui.gVUp).size(), std::size_t{1});
    QCOMPARE(shownIn(d.ui.gVDown).size(), std::size_t{1});
    QVERIFY(watch.texts.isEmpty());
}

// The viewer's start runs in a nested event loop, where a host's timers come in.
void TestLiveViews::framesAndViewChangesFromWithinARefreshAreDropped()
{
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, 12, sloped));
    int calls = 0;
    FakeViewer::script().onConfigure = [&](QWidget* view) {
        ++calls;
        const std::uint8_t* before = d.m_image;
        d.take(TestFrame(3, 2, 8, sloped));
        QCOMPARE(static_cast<const std::uint8_t*>(d.m_image), before);
        d.m_viewClock = QTime::currentTime().addSecs(-10);
        d.onViewChanged(view == d.ui.gVUp ? d.ui.gVUp : d.ui.gVDown);
        QShowEvent event;
        d.showEvent(&event);
    };
    d.Update();
    QCOMPARE(calls, 2);
    QCOMPARE(d.m_width, 6);
    QCOMPARE(FakeViewer::callsOf("display").size(), std::size_t{2});
    QVERIFY(FakeViewer::callsOf("cmd.display.view.at").empty());
}

void TestLiveViews::adaptersEndInTheirOrder()
{
    DialogProbe d;
    d.show();
    QStringList order;
    connect(d.m_adapterUp, &QObject::destroyed, this, [&order] { order << "upper"; });
    connect(d.m_adapterDown, &QObject::destroyed, this, [&order] { order << "lower"; });
    d.ResetData(true);
    QCOMPARE(order, (QStringList{"upper", "lower"}));
}

void TestLiveViews::formatsDepthDecidesOnTheNarrowing_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("claimed");
    QTest::newRow("8 bits, whatever the frame's depth says") << 8 << 12;
    QTest::newRow("12 bits, whatever the frame's depth says") << 12 << 8;
}

void TestLiveViews::formatsDepthDecidesOnTheNarrowing()
{
    QFETCH(int, depth);
    QFETCH(int, claimed);
    DialogProbe d;
    d.show();
    d.take(TestFrame(6, 4, depth, sloped));
    QVERIFY(d.RunCorrection());
    d.m_depth = claimed;
    d.ShowAll();
    const ViewerCall lower = shownIn(d.ui.gVDown).at(0);
    if (depth == 8)
        QCOMPARE(int(lower.pixels.at(7)), int(d.m_flatX[7]));
    else
        QCOMPARE(std::memcmp(lower.pixels.data(), d.m_flatX, lower.pixels.size()), 0);
}

QTEST_MAIN(TestLiveViews)
#include "tst_live_views.moc"
