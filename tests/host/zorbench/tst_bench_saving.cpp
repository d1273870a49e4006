#include "image/unpack/NativeCodes.h"
#include "tests/host/zorbench/Bench.h"
#include "tests/host/zorbench/MadeFrame.h"
#include "tests/support/ModalWatch.h"

#include <QFileDialog>
#include <QtTest>

#include <csignal>

#include <sys/resource.h>

/// "Save frame…" of the file menu.
class TestBenchSaving : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void thereIsNothingToSaveWithoutAFrame();
    void theFrameComesBack_data();
    void theFrameComesBack();
    void theDialogOffersWhatTheFormatAllows_data();
    void theDialogOffersWhatTheFormatAllows();
    void theNameIsThatOfTheFile();
    void theFrameThatWasThereIsSaved();
    void aSavedFileIsAmongTheRecentOnes();
    void linksAndPermissionsStay();
    void failuresKeepTheOldFile_data();
    void failuresKeepTheOldFile();
    void aFolderThatMayNotBeWrittenIsTold();
    void theDialogStaysOpenForAnEndingOfNoUse();
    void aFullDeviceIsRefused();
    void aFullDiscKeepsTheOldFile();

private:
    /// Chooses the action and gives the dialog this name.
    static QStringList save(Bench& bench, const QString& file);
    static QByteArray read(const QString& file);
};

namespace {

/// What is in the folder, but for the settings, which are written when there is time.
QStringList filesOf(const Bench& bench)
{
    QStringList files = QDir(bench.path(".")).entryList();
    files.removeAll("QtProject.conf");
    files.removeAll("settings.ini");
    return files;
}

} // namespace

QStringList TestBenchSaving::save(Bench& bench, const QString& file)
{
    ModalWatch watch;
    watch.chosenFile = file;
    bench.action("Save frame\u2026")->trigger();
    [&] { QTRY_COMPARE(watch.fileDialogs, 1); }();
    [&] { QTRY_VERIFY(!QApplication::activeModalWidget()); }();
    return watch.texts;
}

QByteArray TestBenchSaving::read(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void TestBenchSaving::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestBenchSaving::thereIsNothingToSaveWithoutAFrame()
{
    Bench bench;
    QVERIFY(!bench.action("Save frame\u2026")->isEnabled());
    bench.open(bench.write("flat.pgm", countedPgm(4, 3)));
    QVERIFY(bench.action("Save frame\u2026")->isEnabled());
}

void TestBenchSaving::theFrameComesBack_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QString>("name");
    QTest::newRow("mono as PGM") << QByteArray("Mono12") << "a.pgm";
    QTest::newRow("mono as PNG") << QByteArray("Mono8") << "a.png";
    QTest::newRow("mono as TIFF") << QByteArray("Mono16") << "a.tiff";
    QTest::newRow("colour as PPM") << QByteArray("RGB8") << "a.ppm";
    QTest::newRow("colour as PNG") << QByteArray("RGB12") << "a.PNG";
    QTest::newRow("a colour filter as PGM") << QByteArray("BayerRG10") << "a.pgm";
    QTest::newRow("packed as PGM") << QByteArray("Mono12p") << "a.pgm";
    QTest::newRow("packed as raw dump") << QByteArray("Mono12Packed") << "a.raw";
    QTest::newRow("luma and colour differences as raw dump") << QByteArray("YUV422_8") << "a.bin";
}

// What was saved, read again, and saved as it was read gives the same codes in the same file.
void TestBenchSaving::theFrameComesBack()
{
    QFETCH(QByteArray, format);
    QFETCH(QString, name);
    Bench bench;
    const auto frame = madeFrame(format.constData(), 10, 6);
    bench.view().setFrame(frame);
    const QString file = bench.path(qPrintable(name));
    QCOMPARE(save(bench, file), QStringList());

    zor::FrameOptions options;
    if (!name.endsWith(".raw") && !name.endsWith(".bin"))
        options.raw.reset();
    else
        options.raw = zor::RawLayout{format.toStdString(), 10, 6, {}, false};
    const zor::Frame back = zor::readFrame(file.toStdString(), options);
    QCOMPARE(back.width, 10U);
    QCOMPARE(back.height, 6U);
    for (unsigned y = 0; y < 6; ++y) {
        for (unsigned x = 0; x < 10; ++x) {
            const zor::NativeCodes codes = zor::nativeCodes(frame->record(), x, y);
            QVERIFY(codes.count > 0);
            QVERIFY(zor::nativeCodes(back.record(), x, y).codes == codes.codes);
        }
    }
}

