#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QComboBox>
#include <QDate>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#include <limits>

Q_DECLARE_METATYPE(std::list<double>)

namespace {

const double Infinity = std::numeric_limits<double>::infinity();
const double NoNumber = std::numeric_limits<double>::quiet_NaN();

QByteArray header(const QByteArray& title, const QByteArray& camera, const QByteArray& date)
{
    return "-- Flat Field Correction input file example,\n"
           "-- lines beginning with two dashes are comments,\n"
           "-- and are ignored by parser,\n"
           ":Header,\n"
           "-- this is the text that will get displayed with a 'gfh' command,\n" +
           title + ",\n" + camera + ",\ndate " + date + ",\n:Table,\n-- Column(X),HEX Value\n";
}

const QByteArray RowHeading = ":FFC_Y start,\n-- Row(Y),HEX Value\n";

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

class TestSaveFfc : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void initTestCase();
    void init();
    void fileHasItsLinesInOrder();
    void gainsAreWrittenWithTheChosenPrecision_data();
    void gainsAreWrittenWithTheChosenPrecision();
    void listsAreWrittenAsTheyAre_data();
    void listsAreWrittenAsTheyAre();
    void everyOtherPrecisionIsTwelveBits();
    void headerTextsAreNotEscaped_data();
    void headerTextsAreNotEscaped();
    void headerTextsFollowTheLocalesCodec_data();
    void headerTextsFollowTheLocalesCodec();
    void dateIsTodays();
    void missingTextStopsBeforeTheFileDialog_data();
    void missingTextStopsBeforeTheFileDialog();
    void textsAreStoredBeforeTheyAreTested();
    void fileDialogProposesTheCamera();
    void cancelWritesNothing();
    void existingFileIsOverwritten();
    void unwritableFileGivesNoMessage();
    void fullDeviceGivesNoMessage();
    void saveBeforeTheNextRunWritesTheOldGains();
    void saveAfterAResetWritesTheLastGains();

private:
    /// Fills both texts, presses the button and answers the file dialog with the test's own file.
    QByteArray save(DialogProbe& dialog);

    QScopedPointer<QTemporaryDir> m_folder;
    QString m_path;
};

void TestSaveFfc::initTestCase()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void TestSaveFfc::cleanup()
{
    restoreAllCursors();
}

void TestSaveFfc::init()
{
    m_folder.reset(new QTemporaryDir);
    m_path = m_folder->filePath(QStringLiteral("gains.ffc"));
}

QByteArray TestSaveFfc::save(DialogProbe& dialog)
{
    ModalWatch watch;
    watch.chosenFile = m_path;
    dialog.ui.lETitle->setText(QStringLiteral("Lab 3"));
    dialog.ui.lECamera->setText(QStringLiteral("ZC-4"));
    dialog.ui.pBSave->click();
    return watch.texts.isEmpty() && watch.fileDialogs == 1 ? contentOf(m_path)
                                                           : QByteArray("a box was shown");
}

void TestSaveFfc::fileHasItsLinesInOrder()
{
    DialogProbe d;
    d.m_columnGains = {1.0, 1.5};
    d.m_rowGains = {1.1, 1.0, 2.0};
    const QByteArray text = save(d);
    QCOMPARE(text, header("Lab 3", "ZC-4", d.m_date.toLatin1()) + "1,256\n2,384\n" + RowHeading +
                       "1,281\n2,256\n3,512\n");
}

void TestSaveFfc::gainsAreWrittenWithTheChosenPrecision_data()
{
    QTest::addColumn<double>("gain");
    QTest::addColumn<QByteArray>("at8");
    QTest::addColumn<QByteArray>("at12");
    const auto row = [](const char* name, double gain, const char* at8, const char* at12) {
        QTest::newRow(name) << gain << QByteArray(at8) << QByteArray(at12);
    };
    row("1.0", 1.0, "256", "4096");
    row("1.5", 1.5, "384", "6144");
    row("1.1 is truncated", 1.1, "281", "4505");
    row("0.996", 0.996, "254", "4079");
    row("16.0 is not limited", 16.0, "4096", "65536");
    row("300.7 is not limited", 300.7, "76979", "1231667");
    row("+infinity, a black column", Infinity, "255", "4095");
    row("no number", NoNumber, "0", "0");
    row("-0.5 loses its sign", -0.5, "128", "2048");
    row("-1.5 keeps an odd residue", -1.5, "-1", "-1");
    row("-2.25 too", -2.25, "-257", "-4097");
    row("0.0", 0.0, "0", "0");
}

