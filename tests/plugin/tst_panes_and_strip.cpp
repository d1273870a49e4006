#include "tests/plugin/HostedDialog.h"
#include "tests/support/ModalWatch.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCursor>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <algorithm>

namespace {

const char* const PaneNames[] = {"gVUp", "PlotUp", "gVDown", "PlotDown"};

/// Thickness of a gap in pixels.
constexpr int Gap = 5;

/// The grid of the dialog and its three handles, which a host knows by their classes alone.
struct PaneGrid
{
    explicit PaneGrid(HostedDialog& hosted)
        : host(hosted)
        , frame(hosted.find("gVUp")->parentWidget())
    {
        for (QWidget* child : frame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            const QByteArray name = child->metaObject()->className();
            if (name == "CCrossSplitterHandle")
                cross = child;
            else if (name == "CSplitterHandle")
                (child->height() > child->width() ? vertical : horizontal) = child;
        }
    }

    /// Where the two gaps begin.
    QPoint gaps() const { return {vertical->x(), horizontal->y()}; }

    QPoint equalGaps() const { return {(frame->width() - Gap) / 2, (frame->height() - Gap) / 2}; }

    /// Empty when panes and handles lie around gaps that begin at that place.
    QString difference(const QPoint& place) const
    {
        const int right = 2 * equalGaps().x() + Gap;
        const int bottom = 2 * equalGaps().y() + Gap;
        const QPoint beyond = place + QPoint(Gap, Gap);
        const QRect panes[] = {{0, 0, place.x(), place.y()},
                               {beyond.x(), 0, right - beyond.x(), place.y()},
                               {0, beyond.y(), place.x(), bottom - beyond.y()},
                               {beyond.x(), beyond.y(), right - beyond.x(), bottom - beyond.y()}};
        for (int i = 0; i < 4; ++i) {
            if (host.find(PaneNames[i])->geometry() != panes[i])
                return wrong(PaneNames[i], host.find(PaneNames[i])->geometry(), panes[i]);
        }
        const QRect bars[] = {{place.x(), 0, Gap, frame->height()}, {0, place.y(), frame->width(), Gap}};
        if (vertical->geometry() != bars[0])
            return wrong("vertical bar", vertical->geometry(), bars[0]);
        if (horizontal->geometry() != bars[1])
            return wrong("horizontal bar", horizontal->geometry(), bars[1]);
        const QRect square(place, QSize(Gap, Gap));
        if (cross->geometry() != square)
            return wrong("cross", cross->geometry(), square);
        return {};
    }

    static QString wrong(const char* what, const QRect& actual, const QRect& expected)
    {
        const auto text = [](const QRect& r) {
            return QString("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
        };
        return QString("%1: %2, expected %3").arg(what, text(actual), text(expected));
    }

    HostedDialog& host;
    QWidget* frame;
    QWidget* vertical = nullptr;
    QWidget* horizontal = nullptr;
    QWidget* cross = nullptr;
};

/// The mouse of the operator over the dialog, in the dialog's pixels.
class Mouse
{
public:
    explicit Mouse(HostedDialog& host)
        : m_window(host.dialog().windowHandle())
    {
        // The pointer comes into the window, without which no widget hears of entering. Two places, since it
        // may be on one of them already.
        for (const int place : {1, 2}) {
            QCursor::setPos(m_window->mapToGlobal(QPoint(place, place)));
            QCoreApplication::processEvents();
        }
    }

    void moveTo(const QPoint& place)
    {
        m_place = place;
        QTest::mouseMove(m_window, place);
    }
    void press() { QTest::mousePress(m_window, Qt::LeftButton, {}, m_place); }
    void release() { QTest::mouseRelease(m_window, Qt::LeftButton, {}, m_place); }

