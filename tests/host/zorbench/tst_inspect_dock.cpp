#include "host/zorbench/InspectDock.h"
#include "image/unpack/NativeCodes.h"
#include "tests/host/zorbench/Bench.h"
#include "tests/host/zorbench/MadeFrame.h"
#include "tests/host/zorbench/ViewHand.h"

#include "display/DisplayAdapter.h"
#include "display/DisplayEvents.h"
#include "display/DisplayView.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QTableWidget>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <map>

/// The rectangle that is drawn on the frame, and its figures.
class TestInspectDock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void figuresAreThoseOfTheNativeCodes_data();
    void figuresAreThoseOfTheNativeCodes();
    void theRectangleIsClippedToTheFrame_data();
    void theRectangleIsClippedToTheFrame();
    void figuresFollowTheMouse();
    void figuresFollowTheFrame();
    void aFrameThatTheRectangleIsNotOnHasNoFigures();
    void aPlainDragMovesThePicture();
    void theRectangleGoes_data();
    void theRectangleGoes();
    void aLostReleaseEndsTheDrag();
    void aReleaseWithoutItsPressDrawsNothing();
    void figuresCanBeCopied();
    void theTabKeyLeavesTheFigures();
};

namespace {

constexpr const char* Overlay = "@inspect";

zor::InspectDock& dockOf(Bench& bench)
{
    return *bench.window().findChild<zor::InspectDock*>();
}

QTableWidget& tableOf(Bench& bench)
{
    return *dockOf(bench).findChild<QTableWidget*>();
}

QString regionText(Bench& bench)
{
    auto* label = dockOf(bench).findChild<QLabel*>();
    // As an assistive client reads it.
    return QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name);
}

/// The columns of the table as lines of a letter and its figures.
QStringList linesOf(Bench& bench)
{
    const QTableWidget& table = tableOf(bench);
    QStringList lines;
    for (int column = 0; column < table.columnCount(); ++column) {
        QStringList fields{table.horizontalHeaderItem(column)->text()};
        for (int row = 0; row < table.rowCount(); ++row)
            fields.append(table.item(row, column)->text());
        lines.append(fields.join(' '));
    }
    return lines;
}

QString lineOf(char letter, const std::vector<unsigned>& codes)
{
    double sum = 0.0;
    double squares = 0.0;
    for (const unsigned code : codes) {
        sum += code;
        squares += double(code) * code;
    }
    const auto count = double(codes.size());
    const double mean = sum / count;
    return QString("%1 %2 %3 %4 %5 %6")
        .arg(QChar(letter))
        .arg(mean, 0, 'f', 2)
        .arg(*std::min_element(codes.begin(), codes.end()))
        .arg(*std::max_element(codes.begin(), codes.end()))
        .arg(std::sqrt(squares / count - mean * mean), 0, 'f', 2)
        .arg(codes.size());
}

/// While it lives no widget hears of a button that comes up.
class LostReleases : public QObject
{
public:
    LostReleases() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        return object->isWidgetType() && event->type() == QEvent::MouseButtonRelease;
    }
};

} // namespace

void TestInspectDock::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestInspectDock::figuresAreThoseOfTheNativeCodes_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QByteArray>("cell");
    QTest::newRow("mono of 8 bits") << QByteArray("Mono8") << QByteArray("Y");
    QTest::newRow("packed mono of 12 bits") << QByteArray("Mono12p") << QByteArray("Y");
    QTest::newRow("colour, channel by channel") << QByteArray("RGB8") << QByteArray("RGB");
    QTest::newRow("a colour filter, whose greens are one channel") << QByteArray("BayerRG10") << QByteArray();
}

