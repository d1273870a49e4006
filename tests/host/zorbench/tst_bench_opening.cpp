#include "tests/host/frames/MakeTiff.h"
#include "tests/host/zorbench/Bench.h"
#include "tests/support/ModalWatch.h"

#include "host/zorbench/RawDialog.h"
#include "image/unpack/NativeCodes.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

/// The ways in which frames come into the workbench, and files that are none.
class TestBenchOpening : public QObject
{
    Q_OBJECT

private slots:
    void aPictureIsShown();
    void ofSeveralFilesTheFirstIsShown();
    void theOpenDialogStartsInTheLastFolder();
    void aRecentFileIsOpenedAgain();
    void onlyFilesAreAmongTheRecentOnes();
    void recentFilesAreThereBeforeTheMenuOpens();
    void aTitleShowsTheWholeName();
    void aFileThatIsNoFrameIsToldAndTheOldOneStays_data();
    void aFileThatIsNoFrameIsToldAndTheOldOneStays();
    void aRawDumpIsAskedForOnceForEachSize();
    void onlyPackedFormatsHaveAnOrder_data();
    void onlyPackedFormatsHaveAnOrder();
    void packedBitsAreTakenInTheChosenOrder_data();
    void packedBitsAreTakenInTheChosenOrder();
    void aLayoutThatDoesNotFitIsToldAndCanBeCorrected_data();
    void aLayoutThatDoesNotFitIsToldAndCanBeCorrected();
    void aCancelledRawDumpChangesNothing();
    void whatWhiteIsIsAsked_data();
    void whatWhiteIsIsAsked();
    void aHugeFileIsRefused();

private:
    static zor::RawDialog* rawDialog(Bench& bench);
    /// The words of the items in the menu "Recent files".
    static QStringList recentTexts(Bench& bench);
    static void chooseRecent(Bench& bench, int item);
    static void fill(zor::RawDialog* dialog, const QString& format, int width, int height, int pitch = 0);
};