    /// Takes a handle, far from the crossing where it is a bar, and drags it in some steps.
    void drag(const QWidget* handle, const QPoint& way, int steps = 4)
    {
        const QPoint own(std::min(handle->width() / 2, 40), std::min(handle->height() / 2, 40));
        const QPoint from = handle->mapTo(handle->window(), own);
        moveTo(from);
        press();
        for (int i = 1; i <= steps; ++i)
            moveTo(from + way * i / steps);
        release();
    }

private:
    QWindow* m_window;
    QPoint m_place;
};

} // namespace

/// Gaps, panes and controls of the built plug-in's dialog under the operator's mouse.
class TestPanesAndStrip : public QObject
{
    Q_OBJECT

private slots:
    void handlesMoveTheirPanes_data();
    void handlesMoveTheirPanes();
    void handlesStopBeforeTheEdges_data();
    void handlesStopBeforeTheEdges();
    void resizeMakesThePanesEqualAgain();
    void nothingMovesWithoutAPress();
    void viewAndPlotStayUsableAfterADrag();
    void everyControlCanBeClicked_data();
    void everyControlCanBeClicked();
};

void TestPanesAndStrip::handlesMoveTheirPanes_data()
{
    QTest::addColumn<QString>("which");
    QTest::addColumn<QPoint>("way");
    QTest::addColumn<QPoint>("moved");
    QTest::newRow("vertical bar to the right") << "vertical" << QPoint(60, 25) << QPoint(60, 0);
    QTest::newRow("vertical bar to the left") << "vertical" << QPoint(-200, 0) << QPoint(-200, 0);
    QTest::newRow("horizontal bar down") << "horizontal" << QPoint(30, 90) << QPoint(0, 90);
    QTest::newRow("horizontal bar up") << "horizontal" << QPoint(0, -75) << QPoint(0, -75);
    QTest::newRow("cross both ways") << "cross" << QPoint(-120, 64) << QPoint(-120, 64);
}

void TestPanesAndStrip::handlesMoveTheirPanes()
{
    QFETCH(QString, which);
    QFETCH(QPoint, way);
    QFETCH(QPoint, moved);
    HostedDialog host;
    const PaneGrid grid(host);
    QCOMPARE(grid.difference(grid.equalGaps()), QString());
    const QWidget* handle = which == "vertical" ? grid.vertical
                            : which == "cross"  ? grid.cross
                                                : grid.horizontal;
    const QPoint before = grid.gaps();
    Mouse(host).drag(handle, way);
    QCOMPARE(grid.difference(before + moved), QString());
}

void TestPanesAndStrip::handlesStopBeforeTheEdges_data()
{
    QTest::addColumn<QString>("which");
    QTest::addColumn<QPoint>("target"); ///< of the gap; -1 counts from the far edge
    QTest::addColumn<bool>("accepted");
    QTest::newRow("vertical bar to x 2") << "vertical" << QPoint(2, 0) << true;
    QTest::newRow("vertical bar to x 1") << "vertical" << QPoint(1, 0) << false;
    QTest::newRow("vertical bar to 7 before the right edge") << "vertical" << QPoint(-7, 0) << true;
    QTest::newRow("vertical bar to 6 before the right edge") << "vertical" << QPoint(-6, 0) << false;
    QTest::newRow("horizontal bar to y 2") << "horizontal" << QPoint(0, 2) << true;
    QTest::newRow("horizontal bar to y 1") << "horizontal" << QPoint(0, 1) << false;
    QTest::newRow("horizontal bar to 7 before the lower edge") << "horizontal" << QPoint(0, -7) << true;
    QTest::newRow("horizontal bar to 6 before the lower edge") << "horizontal" << QPoint(0, -6) << false;
}

void TestPanesAndStrip::handlesStopBeforeTheEdges()
{
    QFETCH(QString, which);
    QFETCH(QPoint, target);
    QFETCH(bool, accepted);
    HostedDialog host;
    const PaneGrid grid(host);
    const QPoint before = grid.gaps();
    QPoint after = before;
    if (which == "vertical")
        after.setX(target.x() < 0 ? grid.frame->width() + target.x() : target.x());
    else
        after.setY(target.y() < 0 ? grid.frame->height() + target.y() : target.y());
    Mouse(host).drag(which == "vertical" ? grid.vertical : grid.horizontal, after - before, 1);
    QCOMPARE(grid.gaps(), accepted ? after : before);
    // The mouse is free again wherever it was released.
    Mouse(host).moveTo(QPoint(300, 300));
    QCOMPARE(grid.gaps(), accepted ? after : before);
}

void TestPanesAndStrip::resizeMakesThePanesEqualAgain()
{
    HostedDialog host;
    const PaneGrid grid(host);
    Mouse(host).drag(grid.cross, QPoint(70, -40));
    QVERIFY(grid.gaps() != grid.equalGaps());
    host.dialog().resize(host.dialog().size() + QSize(1, 0));
    QCOMPARE(grid.difference(grid.equalGaps()), QString());
    QCOMPARE(grid.frame->width(), host.dialog().width());

    Mouse(host).drag(grid.horizontal, QPoint(0, 50));
    QCOMPARE(grid.gaps(), grid.equalGaps() + QPoint(0, 50));
    host.dialog().resize(900, 500);
    QCOMPARE(grid.difference(grid.equalGaps()), QString());
}

void TestPanesAndStrip::nothingMovesWithoutAPress()
{
    HostedDialog host;
    const PaneGrid grid(host);
    Mouse mouse(host);
    const QPoint middle = grid.cross->mapTo(&host.dialog(), QPoint(2, 2));
    mouse.moveTo(middle);
    mouse.moveTo(middle + QPoint(1, 1));
    mouse.moveTo(middle + QPoint(50, 50));
    QCOMPARE(grid.gaps(), grid.equalGaps());
}

// The panes get ordinary resize events: the views' pictures fit into their new sizes.
void TestPanesAndStrip::viewAndPlotStayUsableAfterADrag()
{
    HostedDialog host;
    host.show(TestFrame(400, 100, 12, [](int x, int y) { return 900U + unsigned(x * y) / 40; }));
    const PaneGrid grid(host);
    QWidget* upper = host.find("gVUp");
    const double before = ViewerTap::scaleOf(upper);
    Mouse(host).drag(grid.vertical, QPoint(-250, 0));
    QCoreApplication::processEvents();
    const double after = ViewerTap::scaleOf(upper);
    QVERIFY2(after < before * 0.7, qPrintable(QString("%1, before %2").arg(after).arg(before)));
    QCOMPARE(ViewerTap::visibleIn(upper).width(), 400);
}

void TestPanesAndStrip::everyControlCanBeClicked_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QByteArray>("name");
    for (const QSize& size : {QSize(1174, 727), QSize(746, 125)}) {
        for (const char* name : {"lETitle", "lECamera", "pBSave", "chBNormFFC", "lENormFFC", "pBUpdate",
                                 "chBShowY", "chBHighlights", "cBoxPrecision"}) {
            QTest::addRow("%s at %d x %d", name, size.width(), size.height()) << size << QByteArray(name);
        }
    }
}