void TestInspectDock::figuresAreThoseOfTheNativeCodes()
{
    QFETCH(QByteArray, format);
    QFETCH(QByteArray, cell);
    Bench bench;
    const auto frame = madeFrame(format.constData(), 20, 12);
    bench.view().setFrame(frame);
    ViewHand hand(bench);
    QVERIFY(dockOf(bench).isHidden());
    hand.drag({3, 2}, {12, 8}, Qt::ShiftModifier);
    QVERIFY(!dockOf(bench).isHidden());
    QCOMPARE(hand.overlay(Overlay), QRect(3, 2, 10, 7));
    QCOMPARE(regionText(bench), QString("10 x 7 pixels at 3, 2"));

    const QByteArray letters = cell.isEmpty() ? QByteArray("RGB") : cell;
    std::map<char, std::vector<unsigned>> codes;
    for (unsigned y = 2; y <= 8; ++y) {
        for (unsigned x = 3; x <= 12; ++x) {
            const zor::NativeCodes native = zor::nativeCodes(frame->record(), x, y);
            for (unsigned i = 0; i < native.count; ++i) {
                const char site = y % 2 == 0 ? "RG"[x % 2] : "GB"[x % 2];
                codes[cell.isEmpty() ? site : cell[int(i)]].push_back(native.codes[i]);
            }
        }
    }
    QStringList expected;
    for (const char letter : letters)
        expected.append(lineOf(letter, codes[letter]));
    QCOMPARE(linesOf(bench), expected);
}

void TestInspectDock::theRectangleIsClippedToTheFrame_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QRect>("rect");
    QTest::newRow("from within to the right and below")
        << QPoint(5, 4) << QPoint(24, 14) << QRect(5, 4, 15, 8);
    QTest::newRow("from within to the left and above") << QPoint(5, 4) << QPoint(-4, -3) << QRect(0, 0, 6, 5);
    QTest::newRow("upwards") << QPoint(9, 9) << QPoint(4, 6) << QRect(4, 6, 6, 4);
}

void TestInspectDock::theRectangleIsClippedToTheFrame()
{
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    QFETCH(QRect, rect);
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 20, 12));
    bench.view().adapter().viewScale(20.0);
    ViewHand hand(bench);
    hand.drag(from, to, Qt::ShiftModifier);
    QCOMPARE(hand.overlay(Overlay), rect);
    QCOMPARE(tableOf(bench).item(4, 0)->text().toInt(), rect.width() * rect.height());
}

void TestInspectDock::figuresFollowTheMouse()
{
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 20, 12));
    ViewHand hand(bench);
    hand.press({2, 2}, Qt::ShiftModifier);
    QVERIFY(hand.overlay(Overlay).isEmpty());
    hand.moveTo({5, 6});
    QCOMPARE(hand.overlay(Overlay), QRect(2, 2, 4, 5));
    // The view does not change its size under the mouse.
    QVERIFY(dockOf(bench).isHidden());
    hand.moveTo({3, 3});
    QCOMPARE(hand.overlay(Overlay), QRect(2, 2, 2, 2));
    hand.release({3, 3}, Qt::ShiftModifier);
    QVERIFY(!dockOf(bench).isHidden());
    hand.moveTo({9, 9});
    QCOMPARE(hand.overlay(Overlay), QRect(2, 2, 2, 2));
}

void TestInspectDock::figuresFollowTheFrame()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(10, 10)));
    ViewHand(bench).drag({1, 1}, {2, 2}, Qt::ShiftModifier);
    QCOMPARE(linesOf(bench), QStringList("Y 16.50 11 22 5.02 4"));
    bench.open(bench.write("other.pgm", "P2 2 2 4095 1 2 3 4000"));
    QCOMPARE(regionText(bench), QString("1 x 1 pixels at 1, 1"));
    QCOMPARE(linesOf(bench), QStringList("Y 4000.00 4000 4000 0.00 1"));
    bench.open(bench.path("flat.pgm"));
    QCOMPARE(linesOf(bench), QStringList("Y 16.50 11 22 5.02 4"));
}

void TestInspectDock::aFrameThatTheRectangleIsNotOnHasNoFigures()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(10, 10)));
    ViewHand hand(bench);
    hand.drag({5, 5}, {7, 7}, Qt::ShiftModifier);
    bench.open(bench.write("small.pgm", countedPgm(3, 3)));
    QCOMPARE(regionText(bench), QString("The rectangle is not on this frame."));
    QCOMPARE(linesOf(bench), QStringList());
    QVERIFY(hand.overlay(Overlay).isEmpty());
}

