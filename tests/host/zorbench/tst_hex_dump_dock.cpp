#include "host/zorbench/HexDumpDock.h"
#include "image/unpack/NativeCodes.h"
#include "tests/host/zorbench/Bench.h"
#include "tests/host/zorbench/MadeFrame.h"
#include "tests/host/zorbench/ViewHand.h"

#include "display/DisplayAdapter.h"
#include "display/DisplayView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QIdentityProxyModel>
#include <QTableView>
#include <QtTest>

/// The codes of a piece of the frame in hexadecimal, and its mark on the frame.
class TestHexDumpDock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theMenuShowsAndHidesTheDump();
    void theMenuMovesTheDump();
    void cellsHoldTheNativeCodes_data();
    void cellsHoldTheNativeCodes();
    void theDumpStaysOnTheFrame_data();
    void theDumpStaysOnTheFrame();
    void theDumpFollowsTheFrame();
    void aSelectionStaysWhileTheShapeDoes();
    void cellsAreMeasuredWhenTheirShapeChanges();
    void theLastFrameOfManyIsShown();
    void theDumpFollowsItsOverlay();
    void theDumpOfALargeOverlayIsLimited();
    void theDumpIsKeptForTheNextRun();
    void codesCanBeCopied();
};

namespace {

constexpr const char* Overlay = "@dump";

zor::HexDumpDock& dockOf(Bench& bench)
{
    return *bench.window().findChild<zor::HexDumpDock*>();
}

const QAbstractItemModel& cellsOf(Bench& bench)
{
    return *dockOf(bench).findChild<QTableView*>()->model();
}

QString cell(Bench& bench, int column, int row)
{
    return cellsOf(bench).index(row, column).data().toString();
}

/// Where the table begins and how many cells it has, by its headers.
QRect dumped(Bench& bench)
{
    const QAbstractItemModel& cells = cellsOf(bench);
    return {cells.headerData(0, Qt::Horizontal).toInt(), cells.headerData(0, Qt::Vertical).toInt(),
            cells.columnCount(), cells.rowCount()};
}

/// Passes a model on and counts how often one of its cells is measured.
class MeasureCount : public QIdentityProxyModel
{
public:
    QVariant data(const QModelIndex& index, int role) const override
    {
        count += role == Qt::SizeHintRole ? 1 : 0;
        return QIdentityProxyModel::data(index, role);
    }

    mutable int count = 0;
};

std::shared_ptr<const zor::Frame> readFrame(const QString& file)
{
    return std::make_shared<const zor::Frame>(zor::readFrame(file.toStdString(), {}));
}

void showDump(Bench& bench)
{
    if (dockOf(bench).isHidden())
        bench.action("Hex pixel dump")->trigger();
    QCoreApplication::processEvents();
}

} // namespace

void TestHexDumpDock::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestHexDumpDock::theMenuShowsAndHidesTheDump()
{
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 200, 100));
    ViewHand hand(bench);
    QVERIFY(dockOf(bench).isHidden());
    hand.chooseInMenu({100, 50}, "Show HexPixelDump");
    QVERIFY(!hand.entries.contains("Set HexPixelDump Here"));
    QVERIFY(!dockOf(bench).isHidden());
    // In the middle of what is seen.
    QCOMPARE(hand.overlay(Overlay).size(), QSize(16, 8));
    QVERIFY(hand.overlay(Overlay).contains(QRect(0, 0, 200, 100).center()));
    QCOMPARE(dumped(bench), hand.overlay(Overlay));
    hand.chooseInMenu({100, 50}, "Hide HexPixelDump");
    QVERIFY(dockOf(bench).isHidden());
    QVERIFY(hand.overlay(Overlay).isEmpty());
    // Closing the dock is the same.
    showDump(bench);
    QVERIFY(!hand.overlay(Overlay).isEmpty());
    dockOf(bench).close();
    QVERIFY(hand.overlay(Overlay).isEmpty());
    hand.chooseInMenu({100, 50}, {});
    QVERIFY(hand.entries.contains("Show HexPixelDump"));
}

void TestHexDumpDock::theMenuMovesTheDump()
{
    Bench bench;
    const auto frame = madeFrame("Mono12p", 200, 100);
    bench.view().setFrame(frame);
    showDump(bench);
    ViewHand hand(bench);
    hand.chooseInMenu({30, 20}, "Set HexPixelDump Here");
    QVERIFY(hand.entries.contains("Hide HexPixelDump"));
    QCOMPARE(hand.overlay(Overlay), QRect(hand.corner, QSize(16, 8)));
    QCOMPARE(dumped(bench), hand.overlay(Overlay));
    const zor::NativeCodes native =
        zor::nativeCodes(frame->record(), unsigned(hand.corner.x()) + 3, unsigned(hand.corner.y()) + 2);
    QCOMPARE(cell(bench, 3, 2), QString("%1").arg(native.codes[0], 3, 16, QChar('0')).toUpper());
}