void TestSaveFfc::gainsAreWrittenWithTheChosenPrecision()
{
    QFETCH(double, gain);
    QFETCH(QByteArray, at8);
    QFETCH(QByteArray, at12);
    DialogProbe d;
    d.m_columnGains = {gain};
    d.m_rowGains = {1.0, gain};
    const QByteArray narrow = save(d);
    QVERIFY2(narrow.endsWith("HEX Value\n1," + at8 + "\n" + RowHeading + "1,256\n2," + at8 + "\n"), narrow);
    d.ui.cBoxPrecision->setCurrentIndex(1);
    QFile::remove(m_path);
    const QByteArray wide = save(d);
    QVERIFY2(wide.endsWith("HEX Value\n1," + at12 + "\n" + RowHeading + "1,4096\n2," + at12 + "\n"), wide);
}

void TestSaveFfc::listsAreWrittenAsTheyAre_data()
{
    QTest::addColumn<std::list<double>>("columns");
    QTest::addColumn<std::list<double>>("rows");
    QTest::addColumn<QByteArray>("tables");
    QTest::newRow("empty lists give no entries") << std::list<double>{} << std::list<double>{} << RowHeading;
    QTest::newRow("columns only") << std::list<double>{1, 2} << std::list<double>{}
                                  << "1,256\n2,512\n" + RowHeading;
    QTest::newRow("lists of another size than the frame")
        << std::list<double>(3, 1.0) << std::list<double>(2, 1.0)
        << "1,256\n2,256\n3,256\n" + RowHeading + "1,256\n2,256\n";
}

void TestSaveFfc::listsAreWrittenAsTheyAre()
{
    QFETCH(std::list<double>, columns);
    QFETCH(std::list<double>, rows);
    QFETCH(QByteArray, tables);
    DialogProbe d;
    d.take(TestFrame::even(8, 8, 8, 100));
    d.m_columnGains = columns;
    d.m_rowGains = rows;
    const QByteArray text = save(d);
    QCOMPARE(text, header("Lab 3", "ZC-4", d.m_date.toLatin1()) + tables);
}

void TestSaveFfc::everyOtherPrecisionIsTwelveBits()
{
    DialogProbe d;
    d.m_columnGains = {1.5};
    d.ui.cBoxPrecision->setCurrentIndex(-1);
    const QByteArray none = save(d);
    QVERIFY2(none.endsWith("HEX Value\n1,6144\n" + RowHeading), none);
    d.ui.cBoxPrecision->addItem(QStringLiteral("16 bit"));
    d.ui.cBoxPrecision->setCurrentIndex(2);
    QFile::remove(m_path);
    const QByteArray third = save(d);
    QVERIFY2(third.endsWith("HEX Value\n1,6144\n" + RowHeading), third);
}

void TestSaveFfc::headerTextsAreNotEscaped_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("camera");
    QTest::newRow("commas and dashes") << "a, b -- c"
                                       << "x,y";
    QTest::newRow("a newline") << "first\n:Table,"
                               << "ZC-4";
    QTest::newRow("blanks") << "  "
                            << " ZC ";
}

void TestSaveFfc::headerTextsAreNotEscaped()
{
    QFETCH(QString, title);
    QFETCH(QString, camera);
    DialogProbe d;
    ModalWatch watch;
    watch.chosenFile = m_path;
    d.ui.lETitle->setText(title);
    d.ui.lECamera->setText(camera);
    d.DoSaveFFC();
    QCOMPARE(contentOf(m_path),
             header(title.toLatin1(), camera.toLatin1(), d.m_date.toLatin1()) + RowHeading);
}

