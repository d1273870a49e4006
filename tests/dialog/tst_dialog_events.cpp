#include "splitter/CGridSplitter.h"
#include "tests/dialog/DialogData.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"
#include "tests/support/NotifiedHost.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QResizeEvent>
#include <QShowEvent>
#include <QSignalSpy>
#include <QSizeGrip>
#include <QTest>

#include <qwt_plot.h>

#include <algorithm>

namespace {

const QVector<std::uint32_t> Opened{16387};
const QVector<std::uint32_t> OpenedClosed{16387, 16386};

} // namespace

class TestDialogEvents : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void firstShowNotifiesThenComputesThenMarks();
    void firstShowComputesTheFrameOfTheCallback();
    void firstShowWithoutAFrameMarksTheDialogShown();
    void showWithoutCallbackWorks();
    void closeNotifiesAndKeepsEverything();
    void closeAndShowRunsAnew_data();
    void closeAndShowRunsAnew();
    void everyCloseEventNotifies();
    void eventsAreAccepted();
    void closingIsNoRejection();
    void showingLeavesTheDialogInItsPlace();
    void hostUpdateBeforeTheFirstShowComputes();
    void escapeHidesWithoutACloseEvent();
    void resizeArrangesTheTwoAreas_data();
    void resizeArrangesTheTwoAreas();
    void firstShowStretchesTheStrip();
    void nullResizeEventChangesNothing();
    void sizeGripFollowsTheCorner();
    void panesFillTheUpperArea();
};

void TestDialogEvents::cleanup()
{
    restoreAllCursors();
}

void TestDialogEvents::firstShowNotifiesThenComputesThenMarks()
{
    DialogProbe d;
    d.take(unevenFrame());
    NotifiedHost host;
    bool computedBefore = true;
    bool shownBefore = true;
    host.onCode = [&](std::uint32_t) {
        computedBefore = d.m_flatY != nullptr;
        shownBefore = d.m_shown;
    };
    d.SetHost(NotifiedHost::call, &host, nullptr);
    d.show();
    QCOMPARE(host.codes, Opened);
    QVERIFY(!computedBefore);
    QVERIFY(!shownBefore);
    QVERIFY(d.m_flatY);
    QVERIFY(d.m_shown);
}

void TestDialogEvents::firstShowComputesTheFrameOfTheCallback()
{
    DialogProbe d;
    NotifiedHost host;
    host.onCode = [&](std::uint32_t) { d.take(unevenFrame()); };
    d.SetHost(NotifiedHost::call, &host, nullptr);
    d.show();
    QVERIFY(d.m_flatY);
    QCOMPARE(int(d.m_columnGains.size()), 6);
}

void TestDialogEvents::firstShowWithoutAFrameMarksTheDialogShown()
{
    DialogProbe d;
    NotifiedHost host;
    d.SetHost(NotifiedHost::call, &host, nullptr);
    d.show();
    QVERIFY(d.m_shown);
    QVERIFY(!d.m_image);
    d.Update();
    QVERIFY(!d.m_flatY);
    d.take(unevenFrame());
    d.Update();
    QVERIFY(d.m_flatY);
    QCOMPARE(host.codes, Opened);
}

void TestDialogEvents::showWithoutCallbackWorks()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.show();
    QVERIFY(d.m_shown);
    QVERIFY(d.m_flatY);
    d.close();
    QVERIFY(!d.m_shown);
}

void TestDialogEvents::closeNotifiesAndKeepsEverything()
{
    DialogProbe d;
    d.take(unevenFrame());
    NotifiedHost host;
    d.SetHost(NotifiedHost::call, &host, nullptr);
    d.show();
    const std::uint16_t* result = d.m_flatY;
    bool shownInClose = false;
    host.onCode = [&](std::uint32_t) { shownInClose = d.m_shown; };
    QVERIFY(d.close());
    QCOMPARE(host.codes, OpenedClosed);
    QVERIFY(shownInClose);
    QVERIFY(!d.m_shown);
    QVERIFY(!d.isVisible());
    QVERIFY(d.m_image);
    QCOMPARE(static_cast<const std::uint16_t*>(d.m_flatY), result);
}

void TestDialogEvents::closeAndShowRunsAnew_data()
{
    QTest::addColumn<bool>("newFrame");
    QTest::addColumn<int>("columns");
    QTest::newRow("with the old frame when the host delivers none") << false << 6;
    QTest::newRow("with the frame that the host now delivers") << true << 2;
}

void TestDialogEvents::closeAndShowRunsAnew()
{
    QFETCH(bool, newFrame);
    QFETCH(int, columns);
    DialogProbe d;
    d.take(unevenFrame());
    NotifiedHost host;
    d.SetHost(NotifiedHost::call, &host, nullptr);
    d.show();
    d.close();
    d.ui.lENormFFC->setText(QStringLiteral("0.5"));
    host.onCode = [&](std::uint32_t) {
        if (newFrame)
            d.take(TestFrame::even(2, 2, 8, 100));
    };
    d.show();
    QCOMPARE(host.codes, QVector<std::uint32_t>({16387, 16386, 16387}));
    QCOMPARE(int(d.m_columnGains.size()), columns);
    QCOMPARE(d.m_columnGains.back(), 0.5);
}

