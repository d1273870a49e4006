#include "tests/dialog/FailingAllocations.h"
#include "tests/dialog/RunAllocations.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

namespace {

const char* const NotEnough = "Not enough memory for the operation!";
constexpr int Width = 6;
constexpr int Height = 5;

TestFrame frameOf(int depth)
{
    return TestFrame(Width, Height, depth,
                     [](int x, int y) { return static_cast<unsigned>(60 + 20 * x + 3 * y); });
}

/// A member's block and what is in it; a list has no block.
struct Held
{
    const void* block = nullptr;
    QByteArray bytes;
};

Held blockOf(const void* block, std::size_t bytes)
{
    return {block,
            block ? QByteArray(static_cast<const char*>(block), static_cast<int>(bytes)) : QByteArray()};
}

Held listOf(const std::list<double>& gains)
{
    const QVector<double> values(gains.begin(), gains.end());
    return blockOf(values.constData(), static_cast<std::size_t>(values.size()) * sizeof(double));
}

Held heldBy(const DialogProbe& d, Member member)
{
    constexpr std::size_t columns = Width * 2;
    constexpr std::size_t rows = Height * 2;
    constexpr std::size_t cells = columns * Height;
    switch (member) {
    case ColumnGains:
        return {nullptr, listOf(d.m_columnGains).bytes};
    case ColumnMeans:
        return blockOf(d.m_columnMean, columns);
    case RowMeans:
        return blockOf(d.m_rowMean, rows);
    case FlatXCells:
        return blockOf(d.m_flatX, cells);
    case RowGains:
        return {nullptr, listOf(d.m_rowGains).bytes};
    case FlatYCells:
        return blockOf(d.m_flatY, cells);
    case FlatColumnMeans:
        return blockOf(d.m_flatColumnMean, columns);
    case FlatRowMeans:
        return blockOf(d.m_flatRowMean, rows);
    case Bins:
        return blockOf(d.m_histogram, static_cast<std::size_t>(d.m_histogramLevels) * 4);
    case ColumnLineItems:
        return blockOf(d.m_columnLine, columns);
    case RowLineItems:
        return blockOf(d.m_rowLine, rows);
    case FlatColumnLineItems:
        return blockOf(d.m_flatColumnLine, columns);
    default:
        return blockOf(d.m_flatRowLine, rows);
    }
}

std::array<Held, MemberCount> allHeldBy(const DialogProbe& d)
{
    std::array<Held, MemberCount> all;
    for (int member = 0; member < MemberCount; ++member)
        all[static_cast<std::size_t>(member)] = heldBy(d, static_cast<Member>(member));
    return all;
}

/// What the last stages compute beside their blocks.
enum Number
{
    Levels,
    Peak,
    ImageMin,
    ImageMax,
    FlatMin,
    FlatMax,
    RangeXMin,
    RangeXMax,
    RangeYMin,
    RangeYMax
};

QVector<int> numbersOf(const DialogProbe& d)
{
    return {d.m_histogramLevels, d.m_histogramPeak, d.m_imageMin,  d.m_imageMax,  d.m_flatMin,
            d.m_flatMax,         d.m_rangeXMin,     d.m_rangeXMax, d.m_rangeYMin, d.m_rangeYMax};
}

/// Values that no run makes of the frame.
void setNumbers(DialogProbe& d)
{
    d.m_histogramPeak = 1000;
    d.m_imageMin = 11;
    d.m_imageMax = 12;
    d.m_flatMin = 13;
    d.m_flatMax = 14;
    d.m_rangeXMin = 15;
    d.m_rangeXMax = 16;
    d.m_rangeYMin = 17;
    d.m_rangeYMax = 18;
}

/// The numbers after a run in which one allocation failed, from those before and those that a run without
/// failure makes.
QVector<int> numbersAfter(Place failed, const QVector<int>& before, const QVector<int>& made)
{
    QVector<int> numbers = before;
    if (runGoesOn(failed)) {
        numbers = made;
        // No pixel is counted.
        if (failed == Plan || failed == Buffer)
            numbers[Peak] = 0;
        // The corrected image is black, and the frame reaches from 60 to 172.
        if (failed == Offset2) {
            numbers[FlatMin] = numbers[FlatMax] = numbers[RangeYMin] = 0;
            numbers[RangeYMax] = 180;
        }
        return numbers;
    }
    if (failed >= Histogram)
        numbers[Levels] = made[Levels];
    if (failed > Histogram)
        numbers[Peak] = made[Peak];
    return numbers;
}

} // namespace

/// Each allocation of a run fails in turn.
class TestAllocationFailure : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void runWithoutFailureMakesTheKnownAllocations_data();
    void runWithoutFailureMakesTheKnownAllocations();
    void blocksHaveTheirSizes_data();
    void blocksHaveTheirSizes();
    void frameCopyThatFailsLeavesNoFrame();
    void eachFailureOfARun_data();
    void eachFailureOfARun();
    void linesWithoutTheirSourceAreBlack_data();
    void linesWithoutTheirSourceAreBlack();
    void firstShowMarksTheDialogAfterItsBoxes();
    void everythingFailsFromOnePlaceOn_data();
    void everythingFailsFromOnePlaceOn();
    void nextUpdateReplacesWhatIsThere();
    void boxIsModalAndWithoutAParent();
    void saveNeedsNoBlock();
};