void TestSaveFfc::headerTextsFollowTheLocalesCodec_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("UTF-8") << QByteArray("UTF-8")
                           << QByteArray("Pr\xC3\xBC"
                                         "fung");
    QTest::newRow("Latin-1") << QByteArray("ISO-8859-1")
                             << QByteArray("Pr\xFC"
                                           "fung");
}

void TestSaveFfc::headerTextsFollowTheLocalesCodec()
{
    QFETCH(QByteArray, codec);
    QFETCH(QByteArray, bytes);
    DialogProbe d;
    ModalWatch watch;
    watch.chosenFile = m_path;
    d.ui.lETitle->setText(QStringLiteral("Pr\u00FCfung"));
    d.ui.lECamera->setText(QStringLiteral("ZC-4"));
    QTextCodec* const before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName(codec));
    d.DoSaveFFC();
    QTextCodec::setCodecForLocale(before);
    QCOMPARE(contentOf(m_path), header(bytes, "ZC-4", d.m_date.toLatin1()) + RowHeading);
}

void TestSaveFfc::dateIsTodays()
{
    DialogProbe d;
    QByteArray before;
    QByteArray after;
    QByteArray text;
    // Once more when midnight falls into the save.
    do {
        before = QLocale::c().toString(QDate::currentDate(), QStringLiteral("M/dd/yy")).toLatin1();
        QFile::remove(m_path);
        text = save(d);
        after = QLocale::c().toString(QDate::currentDate(), QStringLiteral("M/dd/yy")).toLatin1();
    } while (before != after);
    QVERIFY2(text.contains("\ndate " + before + ",\n"), text);
    QCOMPARE(d.m_date.toLatin1(), before);
}

void TestSaveFfc::missingTextStopsBeforeTheFileDialog_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("camera");
    QTest::addColumn<QString>("box");
    QTest::newRow("no title") << ""
                              << "ZC-4"
                              << "Define Title of file";
    QTest::newRow("no camera") << "Lab 3"
                               << ""
                               << "Define Camera type";
    QTest::newRow("neither: the title is asked for first") << ""
                                                           << ""
                                                           << "Define Title of file";
}

void TestSaveFfc::missingTextStopsBeforeTheFileDialog()
{
    QFETCH(QString, title);
    QFETCH(QString, camera);
    QFETCH(QString, box);
    DialogProbe d;
    ModalWatch watch;
    bool orphan = false;
    watch.onBox = [&](QMessageBox& shown) { orphan = shown.isModal() && !shown.parent(); };
    watch.chosenFile = m_path;
    d.ui.lETitle->setText(title);
    d.ui.lECamera->setText(camera);
    d.ui.pBSave->click();
    QCOMPARE(watch.texts, QStringList(box));
    QVERIFY(orphan);
    QCOMPARE(watch.fileDialogs, 0);
    QVERIFY(!QFile::exists(m_path));
}

void TestSaveFfc::textsAreStoredBeforeTheyAreTested()
{
    DialogProbe d;
    ModalWatch watch;
    d.m_title = QStringLiteral("old");
    d.ui.lECamera->setText(QStringLiteral("ZC-4"));
    d.DoSaveFFC();
    QVERIFY(d.m_title.isEmpty());
    QCOMPARE(d.m_camera, QStringLiteral("ZC-4"));
    QVERIFY(d.m_date.isEmpty());
}

void TestSaveFfc::fileDialogProposesTheCamera()
{
    DialogProbe d;
    ModalWatch watch;
    QString caption, folder, proposed;
    QStringList filters;
    bool orphan = false;
    QFileDialog::Options options;
    watch.onFileDialog = [&](QFileDialog& dialog) {
        caption = dialog.windowTitle();
        folder = dialog.directory().absolutePath();
        proposed = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
        filters = dialog.nameFilters();
        orphan = !dialog.parent();
        options = dialog.options();
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptSave);
    };
    d.ui.lETitle->setText(QStringLiteral("Lab 3"));
    d.ui.lECamera->setText(QStringLiteral("ZC-4"));
    d.DoSaveFFC();
    QCOMPARE(watch.fileDialogs, 1);
    QCOMPARE(caption, QStringLiteral("Save Flat Field Coefficients"));
    QCOMPARE(folder, QCoreApplication::applicationDirPath());
    QCOMPARE(proposed, QStringLiteral("ZC-4"));
    QCOMPARE(filters, QStringList({"Flat Field Coefficients (*.ffc)", "All Files(*.*)"}));
    QVERIFY(orphan);
    QCOMPARE(options & ~QFileDialog::DontUseNativeDialog, QFileDialog::Options());
}

