#include "dialog/RunAllocations.h"
#include "engine/Allocation.h"
#include "support/DialogProbe.h"
#include "support/ModalWatch.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QTest>

extern "C" {
void* __real_zorAllocate(std::size_t bytes);
void* __wrap_zorAllocate(std::size_t bytes);
void __real_zorRelease(void* block);
void __wrap_zorRelease(void* block);
}

namespace {

int live = 0;        ///< blocks that are not given back
QVector<int> sizes;  ///< bytes of each allocation since the last reset
int allocations = 0; ///< since the last reset
int failing = 0;     ///< number of the allocation that fails, from 1; 0 for none
bool failingOnwards = false;

void failAllocation(int number, bool onwards = false)
{
    sizes.clear();
    allocations = 0;
    failing = number;
    failingOnwards = onwards;
}

const char* const NotEnough = "Not enough memory for the operation!";

QSet<QString> missingIn(const DialogProbe& d)
{
    const std::pair<const char*, const void*> members[] = {
        {"columnMean", d.m_columnMean},
        {"rowMean", d.m_rowMean},
        {"flatX", d.m_flatX},
        {"flatColumnMean", d.m_flatColumnMean},
        {"flatY", d.m_flatY},
        {"flatRowMean", d.m_flatRowMean},
        {"histogram", d.m_histogram},
        {"columnLine", d.m_columnLine},
        {"rowLine", d.m_rowLine},
        {"flatColumnLine", d.m_flatColumnLine},
        {"flatRowLine", d.m_flatRowLine},
    };
    QSet<QString> missing;
    for (const auto& member : members) {
        if (!member.second)
            missing.insert(member.first);
    }
    return missing;
}

QString sorted(const QSet<QString>& names)
{
    QStringList list = names.values();
    list.sort();
    return list.join(QStringLiteral(" "));
}

TestFrame frameOf(int depth)
{
    return TestFrame(6, 5, depth, [](int x, int y) { return static_cast<unsigned>(60 + 20 * x + 3 * y); });
}

} // namespace

void* __wrap_zorAllocate(std::size_t bytes)
{
    ++allocations;
    sizes.append(static_cast<int>(bytes));
    const bool fails = failing != 0 && (allocations == failing || (failingOnwards && allocations > failing));
    if (fails)
        return nullptr;
    ++live;
    return __real_zorAllocate(bytes);
}

void __wrap_zorRelease(void* block)
{
    live -= block ? 1 : 0;
    __real_zorRelease(block);
}

/// Each allocation of a run fails in turn.
class AllocationFailure : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void runWithoutFailureMakesTheKnownAllocations_data();
    void runWithoutFailureMakesTheKnownAllocations();
    void blocksHaveTheirSizes_data();
    void blocksHaveTheirSizes();
    void frameCopyThatFailsLeavesNoFrame();
    void eachFailureOfARun_data();
    void eachFailureOfARun();
    void onlyCodesAreLost();
    void firstShowMarksTheDialogAfterItsBoxes();
    void everythingFailsFromOnePlaceOn_data();
    void everythingFailsFromOnePlaceOn();
    void swallowedFailureGoesOnWithBlackCells();
    void gainsSurviveAFailedRun();
    void nextUpdateReplacesWhatIsThere();
    void boxIsModalAndWithoutAParent();
    void saveNeedsNoBlock();
};

void AllocationFailure::init()
{
    failAllocation(0);
}

void AllocationFailure::runWithoutFailureMakesTheKnownAllocations_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("showRows");
    QTest::addColumn<int>("count");
    QTest::newRow("8 bits, without the row box") << 8 << false << int(PlaceCount) - 1;
    QTest::newRow("8 bits, with the row box") << 8 << true << int(PlaceCount);
    QTest::newRow("12 bits, without the row box") << 12 << false << int(PlaceCount) - 1;
    QTest::newRow("12 bits, with the row box") << 12 << true << int(PlaceCount);
}

void AllocationFailure::runWithoutFailureMakesTheKnownAllocations()
{
    QFETCH(int, depth);
    QFETCH(bool, showRows);
    QFETCH(int, count);
    DialogProbe d;
    d.ui.chBShowY->setChecked(showRows);
    failAllocation(0);
    d.take(frameOf(depth));
    QCOMPARE(allocations, 1);
    QVERIFY(d.RunCorrection());
    QCOMPARE(allocations, count);
    QCOMPARE(sorted(missingIn(d)), QString());
}