zor::RawDialog* TestBenchOpening::rawDialog(Bench& bench)
{
    // One that was closed is deleted later.
    const auto dialogs = bench.window().findChildren<zor::RawDialog*>();
    for (zor::RawDialog* dialog : dialogs) {
        if (dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

QStringList TestBenchOpening::recentTexts(Bench& bench)
{
    QStringList texts;
    const auto actions = bench.action("Recent files")->menu()->actions();
    for (const QAction* action : actions)
        texts.append(action->text());
    return texts;
}

void TestBenchOpening::chooseRecent(Bench& bench, int item)
{
    bench.action("Recent files")->menu()->actions().at(item)->trigger();
}

void TestBenchOpening::fill(zor::RawDialog* dialog, const QString& format, int width, int height, int pitch)
{
    controlOf<QComboBox>(dialog, "Format")->setCurrentText(format);
    controlOf<QSpinBox>(dialog, "Width")->setValue(width);
    controlOf<QSpinBox>(dialog, "Height")->setValue(height);
    controlOf<QSpinBox>(dialog, "Pitch")->setValue(pitch);
}

void TestBenchOpening::aPictureIsShown()
{
    Bench bench;
    QCOMPARE(bench.shownSize(), QSize());
    bench.open(bench.write("50 %2.pgm", countedPgm(6, 4)));
    QCOMPARE(bench.shownSize(), QSize(6, 4));
    QCOMPARE(bench.status("Frame"), QString("50 %2.pgm  6 x 4  Mono8  (maxval 255)"));
    QCOMPARE(bench.window().windowTitle(), QString("50 %2.pgm - ZorBench"));
}

void TestBenchOpening::ofSeveralFilesTheFirstIsShown()
{
    Bench bench;
    const QStringList files{bench.write("a.pgm", countedPgm(2, 2)), bench.write("b.pgm", countedPgm(3, 3)),
                            bench.write("c.pgm", countedPgm(4, 4))};
    bench.window().openFiles(files);
    QCOMPARE(bench.shownSize(), QSize(2, 2));
    QCOMPARE(zor::RecentFiles(bench.settings()).files(), files);
    bench.window().openFiles({});
    QCOMPARE(bench.shownSize(), QSize(2, 2));
}

void TestBenchOpening::theOpenDialogStartsInTheLastFolder()
{
    Bench bench;
    ModalWatch watch;
    QStringList folders;
    watch.onFileDialog = [&folders](QFileDialog& dialog) { folders.append(dialog.directory().path()); };
    const auto ask = [&] {
        const int before = watch.fileDialogs;
        bench.action("Open\u2026")->trigger();
        QTRY_COMPARE(watch.fileDialogs, before + 1);
        QTRY_VERIFY(!QApplication::activeModalWidget());
    };
    ask();
    watch.chosenFile = bench.write("flat.pgm", countedPgm(5, 3));
    ask();
    QTRY_COMPARE(bench.shownSize(), QSize(5, 3));
    ask();
    QVERIFY(QDir(bench.path("gone")).mkpath("."));
    bench.open(bench.write("gone/flat.pgm", countedPgm(5, 3)));
    QVERIFY(QDir(bench.path("gone")).removeRecursively());
    ask();
    const QString folder = QFileInfo(bench.path("flat.pgm")).path();
    QCOMPARE(folders, (QStringList{QDir::homePath(), QDir::homePath(), folder, QDir::homePath()}));
}

void TestBenchOpening::aRecentFileIsOpenedAgain()
{
    Bench bench;
    // An ampersand is a letter of the name and marks none.
    const QString first = bench.write("black & white.pgm", countedPgm(2, 2));
    bench.open(first);
    bench.open(bench.write("other.pgm", countedPgm(3, 3)));
    QCOMPARE(recentTexts(bench).last(), QString(first).replace("&", "&&"));
    chooseRecent(bench, 1);
    QCOMPARE(bench.shownSize(), QSize(2, 2));
    QCOMPARE(zor::RecentFiles(bench.settings()).files().first(), first);
}

void TestBenchOpening::onlyFilesAreAmongTheRecentOnes()
{
    Bench bench;
    const QString first = bench.write("a.pgm", countedPgm(2, 2));
    const QString second = bench.write("b.pgm", countedPgm(3, 3));
    bench.window().openFiles({first, QFileInfo(first).path(), bench.path("gone.pgm"), second});
    QCOMPARE(zor::RecentFiles(bench.settings()).files(), (QStringList{first, second}));
}

// An assistive client chooses items without opening their menu.
void TestBenchOpening::recentFilesAreThereBeforeTheMenuOpens()
{
    Bench bench;
    QCOMPARE(recentTexts(bench), QStringList());
    QVERIFY(!bench.action("Recent files")->isEnabled());
    const QString first = bench.write("a.pgm", countedPgm(2, 2));
    const QString second = bench.write("b.pgm", countedPgm(3, 3));
    bench.open(first);
    bench.open(second);
    QCOMPARE(recentTexts(bench), (QStringList{second, first}));
    QVERIFY(bench.action("Recent files")->isEnabled());
    // Also when the list changes by one of its own items.
    chooseRecent(bench, 1);
    QCoreApplication::processEvents();
    QCOMPARE(recentTexts(bench), (QStringList{first, second}));
    bench.restart();
    QCOMPARE(recentTexts(bench), (QStringList{first, second}));
    chooseRecent(bench, 1);
    QCOMPARE(bench.shownSize(), QSize(3, 3));
}

// "[*]" in a title is Qt's mark for changes.
void TestBenchOpening::aTitleShowsTheWholeName()
{
    Bench bench;
    bench.open(bench.write("a[*]b.pgm", countedPgm(2, 2)));
    QCOMPARE(bench.window().windowHandle()->title(), QString("a[*]b.pgm - ZorBench"));
    bench.open(bench.write("a[*]b.raw", "x"));
    QCOMPARE(rawDialog(bench)->windowHandle()->title(), QString("Raw dump a[*]b.raw"));
}

void TestBenchOpening::aFileThatIsNoFrameIsToldAndTheOldOneStays_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("says");
    QTest::newRow("a picture that is cut") << countedPgm(6, 4).chopped(1) << "; write or copy the file again";
    QTest::newRow("an empty file") << QByteArray() << "is empty";
    QTest::newRow("a size above the limit") << QByteArray("P5 65535 65535 65535 A") << "above the limit";
}

void TestBenchOpening::aFileThatIsNoFrameIsToldAndTheOldOneStays()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, says);
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    const QString file = bench.write("bad.pgm", bytes);
    ModalWatch watch;
    bench.open(file);
    QTRY_COMPARE(watch.texts.size(), 1);
    QVERIFY2(watch.texts.first().startsWith(file + ": ") && watch.texts.first().contains(says),
             qPrintable(watch.texts.first()));
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(bench.shownSize(), QSize(6, 4));
    QVERIFY(bench.status("Frame").startsWith("flat.pgm"));
    QVERIFY(!zor::RecentFiles(bench.settings()).files().contains(file));
}