void TestHexDumpDock::cellsHoldTheNativeCodes_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("digits");
    QTest::newRow("mono of 8 bits") << QByteArray("Mono8") << 2;
    QTest::newRow("mono of 10 bits") << QByteArray("Mono10") << 3;
    QTest::newRow("packed mono of 12 bits") << QByteArray("Mono12p") << 3;
    QTest::newRow("mono of 16 bits") << QByteArray("Mono16") << 4;
    QTest::newRow("a colour filter") << QByteArray("BayerGB12Packed") << 3;
    QTest::newRow("colour") << QByteArray("RGB8") << 2;
    QTest::newRow("colour with a fourth channel") << QByteArray("BGRa8") << 2;
    QTest::newRow("luma and colour differences") << QByteArray("YUV422_8") << 2;
}

void TestHexDumpDock::cellsHoldTheNativeCodes()
{
    QFETCH(QByteArray, format);
    QFETCH(int, digits);
    Bench bench;
    const auto frame = madeFrame(format.constData(), 15, 7);
    bench.view().setFrame(frame);
    showDump(bench);
    QCOMPARE(dumped(bench), QRect(0, 0, 15, 7));
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 15; ++x) {
            const zor::NativeCodes native = zor::nativeCodes(frame->record(), unsigned(x), unsigned(y));
            const QStringList texts = cell(bench, x, y).split(' ');
            QCOMPARE(texts.size(), int(native.count));
            for (int i = 0; i < texts.size(); ++i) {
                QCOMPARE(texts[i].size(), digits);
                QCOMPARE(texts[i], texts[i].toUpper());
                QCOMPARE(texts[i].toUInt(nullptr, 16), unsigned(native.codes[std::size_t(i)]));
            }
        }
    }
}

void TestHexDumpDock::theDumpStaysOnTheFrame_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QRect>("rect");
    QTest::newRow("at the lower right corner") << QPoint(39, 19) << QRect(24, 12, 16, 8);
    QTest::newRow("at the upper left corner") << QPoint(0, 0) << QRect(0, 0, 16, 8);
    QTest::newRow("near the right edge") << QPoint(30, 5) << QRect(24, 5, 16, 8);
}

void TestHexDumpDock::theDumpStaysOnTheFrame()
{
    QFETCH(QPoint, place);
    QFETCH(QRect, rect);
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 40, 20));
    showDump(bench);
    emit bench.view().view().sigHexDumpHere(place);
    QCOMPARE(ViewHand(bench).overlay(Overlay), rect);
    QCOMPARE(dumped(bench), rect);
}

void TestHexDumpDock::theDumpFollowsTheFrame()
{
    Bench bench;
    // Without a frame there is nothing to dump yet.
    showDump(bench);
    QCOMPARE(cellsOf(bench).rowCount(), 0);
    bench.open(bench.write("flat.pgm", countedPgm(10, 10)));
    QCOMPARE(dumped(bench), QRect(0, 0, 10, 10 - 2).translated(0, 1));
    QCOMPARE(cell(bench, 1, 0), QString("0B"));
    bench.open(bench.write("small.pgm", "P2 2 2 4095 1 2 3 4000"));
    QTRY_COMPARE(dumped(bench), QRect(0, 0, 2, 2));
    QCOMPARE(cell(bench, 1, 1), QString("FA0"));
    QCOMPARE(ViewHand(bench).overlay(Overlay), QRect(0, 0, 2, 2));
    // Also of the same size.
    bench.open(bench.write("next.pgm", "P2 2 2 4095 1 2 3 15"));
    QTRY_COMPARE(cell(bench, 1, 1), QString("00F"));
}

void TestHexDumpDock::aSelectionStaysWhileTheShapeDoes()
{
    Bench bench;
    showDump(bench);
    auto* table = dockOf(bench).findChild<QTableView*>();
    QSignalSpy begun(table->model(), &QAbstractItemModel::modelAboutToBeReset);
    QSignalSpy reset(table->model(), &QAbstractItemModel::modelReset);
    QSignalSpy changed(table->model(), &QAbstractItemModel::dataChanged);
    bench.open(bench.write("flat.pgm", countedPgm(10, 10)));
    QCOMPARE(reset.count(), 1);
    QCOMPARE(changed.count(), 0);
    table->selectAll();
    bench.open(bench.path("flat.pgm"));
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(table->selectionModel()->selectedIndexes().size(), 80);
    QCOMPARE(reset.count(), 1);
    bench.open(bench.write("small.pgm", countedPgm(3, 2)));
    QTRY_COMPARE(reset.count(), 2);
    QCOMPARE(table->selectionModel()->selectedIndexes().size(), 0);
    QCOMPARE(begun.count(), 2);
    // The tab key goes on to the next control.
    table->setCurrentIndex(table->model()->index(0, 0));
    QTest::keyClick(table, Qt::Key_Tab);
    QCOMPARE(table->currentIndex(), table->model()->index(0, 0));
}