void TestAllocationFailure::init()
{
    failAllocation(0);
}

void TestAllocationFailure::cleanup()
{
    restoreAllCursors();
}

void TestAllocationFailure::runWithoutFailureMakesTheKnownAllocations_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("showRows");
    QTest::addColumn<int>("count");
    QTest::newRow("8 bits, without the row box") << 8 << false << int(PlaceCount) - 1;
    QTest::newRow("8 bits, with the row box") << 8 << true << int(PlaceCount);
    QTest::newRow("12 bits, without the row box") << 12 << false << int(PlaceCount) - 1;
    QTest::newRow("12 bits, with the row box") << 12 << true << int(PlaceCount);
}

void TestAllocationFailure::runWithoutFailureMakesTheKnownAllocations()
{
    QFETCH(int, depth);
    QFETCH(bool, showRows);
    QFETCH(int, count);
    DialogProbe d;
    d.ui.chBShowY->setChecked(showRows);
    failAllocation(0);
    d.take(frameOf(depth));
    QCOMPARE(allocationCount(), 1);
    QVERIFY(d.RunCorrection());
    QCOMPARE(allocationCount(), count);
    for (const Held& held : allHeldBy(d))
        QVERIFY(!held.bytes.isEmpty());
}

void TestAllocationFailure::blocksHaveTheirSizes_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("levels");
    QTest::addColumn<int>("buffer");
    QTest::newRow("8 bits") << 8 << 35 << 256 << 1024;
    QTest::newRow("12 bits") << 12 << 70 << 4096 << 262144;
}

void TestAllocationFailure::blocksHaveTheirSizes()
{
    QFETCH(int, depth);
    QFETCH(int, frame);
    QFETCH(int, levels);
    QFETCH(int, buffer);
    constexpr int columns = 7 * 2;
    constexpr int rows = 5 * 2;
    constexpr int cells = 16 * (5 + 1);
    DialogProbe d;
    d.ui.chBShowY->setChecked(true);
    failAllocation(0);
    d.take(TestFrame::even(7, 5, depth, 100));
    QVERIFY(d.RunCorrection());
    QCOMPARE(allocationSizes(),
             QVector<int>({frame,           columns, rows,    columns, cells,   cells, columns, columns,
                           cells,           cells,   columns, rows,    cells,   rows,  columns, 4 * levels,
                           80 + 4 * levels, buffer,  columns, rows,    columns, rows}));
    // Rows of 16 bytes hold 8 cells, and so many codes are made.
    failAllocation(0);
    d.take(TestFrame(
        7, 5, 12, [](int, int) { return 100U; }, 16));
    QVERIFY(d.RunCorrection());
    QCOMPARE(allocationSizes().at(Image), 80);
    QCOMPARE(allocationSizes().at(Codes1), 16);
    QCOMPARE(allocationSizes().at(Codes2), 16);
}

void TestAllocationFailure::frameCopyThatFailsLeavesNoFrame()
{
    DialogProbe d;
    d.take(frameOf(12));
    QVERIFY(d.RunCorrection());
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

void TestAllocationFailure::eachFailureOfARun_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("showRows");
    QTest::addColumn<bool>("again");
    for (std::size_t place = Image + 1; place < PlaceCount; ++place) {
        for (const int depth : {8, 12}) {
            for (const bool showRows : {false, true}) {
                for (const bool again : {false, true}) {
                    if (place == FlatColumnMean3 && !showRows)
                        continue;
                    QTest::addRow("%s fails, %d bits, row box %s, %s", PlaceNames[place], depth,
                                  showRows ? "ticked" : "clear", again ? "second run" : "first run")
                        << int(place) << depth << showRows << again;
                }
            }
        }
    }
}