void TestBenchOpening::aRawDumpIsAskedForOnceForEachSize()
{
    Bench bench;
    const QString file = bench.write("a.raw", QByteArray(7 * 12 + 4, 'x'));
    for (const bool isKnown : {false, true}) {
        bench.open(isKnown ? bench.write("b.raw", QByteArray(7 * 12 + 4, 'y')) : file);
        zor::RawDialog* dialog = rawDialog(bench);
        QVERIFY(dialog);
        QCOMPARE(controlOf<QComboBox>(dialog, "Format")->count(), 133);
        // The question begins with its reason.
        QCOMPARE(qobject_cast<QLabel*>(dialog->layout()->itemAt(0)->widget())->text(),
                 QString("This file is no PGM, PPM, PNG or TIFF picture. As a raw dump it is:"));
        if (!isKnown)
            fill(dialog, "BayerRG12p", 5, 8, 11);
        QCOMPARE(dialog->rawLayout().format, std::string("BayerRG12p"));
        QCOMPARE(dialog->rawLayout().width, 5U);
        QCOMPARE(dialog->rawLayout().height, 8U);
        QCOMPARE(dialog->rawLayout().pitch.value_or(0), 11U);
        controlOf<QPushButton>(dialog, "Open")->click();
        QVERIFY(!rawDialog(bench));
        QCOMPARE(bench.shownSize(), QSize(5, 8));
    }
    // A file of another size has an answer of its own.
    bench.open(bench.write("c.raw", QByteArray(640 * 480, 'z')));
    QCOMPARE(rawDialog(bench)->rawLayout().format, std::string("Mono8"));
    controlOf<QPushButton>(rawDialog(bench), "Open")->click();
    QCOMPARE(bench.shownSize(), QSize(640, 480));
    QVERIFY(bench.status("Frame").startsWith("c.raw  640 x 480  Mono8"));
}

void TestBenchOpening::onlyPackedFormatsHaveAnOrder_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<bool>("expected");
    QTest::newRow("12 bits, packed") << "Mono12Packed" << true;
    QTest::newRow("10 bits of a colour filter, packed") << "BayerRG10Packed" << true;
    QTest::newRow("12 bits one after the other") << "Mono12p" << false;
    QTest::newRow("8 bits") << "Mono8" << false;
    QTest::newRow("colour") << "RGB8" << false;
}

void TestBenchOpening::onlyPackedFormatsHaveAnOrder()
{
    QFETCH(QString, format);
    QFETCH(bool, expected);
    Bench bench;
    bench.open(bench.write("a.raw", "abc"));
    zor::RawDialog* dialog = rawDialog(bench);
    // The first layout is one of 8 bits.
    QVERIFY(!controlOf(dialog, "Packed order")->isEnabled());
    QCOMPARE(controlOf<QSpinBox>(dialog, "Pitch")->text(), QString("no padding"));
    QCOMPARE(controlOf(dialog, "Pitch")->toolTip(), QString("Bytes from row to row"));
    QVERIFY(
        controlOf(dialog, "Packed order")->toolTip().endsWith("low nibble (wire) or high nibble (record)"));
    fill(dialog, expected ? "Mono8" : "Mono12Packed", 2, 1);
    fill(dialog, format, 2, 1);
    QCOMPARE(controlOf(dialog, "Packed order")->isEnabled(), expected);
}

void TestBenchOpening::packedBitsAreTakenInTheChosenOrder_data()
{
    QTest::addColumn<QString>("order");
    QTest::addColumn<unsigned>("even");
    QTest::addColumn<unsigned>("odd");
    QTest::newRow("as cameras send them") << "Wire (GigE Vision)" << 0x123U << 0x564U;
    QTest::newRow("as a record has them") << "Record" << 0x124U << 0x563U;
}

void TestBenchOpening::packedBitsAreTakenInTheChosenOrder()
{
    QFETCH(QString, order);
    QFETCH(unsigned, even);
    QFETCH(unsigned, odd);
    Bench bench;
    const QString file = bench.write("a.raw", "\x12\x43\x56");
    for (const bool isKnown : {false, true}) {
        bench.open(file);
        zor::RawDialog* dialog = rawDialog(bench);
        auto* box = controlOf<QComboBox>(dialog, "Packed order");
        QCOMPARE(box->count(), 2);
        if (!isKnown) {
            QCOMPARE(box->currentText(), QString("Wire (GigE Vision)"));
            fill(dialog, "Mono12Packed", 2, 1);
            box->setCurrentText(order);
        }
        QCOMPARE(box->currentText(), order);
        controlOf<QPushButton>(dialog, "Open")->click();
        QCOMPARE(bench.shownSize(), QSize(2, 1));
        const _ZorImage record = bench.view().frame()->record();
        QCOMPARE(zor::nativeCodes(record, 0, 0).codes[0], even);
        QCOMPARE(zor::nativeCodes(record, 1, 0).codes[0], odd);
    }
}