// Measuring takes much longer than drawing, and a stream brings hundreds of frames in a second.
void TestHexDumpDock::cellsAreMeasuredWhenTheirShapeChanges()
{
    Bench bench;
    showDump(bench);
    auto* table = dockOf(bench).findChild<QTableView*>();
    MeasureCount measured;
    measured.setSourceModel(table->model());
    table->setModel(&measured);
    bench.open(bench.write("flat.pgm", countedPgm(40, 20)));
    QCOMPARE(measured.columnCount(), 16);
    const auto isWholeTextSeen = [table, &measured] {
        const QModelIndex last = measured.index(0, measured.columnCount() - 1);
        return table->columnWidth(last.column()) >=
               table->fontMetrics().horizontalAdvance(last.data().toString());
    };
    QVERIFY(isWholeTextSeen());
    // Nobody else gives them another size.
    QCOMPARE(table->horizontalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
    QCOMPARE(table->verticalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
    const int narrow = table->columnWidth(0);
    measured.count = 0;
    QSignalSpy changed(&measured, &QAbstractItemModel::dataChanged);
    bench.open(bench.path("flat.pgm"));
    QTRY_COMPARE(changed.count(), 1);
    // One is as good as all.
    QVERIFY2(measured.count <= 1, qPrintable(QString::number(measured.count)));
    // More digits need more room.
    bench.view().setFrame(madeFrame("RGB16", 40, 20));
    QTRY_VERIFY(table->columnWidth(0) > narrow);
    QVERIFY(isWholeTextSeen());
    // So do columns with long numbers.
    bench.view().setFrame(madeFrame("Mono8", 20000, 20));
    QTRY_COMPARE(table->columnWidth(0), narrow);
    emit bench.view().view().sigHexDumpHere({15000, 0});
    QVERIFY(table->columnWidth(0) > narrow);
    table->setModel(measured.sourceModel());
}

void TestHexDumpDock::theLastFrameOfManyIsShown()
{
    Bench bench;
    showDump(bench);
    QSignalSpy changed(&cellsOf(bench), &QAbstractItemModel::dataChanged);
    for (const int code : {1, 2, 3, 4})
        bench.view().setFrame(readFrame(bench.write("next.pgm", "P2 1 1 255 " + QByteArray::number(code))));
    QCOMPARE(cell(bench, 0, 0), QString("01"));
    QCOMPARE(changed.count(), 0);
    QTRY_COMPARE(cell(bench, 0, 0), QString("04"));
    QCOMPARE(changed.count(), 1);
}

void TestHexDumpDock::theDumpFollowsItsOverlay()
{
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 300, 200));
    showDump(bench);
    emit bench.view().view().sigHexDumpHere({20, 10});
    ViewHand hand(bench);
    // By its upper border.
    hand.drag({28, 10}, {63, 52});
    QCOMPARE(hand.overlay(Overlay), QRect(55, 52, 16, 8));
    QCOMPARE(dumped(bench), hand.overlay(Overlay));
    // A new frame leaves it where it was dragged.
    const QRect dragged = hand.overlay(Overlay);
    bench.view().setFrame(madeFrame("Mono8", 300, 200));
    QCOMPARE(hand.overlay(Overlay), dragged);
    QCOMPARE(dumped(bench), dragged);
}

void TestHexDumpDock::theDumpOfALargeOverlayIsLimited()
{
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 200, 150));
    showDump(bench);
    DisplayAdapter& adapter = bench.view().adapter();
    adapter.setDumpRect(10, 20, 180, 65, "img");
    adapter.showDumpOverlay(true);
    ViewHand(bench).moveTo({3, 3});
    QCOMPARE(dumped(bench), QRect(10, 20, 64, 64));
}

void TestHexDumpDock::theDumpIsKeptForTheNextRun()
{
    Bench bench;
    bench.view().setFrame(madeFrame("Mono8", 40, 20));
    showDump(bench);
    bench.restart();
    QVERIFY(!dockOf(bench).isHidden());
    bench.view().setFrame(madeFrame("Mono8", 40, 20));
    QCOMPARE(ViewHand(bench).overlay(Overlay).size(), QSize(16, 8));
}

void TestHexDumpDock::codesCanBeCopied()
{
    Bench bench;
    bench.open(bench.write("small.pgm", "P2 2 2 255 1 2 3 250"));
    showDump(bench);
    auto* table = dockOf(bench).findChild<QTableView*>();
    table->selectAll();
    table->actions().first()->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("01\t02\n03\tFA"));
    table->clearSelection();
    // In whatever order they were chosen.
    for (const QPoint& place : {QPoint(0, 1), QPoint(1, 0)})
        table->selectionModel()->select(table->model()->index(place.y(), place.x()),
                                        QItemSelectionModel::Select);
    table->actions().first()->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("02\n03"));
    table->clearSelection();
    table->actions().first()->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("\t0\t1\n0\t01\t02\n1\t03\tFA"));
}

QTEST_MAIN(TestHexDumpDock)
#include "tst_hex_dump_dock.moc"