void AllocationFailure::blocksHaveTheirSizes_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("levels");
    QTest::addColumn<int>("buffer");
    QTest::newRow("8 bits, rows of 7 bytes padded to 8") << 8 << 40 << 256 << 1024;
    QTest::newRow("12 bits, rows of 14 bytes padded to 16") << 12 << 80 << 4096 << 262144;
}

void AllocationFailure::blocksHaveTheirSizes()
{
    QFETCH(int, depth);
    QFETCH(int, frame);
    QFETCH(int, levels);
    QFETCH(int, buffer);
    constexpr int columns = 7 * 2;
    constexpr int rows = 5 * 2;
    constexpr int cells = 16 * (5 + 1);
    // At depth 12 the frame's rows hold 8 cells, and so many codes are made.
    const int codes = depth == 8 ? columns : 16;
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    d.take(TestFrame::even(7, 5, depth, 100));
    QVERIFY(d.RunCorrection());
    QCOMPARE(sizes,
             QVector<int>({frame,           columns, rows,    codes, cells,   cells, columns, codes,
                           cells,           cells,   columns, rows,  cells,   rows,  columns, 4 * levels,
                           80 + 4 * levels, buffer,  columns, rows,  columns, rows}));
}

void AllocationFailure::frameCopyThatFailsLeavesNoFrame()
{
    DialogProbe d;
    d.take(frameOf(12));
    d.Update();
    ModalWatch watch;
    failAllocation(1);
    d.take(TestFrame::even(9, 7, 12, 100));
    QCOMPARE(watch.texts, QStringList(NotEnough));
    QVERIFY(!d.m_image && !d.m_flatX && !d.m_flatY);
    QCOMPARE(d.m_width, 9);
    QCOMPARE(d.m_height, 7);
    QCOMPARE(d.m_depth, 0);
    QCOMPARE(d.m_step, 0);
    failAllocation(0);
    QVERIFY(!d.RunCorrection());
    QCOMPARE(watch.texts.size(), 1);
}

void AllocationFailure::eachFailureOfARun_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("showRows");
    QTest::addColumn<bool>("again");
    for (int place = Image + 1; place < PlaceCount; ++place) {
        for (const int depth : {8, 12}) {
            for (const bool showRows : {false, true}) {
                for (const bool again : {false, true}) {
                    if (place == FlatColumnMean3 && !showRows)
                        continue;
                    QTest::addRow("%s fails, %d bits, row box %s, %s", PlaceNames[place], depth,
                                  showRows ? "ticked" : "clear", again ? "second run" : "first run")
                        << place << depth << showRows << again;
                }
            }
        }
    }
}

void AllocationFailure::eachFailureOfARun()
{
    QFETCH(int, place);
    QFETCH(int, depth);
    QFETCH(bool, showRows);
    QFETCH(bool, again);
    DialogProbe d;
    d.ui.chBShowY->setChecked(showRows);
    d.take(frameOf(depth));
    if (again)
        QVERIFY(d.RunCorrection());
    ModalWatch watch;
    const int number = place - (place > FlatColumnMean3 && !showRows ? 1 : 0);
    failAllocation(number);
    const bool answer = d.RunCorrection();
    failAllocation(0);

    const Outcome expected = outcomeOf(static_cast<Place>(place), showRows, again);
    QCOMPARE(answer, expected.answer);
    QCOMPARE(watch.texts.size(), expected.boxes);
    for (const QString& text : qAsConst(watch.texts))
        QCOMPARE(text, QString(NotEnough));
    QCOMPARE(sorted(missingIn(d)), sorted(expected.missing));
    QVERIFY(d.m_image);
    QVERIFY(!QGuiApplication::overrideCursor());
    if (place == Plan || place == Buffer) {
        for (int level = 0; level < d.m_histogramLevels; ++level)
            QCOMPARE(d.m_histogram[level], 0);
    }
}