void TestBenchSaving::theDialogOffersWhatTheFormatAllows_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QStringList>("filters");
    const QString png = "PNG picture (*.png)";
    const QString tiff = "TIFF picture (*.tiff *.tif)";
    const QString raw = "Raw dump (*.raw *.bin)";
    QTest::newRow("mono") << QByteArray("Mono12") << QStringList{"PGM picture (*.pgm)", png, tiff, raw};
    QTest::newRow("a colour filter") << QByteArray("BayerGR8")
                                     << QStringList{"PGM picture (*.pgm)", png, tiff, raw};
    QTest::newRow("colour") << QByteArray("RGB8") << QStringList{"PPM picture (*.ppm)", png, tiff, raw};
    QTest::newRow("luma and colour differences") << QByteArray("YUV422_8") << QStringList{raw};
}

void TestBenchSaving::theDialogOffersWhatTheFormatAllows()
{
    QFETCH(QByteArray, format);
    QFETCH(QStringList, filters);
    Bench bench;
    bench.view().setFrame(madeFrame(format.constData(), 10, 6));
    bench.action("Save frame\u2026")->trigger();
    auto* dialog = bench.window().findChild<QFileDialog*>();
    QVERIFY(dialog);
    QCOMPARE(dialog->nameFilters(), filters);
    QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
    // A name without an ending gets the chosen kind's.
    const QString last = filters.last();
    QVERIFY(filters.first().contains("*." + dialog->defaultSuffix()));
    emit dialog->filterSelected(last);
    QCOMPARE(dialog->defaultSuffix(), QString("raw"));
    dialog->reject();
}

void TestBenchSaving::theNameIsThatOfTheFile()
{
    Bench bench;
    bench.open(bench.write("flat.v2.png", countedPgm(4, 3)));
    bench.action("Save frame\u2026")->trigger();
    auto* dialog = bench.window().findChild<QFileDialog*>();
    QCOMPARE(dialog->selectedFiles(), QStringList(bench.path("flat.v2.pgm")));
    dialog->reject();
    // Never one that is there.
    bench.open(bench.write("100 %1.pgm", countedPgm(4, 3)));
    bench.write("100 %1-2.pgm", "old");
    ModalWatch watch;
    QString offered;
    watch.onFileDialog = [&offered](QFileDialog& next) { offered = next.selectedFiles().value(0); };
    bench.action("Save frame\u2026")->trigger();
    QTRY_COMPARE(offered, bench.path("100 %1-3.pgm"));
}

void TestBenchSaving::theFrameThatWasThereIsSaved()
{
    Bench bench;
    bench.open(bench.write("first.pgm", countedPgm(4, 3)));
    bench.action("Save frame\u2026")->trigger();
    bench.open(bench.write("second.pgm", countedPgm(2, 2)));
    auto* dialog = bench.window().findChild<QFileDialog*>();
    emit dialog->fileSelected(bench.path("a.pgm"));
    dialog->reject();
    QCOMPARE(read(bench.path("a.pgm")), countedPgm(4, 3));
}

void TestBenchSaving::aSavedFileIsAmongTheRecentOnes()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(4, 3)));
    QVERIFY(QDir(bench.path(".")).mkdir("other"));
    const QString file = bench.path("other/b.png");
    const QStringList texts = save(bench, file);
    QVERIFY2(texts.isEmpty(), qPrintable(texts.join('\n')));
    QCOMPARE(zor::RecentFiles(bench.settings()).files(), (QStringList{file, bench.path("flat.pgm")}));
    // The next dialog begins there.
    bench.action("Save frame\u2026")->trigger();
    auto* dialog = bench.window().findChild<QFileDialog*>();
    QCOMPARE(dialog->directory().absolutePath(), bench.path("other"));
    dialog->reject();
}

void TestBenchSaving::linksAndPermissionsStay()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(4, 3)));
    const QString target = bench.write("target.pgm", "old");
    const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QVERIFY(QFile::setPermissions(target, permissions));
    const QString link = bench.path("link.pgm");
    QVERIFY(QFile::link(target, link));
    // The dialog asks whether to replace it.
    QCOMPARE(save(bench, link).size(), 1);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(read(target), countedPgm(4, 3));
    QCOMPARE(QFile::permissions(target), permissions);
}