void TestPanesAndStrip::everyControlCanBeClicked()
{
    QFETCH(QSize, size);
    QFETCH(QByteArray, name);
    HostedDialog host;
    // With an image there is a viewer, which takes the processor of "Highlights" over.
    host.show(TestFrame::even(8, 6, 8, 100));
    host.dialog().resize(size);
    QCoreApplication::processEvents();
    QCOMPARE(host.dialog().size(), size);

    QWidget* control = host.find(name);
    QVERIFY(control->isVisible() && control->isEnabled());
    const QRect place(control->mapTo(&host.dialog(), QPoint(0, 0)), control->size());
    QVERIFY2(host.dialog().rect().contains(place),
             qPrintable(PaneGrid::wrong(name, place, host.dialog().rect())));
    QVERIFY2(place.width() >= 16 && place.height() >= 12, qPrintable(PaneGrid::wrong(name, place, {})));
    if (auto* field = qobject_cast<QLineEdit*>(control)) {
        field->clear();
        host.click(name);
        QVERIFY(field->hasFocus());
        for (const char key : {'0', '.', '2', '5'})
            QTest::keyClick(host.dialog().windowHandle(), key);
        QCOMPARE(field->text(), QString("0.25"));
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        QSignalSpy clicked(button, SIGNAL(clicked()));
        const bool before = button->isChecked();
        // The save button opens a box that asks for a title.
        ModalWatch watch;
        host.click(name);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(button->isChecked(), button->isCheckable() != before);
    } else {
        auto* box = qobject_cast<QComboBox*>(control);
        QVERIFY(box);
        host.click(name);
        QVERIFY(QApplication::activePopupWidget());
        QTest::keyClick(box->view(), Qt::Key_Down);
        QTest::keyClick(box->view(), Qt::Key_Return);
        QCOMPARE(box->currentIndex(), 1);
    }
}

QTEST_MAIN(TestPanesAndStrip)
#include "tst_panes_and_strip.moc"