void TestDialogEvents::everyCloseEventNotifies()
{
    DialogProbe d;
    NotifiedHost host;
    d.SetHost(NotifiedHost::call, &host, nullptr);
    QCloseEvent event;
    d.closeEvent(&event);
    d.closeEvent(&event);
    QCOMPARE(host.codes, QVector<std::uint32_t>({16386, 16386}));
}

void TestDialogEvents::eventsAreAccepted()
{
    DialogProbe d;
    QShowEvent show;
    show.ignore();
    d.showEvent(&show);
    QVERIFY(show.isAccepted());
    QCloseEvent close;
    close.ignore();
    d.closeEvent(&close);
    QVERIFY(close.isAccepted());
}

void TestDialogEvents::closingIsNoRejection()
{
    // QDialog's own handler would reject the dialog.
    DialogProbe d;
    d.show();
    QSignalSpy rejected(&d, &QDialog::rejected);
    QSignalSpy finished(&d, &QDialog::finished);
    d.close();
    QVERIFY(!d.isVisible());
    QCOMPARE(rejected.size(), 0);
    QCOMPARE(finished.size(), 0);
}

void TestDialogEvents::showingLeavesTheDialogInItsPlace()
{
    // QDialog's own handler would move a dialog that nobody has placed to the middle of the screen.
    DialogProbe d;
    d.resize(d.minimumSize());
    const QPoint place = d.pos();
    QShowEvent event;
    d.showEvent(&event);
    QCOMPARE(d.pos(), place);
}

void TestDialogEvents::hostUpdateBeforeTheFirstShowComputes()
{
    DialogProbe d;
    d.take(unevenFrame());
    d.Update();
    QVERIFY(d.m_flatY);
    QVERIFY(!d.m_shown);
}

void TestDialogEvents::escapeHidesWithoutACloseEvent()
{
    DialogProbe d;
    NotifiedHost host;
    d.SetHost(NotifiedHost::call, &host, nullptr);
    d.show();
    QTest::keyClick(&d, Qt::Key_Escape);
    QVERIFY(!d.isVisible());
    QCOMPARE(host.codes, Opened);
    QVERIFY(d.m_shown);
    // To the host the dialog never closed, so nothing is announced again.
    d.show();
    QCOMPARE(host.codes, Opened);
}

void TestDialogEvents::resizeArrangesTheTwoAreas_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("arranged");
    QTest::newRow("wider and higher") << 1400 << 900 << true;
    QTest::newRow("width at the strip's, height 31") << 1131 << 31 << true;
    QTest::newRow("width at the strip's, height 30: both areas stay") << 1131 << 30 << false;
    QTest::newRow("narrower, height 30: both areas stay") << 800 << 30 << false;
    QTest::newRow("one pixel wider than the strip, height 30") << 1132 << 30 << true;
    QTest::newRow("narrower, height 31") << 800 << 31 << true;
}

void TestDialogEvents::resizeArrangesTheTwoAreas()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, arranged);
    DialogProbe d;
    const QRect strip = d.ui.wSettings->geometry();
    const QRect grid = d.m_grid->geometry();
    QResizeEvent event(QSize(width, height), d.size());
    d.resizeEvent(&event);
    if (arranged) {
        QCOMPARE(d.ui.wSettings->geometry(), QRect(0, height - strip.height(), width, strip.height()));
        QCOMPARE(d.m_grid->geometry(), QRect(0, 0, width, std::max(0, height - strip.height())));
    } else {
        QCOMPARE(d.ui.wSettings->geometry(), strip);
        QCOMPARE(d.m_grid->geometry(), grid);
    }
}

void TestDialogEvents::firstShowStretchesTheStrip()
{
    DialogProbe d;
    d.show();
    QCOMPARE(d.ui.wSettings->width(), 1174);
    QCOMPARE(d.ui.wSettings->geometry().bottom(), 726);
}

void TestDialogEvents::nullResizeEventChangesNothing()
{
    DialogProbe d;
    const QRect strip = d.ui.wSettings->geometry();
    const QRect view = d.ui.gVUp->geometry();
    d.resizeEvent(nullptr);
    QCOMPARE(d.ui.wSettings->geometry(), strip);
    QCOMPARE(d.ui.gVUp->geometry(), view);
}

// QDialog's own handler moves it.
void TestDialogEvents::sizeGripFollowsTheCorner()
{
    DialogProbe d;
    d.setSizeGripEnabled(true);
    d.show();
    d.resize(900, 600);
    const auto* grip = d.findChild<QSizeGrip*>();
    QVERIFY(grip);
    QCOMPARE(grip->geometry().bottomRight(), d.rect().bottomRight());
}

void TestDialogEvents::panesFillTheUpperArea()
{
    DialogProbe d;
    d.resize(1005, 805 + d.ui.wSettings->height());
    d.show();
    QCOMPARE(d.ui.gVUp->parentWidget(), static_cast<QWidget*>(d.m_grid));
    QCOMPARE(d.ui.gVUp->geometry(), QRect(0, 0, 500, 400));
    QCOMPARE(d.ui.PlotUp->geometry(), QRect(505, 0, 500, 400));
    QCOMPARE(d.ui.gVDown->geometry(), QRect(0, 405, 500, 400));
    QCOMPARE(d.ui.PlotDown->geometry(), QRect(505, 405, 500, 400));
}

QTEST_MAIN(TestDialogEvents)
#include "tst_dialog_events.moc"