void TestSaveFfc::cancelWritesNothing()
{
    DialogProbe d;
    ModalWatch watch;
    d.ui.lETitle->setText(QStringLiteral("Lab 3"));
    d.ui.lECamera->setText(QStringLiteral("ZC-4"));
    d.DoSaveFFC();
    QCOMPARE(watch.fileDialogs, 1);
    QVERIFY(watch.texts.isEmpty());
    QVERIFY(d.m_date.isEmpty());
    QVERIFY(!QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/ZC-4")));
}

void TestSaveFfc::existingFileIsOverwritten()
{
    QFile old(m_path);
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write(QByteArray(5000, 'x'));
    old.close();
    DialogProbe d;
    ModalWatch watch;
    watch.chosenFile = m_path;
    d.ui.lETitle->setText(QStringLiteral("T"));
    d.ui.lECamera->setText(QStringLiteral("C"));
    d.DoSaveFFC();
    // The one question is the file dialog's own.
    QCOMPARE(watch.texts.size(), 1);
    QCOMPARE(contentOf(m_path), header("T", "C", d.m_date.toLatin1()) + RowHeading);
}

void TestSaveFfc::unwritableFileGivesNoMessage()
{
    // A folder takes the file's place while the file dialog is closing, so that the file can't be opened.
    DialogProbe d;
    ModalWatch watch;
    watch.chosenFile = m_path;
    watch.onFileDialog = [&](QFileDialog& dialog) {
        connect(&dialog, &QDialog::accepted, &dialog, [this] { QDir().mkpath(m_path); });
    };
    d.ui.lETitle->setText(QStringLiteral("T"));
    d.ui.lECamera->setText(QStringLiteral("C"));
    d.DoSaveFFC();
    QVERIFY(QFileInfo(m_path).isDir());
    QVERIFY(watch.texts.isEmpty());
    QVERIFY(!d.m_date.isEmpty());
}

void TestSaveFfc::fullDeviceGivesNoMessage()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QSKIP("this system has no device that is always full");
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), m_path));
    DialogProbe d;
    // More than any buffer of the stream holds.
    d.m_columnGains.assign(100000, 1.0);
    ModalWatch watch;
    watch.chosenFile = m_path;
    d.ui.lETitle->setText(QStringLiteral("T"));
    d.ui.lECamera->setText(QStringLiteral("C"));
    d.DoSaveFFC();
    // The one question is the file dialog's own.
    QCOMPARE(watch.texts.size(), 1);
    QVERIFY(!d.m_date.isEmpty());
}

void TestSaveFfc::saveBeforeTheNextRunWritesTheOldGains()
{
    DialogProbe d;
    d.take(TestFrame(2, 1, 8, [](int x, int) { return x == 0 ? 50U : 100U; }));
    d.Update();
    d.take(TestFrame::even(5, 5, 12, 9));
    const QByteArray text = save(d);
    QVERIFY2(text.endsWith("HEX Value\n1,512\n2,256\n" + RowHeading + "1,256\n"), text);
}

void TestSaveFfc::saveAfterAResetWritesTheLastGains()
{
    DialogProbe d;
    d.take(TestFrame(2, 1, 8, [](int x, int) { return x == 0 ? 50U : 100U; }));
    d.Update();
    d.ResetData(false);
    const QByteArray text = save(d);
    QVERIFY2(text.endsWith("HEX Value\n1,512\n2,256\n" + RowHeading + "1,256\n"), text);
}

QTEST_MAIN(TestSaveFfc)
#include "tst_save_ffc.moc"