void TestAllocationFailure::eachFailureOfARun()
{
    QFETCH(int, place);
    QFETCH(int, depth);
    QFETCH(bool, showRows);
    QFETCH(bool, again);
    const auto failed = static_cast<Place>(place);
    const double value = again ? 0.5 : 1.0;

    // What runs without failure make of this frame under the same settings.
    DialogProbe sound;
    sound.take(frameOf(depth));
    sound.m_normalizeValue = value;
    QVERIFY(sound.RunCorrection());
    const Held ofColumnPass = heldBy(sound, FlatColumnMeans);
    sound.ui.chBShowY->setChecked(showRows);
    setNumbers(sound);
    QVERIFY(sound.RunCorrection());

    DialogProbe d;
    d.ui.chBShowY->setChecked(showRows);
    d.take(frameOf(depth));
    if (again)
        QVERIFY(d.RunCorrection());
    setNumbers(d);
    const auto before = allHeldBy(d);
    const QVector<int> numbersBefore = numbersOf(d);
    d.m_normalizeValue = value;
    ModalWatch watch;
    failAllocation(numberOf(failed, showRows));
    const bool answer = d.RunCorrection();
    failAllocation(0);

    QCOMPARE(answer, runGoesOn(failed));
    const bool silent = failed == Plan || failed == Buffer;
    QCOMPARE(watch.texts, silent ? QStringList() : QStringList(NotEnough));
    QVERIFY(d.m_image);
    QVERIFY(!QGuiApplication::overrideCursor());
    for (std::size_t i = 0; i < MemberCount; ++i) {
        const auto member = static_cast<Member>(i);
        const Held actual = heldBy(d, member);
        const Held made = heldBy(sound, member);
        const Content content = contentAfter(member, failed, showRows);
        const int size = made.bytes.size();
        const QByteArray expected = content == Content::Kept           ? before[i].bytes
                                    : content == Content::Missing      ? QByteArray()
                                    : content == Content::Unwritten    ? QByteArray(size, UnwrittenByte)
                                    : content == Content::Zero         ? QByteArray(size, 0)
                                    : content == Content::OfColumnPass ? ofColumnPass.bytes
                                                                       : made.bytes;
        QVERIFY2(actual.bytes == expected, qPrintable(QStringLiteral("%1: expected %2, actual %3")
                                                          .arg(MemberNames[i])
                                                          .arg(QString(expected.toHex().left(200)))
                                                          .arg(QString(actual.bytes.toHex().left(200)))));
        if (content == Content::Kept)
            QVERIFY2(actual.block == before[i].block, MemberNames[i]);
    }
    QCOMPARE(numbersOf(d), numbersAfter(failed, numbersBefore, numbersOf(sound)));
}

void TestAllocationFailure::linesWithoutTheirSourceAreBlack_data()
{
    QTest::addColumn<int>("pass");
    QTest::addColumn<bool>("ofColumns");
    QTest::newRow("of the frame, column means missing") << 0 << true;
    QTest::newRow("of the frame, row means missing") << 0 << false;
    QTest::newRow("of the result, column means missing") << 1 << true;
    QTest::newRow("of the result, row means missing") << 1 << false;
}

void TestAllocationFailure::linesWithoutTheirSourceAreBlack()
{
    QFETCH(int, pass);
    QFETCH(bool, ofColumns);
    DialogProbe d;
    d.take(frameOf(12));
    QVERIFY(d.RunCorrection());
    std::uint16_t*& means = pass == 0 ? (ofColumns ? d.m_columnMean : d.m_rowMean)
                                      : (ofColumns ? d.m_flatColumnMean : d.m_flatRowMean);
    std::uint16_t* const block = std::exchange(means, nullptr);
    QVERIFY(d.TakeProfileLines(pass, -1, -1));
    means = block;
    const QByteArray columns = heldBy(d, pass == 0 ? ColumnLineItems : FlatColumnLineItems).bytes;
    const QByteArray rows = heldBy(d, pass == 0 ? RowLineItems : FlatRowLineItems).bytes;
    QCOMPARE(columns == QByteArray(2 * Width, 0), ofColumns);
    QCOMPARE(rows == QByteArray(2 * Height, 0), !ofColumns);
}

void TestAllocationFailure::firstShowMarksTheDialogAfterItsBoxes()
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

void TestAllocationFailure::everythingFailsFromOnePlaceOn_data()
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

void TestAllocationFailure::everythingFailsFromOnePlaceOn()
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

void TestAllocationFailure::nextUpdateReplacesWhatIsThere()
{
    DialogProbe d;
    d.take(frameOf(8));
    ModalWatch watch;
    for (int place = ColumnMean; place < PlaceCount - 1; ++place) {
        failAllocation(place);
        d.Update();
        failAllocation(0);
        d.Update();
        for (const Held& held : allHeldBy(d))
            QVERIFY(!held.bytes.isEmpty());
    }
}

void TestAllocationFailure::boxIsModalAndWithoutAParent()
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

void TestAllocationFailure::saveNeedsNoBlock()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QTemporaryDir folder;
    DialogProbe d;
    d.take(TestFrame(2, 1, 12, [](int x, int) { return x == 0 ? 500U : 1000U; }));
    QVERIFY(d.RunCorrection());
    d.ui.lETitle->setText(QStringLiteral("Lab 3"));
    d.ui.lECamera->setText(QStringLiteral("ZC-4"));
    ModalWatch watch;
    watch.chosenFile = folder.filePath(QStringLiteral("gains.ffc"));
    failAllocation(1, true);
    d.DoSaveFFC();
    QCOMPARE(allocationCount(), 0);
    QVERIFY(watch.texts.isEmpty());
    QFile file(watch.chosenFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY2(text.endsWith("HEX Value\n1,512\n2,256\n:FFC_Y start,\n-- Row(Y),HEX Value\n1,256\n"), text);
}

QTEST_MAIN(TestAllocationFailure)
#include "tst_allocation_failure.moc"