void TestBenchSaving::failuresKeepTheOldFile_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("problem");
    QTest::newRow("a folder that is not there")
        << QByteArray("gone/a.pgm") << ": cannot be written: there is no folder %1; make it first";
    QTest::newRow("a kind that the frame does not go into")
        << QByteArray("a.ppm")
        << ": is no file for a frame in Mono8; use a name that ends in .pgm, .png, .tiff, .tif, .raw or .bin";
    QTest::newRow("a folder") << QByteArray("folder.pgm") << ": is a folder; give a file name";
}

void TestBenchSaving::failuresKeepTheOldFile()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, problem);
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(4, 3)));
    QVERIFY(QDir(bench.path(".")).mkdir("folder.pgm"));
    const QStringList before = filesOf(bench);
    const QString file = bench.path(name);
    ModalWatch watch;
    // The dialog's own questions are not of interest: what it may hand over is refused.
    bench.action("Save frame\u2026")->trigger();
    auto* dialog = bench.window().findChild<QFileDialog*>();
    emit dialog->fileSelected(file);
    dialog->reject();
    QTRY_COMPARE(watch.texts,
                 QStringList(file + QString(problem).replace("%1", QFileInfo(file).absolutePath())));
    QCOMPARE(filesOf(bench), before);
    QVERIFY(bench.window().isVisible());
}

void TestBenchSaving::theDialogStaysOpenForAnEndingOfNoUse()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(4, 3)));
    ModalWatch watch;
    watch.chosenFile = bench.path("a.ppm");
    bench.action("Save frame\u2026")->trigger();
    QTRY_COMPARE(watch.texts.size(), 1);
    QVERIFY2(watch.texts.first().startsWith(watch.chosenFile + ": is no file for a frame in Mono8; "),
             qPrintable(watch.texts.first()));
    auto* dialog = bench.window().findChild<QFileDialog*>();
    QTRY_COMPARE(QApplication::activeModalWidget(), dialog);
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(bench.path("a.png"));
    QMetaObject::invokeMethod(dialog, "accept");
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QVERIFY(QFile::exists(bench.path("a.png")));
    QCOMPARE(watch.texts.size(), 1);
}

// Room would be of no help. The super-user may write everywhere, but nobody into the folder of the processes.
void TestBenchSaving::aFolderThatMayNotBeWrittenIsTold()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(4, 3)));
    ModalWatch watch;
    bench.action("Save frame\u2026")->trigger();
    auto* dialog = bench.window().findChild<QFileDialog*>();
    emit dialog->fileSelected("/proc/a.pgm");
    dialog->reject();
    QTRY_COMPARE(watch.texts.size(), 1);
    QVERIFY2(watch.texts.first().startsWith("/proc/a.pgm: cannot be written: ") &&
                 watch.texts.first().endsWith("; choose another folder"),
             qPrintable(watch.texts.first()));
}

void TestBenchSaving::aFullDeviceIsRefused()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(4, 3)));
    const QString link = bench.path("full.pgm");
    QVERIFY(QFile::link("/dev/full", link));
    ModalWatch watch;
    bench.action("Save frame\u2026")->trigger();
    auto* dialog = bench.window().findChild<QFileDialog*>();
    emit dialog->fileSelected(link);
    dialog->reject();
    QTRY_COMPARE(watch.texts, QStringList(link + ": is not a regular file; give another file name"));
    QVERIFY(!QFileInfo("/dev/full").isFile());
}

// A limit on the size of files does what a full disc does, at a place in the middle of the frame.
void TestBenchSaving::aFullDiscKeepsTheOldFile()
{
    Bench bench;
    bench.view().setFrame(madeFrame("Mono16", 1000, 200));
    const QString file = bench.write("old.pgm", "old");
    const QStringList before = filesOf(bench);
    const auto normally = ::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const rlimit limited{100000, unlimited.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limited), 0);
    const QStringList texts = save(bench, file);
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &unlimited), 0);
    ::signal(SIGXFSZ, normally);
    QCOMPARE(texts.size(), 2); // after the question whether to replace it
    QCOMPARE(texts.last(), file + ": cannot be written: File too large; make room or choose another folder");
    QCOMPARE(read(file), QByteArray("old"));
    QCOMPARE(filesOf(bench), before);
}

QTEST_MAIN(TestBenchSaving)
#include "tst_bench_saving.moc"