void TestInspectDock::aPlainDragMovesThePicture()
{
    Bench bench;
    bench.window().resize(1024, 768);
    dockOf(bench).show();
    bench.view().setFrame(madeFrame("Mono8", 200, 120));
    bench.view().adapter().viewScale(20.0);
    const auto seen = [&bench] {
        QRect rect;
        bench.view().adapter().viewImageRect(&rect);
        return rect;
    };
    const QRect before = seen();
    ViewHand hand(bench);
    hand.drag({100, 60}, {105, 63});
    QVERIFY(seen() != before);
    QVERIFY(hand.overlay(Overlay).isEmpty());
    QCOMPARE(linesOf(bench), QStringList());
    // A drag with Shift leaves the picture where it is.
    const QRect moved = seen();
    hand.drag({100, 60}, {105, 63}, Qt::ShiftModifier);
    QCOMPARE(seen(), moved);
    QCOMPARE(hand.overlay(Overlay), QRect(100, 60, 6, 4));
}

void TestInspectDock::theRectangleGoes_data()
{
    QTest::addColumn<QByteArray>("by");
    QTest::newRow("by a click with Shift") << QByteArray("click");
    QTest::newRow("by the escape key") << QByteArray("key");
    QTest::newRow("by the menu of the figures") << QByteArray("menu");
    QTest::newRow("with the dock") << QByteArray("dock");
}

void TestInspectDock::theRectangleGoes()
{
    QFETCH(QByteArray, by);
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 20, 12));
    ViewHand hand(bench);
    hand.drag({3, 2}, {12, 8}, Qt::ShiftModifier);
    if (by == "click") {
        hand.press({4, 4}, Qt::ShiftModifier);
        hand.release({4, 4}, Qt::ShiftModifier);
    } else if (by == "key") {
        bench.window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&bench.window()));
        bench.view().view().setFocus();
        QTest::keyClick(&bench.view().view(), Qt::Key_Escape);
    } else if (by == "menu") {
        QAction* action = tableOf(bench).actions().last();
        QCOMPARE(action->text(), QString("Clear"));
        action->trigger();
        QVERIFY(!action->isEnabled());
    } else {
        bench.action("Inspect")->trigger();
        QVERIFY(dockOf(bench).isHidden());
    }
    QVERIFY(hand.overlay(Overlay).isEmpty());
    QCOMPARE(linesOf(bench), QStringList());
    QCOMPARE(regionText(bench), QString("Hold Shift and drag over the frame."));
    // It does not come back with the next frame.
    bench.view().setFrame(madeFrame("Mono8", 20, 12));
    QVERIFY(hand.overlay(Overlay).isEmpty());
}

void TestInspectDock::aLostReleaseEndsTheDrag()
{
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 20, 12));
    ViewHand hand(bench);
    hand.press({2, 2}, Qt::ShiftModifier);
    hand.moveTo({5, 6});
    LostReleases lost;
    hand.release({5, 6}, Qt::ShiftModifier);
    hand.moveTo({9, 9});
    QCOMPARE(hand.overlay(Overlay), QRect(2, 2, 4, 5));
}

// A press can be lost to a menu as well.
void TestInspectDock::aReleaseWithoutItsPressDrawsNothing()
{
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 20, 12));
    ViewHand hand(bench);
    hand.drag({2, 2}, {5, 6}, Qt::ShiftModifier);
    emit bench.view().view().sigMouseMoved({9, 9}, DisplayEvMouseUp);
    QCOMPARE(hand.overlay(Overlay), QRect(2, 2, 4, 5));
}

void TestInspectDock::figuresCanBeCopied()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(10, 10)));
    ViewHand(bench).drag({1, 1}, {2, 2}, Qt::ShiftModifier);
    QTableWidget& table = tableOf(bench);
    table.clearSelection();
    QCOMPARE(table.contextMenuPolicy(), Qt::ActionsContextMenu);
    QAction* copy = table.actions().first();
    QCOMPARE(copy->text(), QString("Copy"));
    copy->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(),
             QString("\tY\nMean\t16.50\nMinimum\t11\nMaximum\t22\nDeviation\t5.02\nCount\t4"));
    table.setRangeSelected({1, 0, 2, 0}, true);
    copy->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("11\n22"));
}

// Or whoever works by keys alone could not go on.
void TestInspectDock::theTabKeyLeavesTheFigures()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(10, 10)));
    ViewHand(bench).drag({1, 1}, {2, 2}, Qt::ShiftModifier);
    tableOf(bench).setCurrentCell(0, 0);
    QTest::keyClick(&tableOf(bench), Qt::Key_Tab);
    QCOMPARE(tableOf(bench).currentRow(), 0);
}

QTEST_MAIN(TestInspectDock)
#include "tst_inspect_dock.moc"