void AllocationFailure::onlyCodesAreLost()
{
    ModalWatch watch;
    for (int place = Image; place < PlaceCount; ++place) {
        const int before = live;
        {
            DialogProbe d;
            d.ui.chBShowY->setChecked(true);
            failAllocation(place == Image ? 1 : 0);
            d.take(frameOf(12));
            failAllocation(place);
            d.Update();
            failAllocation(0);
            d.Update();
        }
        const bool loses =
            place == FlatX1 || place == Offset1 || place == FlatX2 || place == Offset2 || place == FlatY;
        QVERIFY2(live - before == (loses ? 1 : 0),
                 qPrintable(QStringLiteral("%1: %2 blocks lost").arg(PlaceNames[place]).arg(live - before)));
    }
}

void AllocationFailure::firstShowMarksTheDialogAfterItsBoxes()
{
    DialogProbe d;
    d.take(frameOf(12));
    ModalWatch watch;
    bool shown = true;
    watch.onBox = [&](QMessageBox&) { shown = d.m_shown; };
    failAllocation(ColumnMean);
    d.show();
    QCOMPARE(watch.texts, QStringList(NotEnough));
    QVERIFY(!shown);
    QVERIFY(d.m_shown);
}

void AllocationFailure::everythingFailsFromOnePlaceOn_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("boxes");
    QTest::newRow("from the first array on") << int(ColumnMean) << 1;
    QTest::newRow("from the column-corrected image on") << int(FlatX1) << 1;
    QTest::newRow("from the second pass's codes on: swallowed, then the row codes") << int(Codes2) << 2;
    QTest::newRow("from the second pass's image on: no cells, no second box") << int(FlatX2) << 1;
    QTest::newRow("from the second pass's means on: swallowed, then the row codes")
        << int(FlatColumnMean2) << 2;
}

void AllocationFailure::everythingFailsFromOnePlaceOn()
{
    QFETCH(int, place);
    QFETCH(int, boxes);
    DialogProbe d;
    d.take(frameOf(12));
    ModalWatch watch;
    failAllocation(place, true);
    QVERIFY(!d.RunCorrection());
    QCOMPARE(watch.texts.size(), boxes);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void AllocationFailure::swallowedFailureGoesOnWithBlackCells()
{
    DialogProbe d;
    d.take(frameOf(12));
    ModalWatch watch;
    failAllocation(Offset2);
    QVERIFY(d.RunCorrection());
    QCOMPARE(QVector<int>(d.m_flatY, d.m_flatY + 30), QVector<int>(30, 0));
}

void AllocationFailure::gainsSurviveAFailedRun()
{
    DialogProbe d;
    d.take(frameOf(12));
    QVERIFY(d.RunCorrection());
    ModalWatch watch;
    failAllocation(RowCodes);
    QVERIFY(!d.RunCorrection());
    QCOMPARE(int(d.m_columnGains.size()), 6);
    QCOMPARE(int(d.m_rowGains.size()), 5);
    // The column list is emptied before its stage asks for memory, the row list is not reached.
    failAllocation(ColumnMean);
    QVERIFY(!d.RunCorrection());
    QVERIFY(d.m_columnGains.empty());
    QCOMPARE(int(d.m_rowGains.size()), 5);
}

void AllocationFailure::nextUpdateReplacesWhatIsThere()
{
    DialogProbe d;
    d.take(frameOf(8));
    ModalWatch watch;
    for (int place = ColumnMean; place < PlaceCount - 1; ++place) {
        failAllocation(place);
        d.Update();
        failAllocation(0);
        d.Update();
        QCOMPARE(sorted(missingIn(d)), QString());
    }
}

void AllocationFailure::boxIsModalAndWithoutAParent()
{
    DialogProbe d;
    d.take(frameOf(12));
    ModalWatch watch;
    bool modal = false;
    bool orphan = false;
    bool waiting = false;
    watch.onBox = [&](QMessageBox& box) {
        modal = box.isModal();
        orphan = !box.parent();
        waiting =
            QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
    };
    failAllocation(ColumnMean);
    d.Update();
    QVERIFY(modal && orphan);
    QVERIFY(waiting);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void AllocationFailure::saveNeedsNoBlock()
{
    DialogProbe d;
    d.take(frameOf(12));
    QVERIFY(d.RunCorrection());
    ModalWatch watch;
    failAllocation(1, true);
    d.DoSaveFFC();
    QCOMPARE(watch.texts, QStringList("Define Title of file"));
    QCOMPARE(allocations, 0);
}

QTEST_MAIN(AllocationFailure)
#include "tst_allocation_failure.moc"