void TestBenchOpening::aLayoutThatDoesNotFitIsToldAndCanBeCorrected_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("pitch");
    QTest::addColumn<QString>("says");
    QTest::newRow("too many pixels") << "Mono8" << QSize(5, 5) << 0 << "takes 25 bytes, the file has 24";
    QTest::newRow("8 GB") << "Mono16" << QSize(65535, 65535) << 0 << "above the limit of 4294967295 bytes";
    QTest::newRow("a pitch too small") << "Mono16" << QSize(4, 3) << 4 << "is too small";
    QTest::newRow("samples above the depth") << "Mono12" << QSize(4, 3) << 0 << "the limit of Mono12";
}

void TestBenchOpening::aLayoutThatDoesNotFitIsToldAndCanBeCorrected()
{
    QFETCH(QString, format);
    QFETCH(QSize, size);
    QFETCH(int, pitch);
    QFETCH(QString, says);
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    const QString file = bench.write("a.raw", QByteArray(24, 'x'));
    bench.open(file);
    QPointer<zor::RawDialog> dialog = rawDialog(bench);
    QVERIFY(dialog);
    fill(dialog, format, size.width(), size.height(), pitch);
    ModalWatch watch;
    // The dialog itself is no box, so that the watch leaves it open.
    controlOf<QPushButton>(dialog, "Open")->click();
    QTRY_COMPARE(watch.texts.size(), 1);
    QVERIFY2(watch.texts.first().startsWith(file + ": ") && watch.texts.first().contains(says),
             qPrintable(watch.texts.first()));
    QVERIFY2(!watch.texts.first().contains("--"), qPrintable(watch.texts.first()));
    QTRY_COMPARE(QApplication::activeModalWidget(), dialog);
    QCOMPARE(bench.shownSize(), QSize(6, 4));

    fill(dialog, "Mono8", 8, 3);
    controlOf<QPushButton>(dialog, "Open")->click();
    QCOMPARE(bench.shownSize(), QSize(8, 3));
    QTRY_VERIFY(!dialog);
}

void TestBenchOpening::aCancelledRawDumpChangesNothing()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    const QString file = bench.write("a.raw", QByteArray(24, 'x'));
    bench.open(file);
    fill(rawDialog(bench), "Mono8", 8, 3);
    controlOf<QPushButton>(rawDialog(bench), "Cancel")->click();
    QCOMPARE(bench.shownSize(), QSize(6, 4));
    bench.open(file);
    QCOMPARE(rawDialog(bench)->rawLayout().width, 640U);
}

void TestBenchOpening::whatWhiteIsIsAsked_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("code");
    QTest::newRow("the samples as they are") << "As they are" << QSize(2, 1) << 10;
    QTest::newRow("full scale less the sample") << "Inverted" << QSize(2, 1) << 245;
    QTest::newRow("no answer") << "Cancel" << QSize(6, 4) << 0;
}

void TestBenchOpening::whatWhiteIsIsAsked()
{
    QFETCH(QString, answer);
    QFETCH(QSize, size);
    QFETCH(int, code);
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    TiffContent content;
    content.width = 2;
    content.height = 1;
    content.photometric = 0;
    content.samples = {10, 20};
    const QString file = bench.write("white.tif", makeTiff(content));
    ModalWatch watch;
    Qt::TextFormat textFormat = Qt::AutoText;
    watch.onBox = [&](QMessageBox& box) {
        textFormat = box.textFormat();
        const auto buttons = box.buttons();
        for (QAbstractButton* button : buttons) {
            if (button->text().remove('&') == answer)
                button->click();
        }
    };
    bench.open(file);
    QTRY_COMPARE(watch.texts.size(), 1);
    QVERIFY2(watch.texts.first().startsWith(file + ": 0 is white"), qPrintable(watch.texts.first()));
    QCOMPARE(textFormat, Qt::PlainText);
    QTRY_COMPARE(bench.shownSize(), size);
    QCOMPARE(int(zor::nativeCodes(bench.view().frame()->record(), 0, 0).codes[0]), code);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(watch.texts.size(), 1);
}

void TestBenchOpening::aHugeFileIsRefused()
{
    Bench bench;
    const QString file = bench.write("huge.raw", "x");
    // A file of holes takes no room on the disk.
    if (!QFile::resize(file, qint64{8} << 30))
        QSKIP("no file of 8 GB can be made here");
    bench.open(file);
    fill(rawDialog(bench), "Mono16", 65535, 65535);
    ModalWatch watch;
    controlOf<QPushButton>(rawDialog(bench), "Open")->click();
    QTRY_COMPARE(watch.texts.size(), 1);
    QVERIFY2(watch.texts.first().contains("above the limit"), qPrintable(watch.texts.first()));
}

QTEST_MAIN(TestBenchOpening)
#include "tst_bench_opening.moc"
