#include "tests/host/zorbench/Bench.h"
#include "tests/plugin/UtilityDialog.h"
#include "tests/support/ModalWatch.h"
#include "tests/support/PlotLook.h"

#include "host/zorbench/BenchFont.h"
#include "host/zorbench/PlugInFolder.h"

#include <QApplication>
#include <QCheckBox>
#include <QLibrary>
#include <QLineEdit>
#include <QMessageBox>
#include <QPluginLoader>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

#include <qwt_plot.h>

#include <sys/stat.h>

namespace {

/// Columns of the frame that the utility has computed; 0 when it shows none.
int computedWidth()
{
    const QwtPlotCurve* curve = curveIn(utilityDialog()->findChild<QwtPlot*>("PlotUp"), "Up X");
    return curve ? static_cast<int>(curve->dataSize()) : 0;
}

} // namespace

/// The built utility in the workbench, and files in its folder that are of no use.
class TestBenchPlugIns : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theUtilityOpensOnTheFrame();
    void anOpenUtilityFollowsTheFrame();
    void aClosedUtilityOpensAgain_data();
    void aClosedUtilityOpensAgain();
    void gainsAreSaved();
    void theWindowCanBeClosedWhileTheUtilityIsOpen();
    void theWindowCanBeClosedUnderABoxOfTheUtility();
    void theFrameThatCameLastReachesTheUtility();
    void filesThatAreNoPlugInsAreToldOnce();
    void filesThatCannotBeReadAreTold();
    void aLinkBesideThePlugInIsNoSecondOne();
    void aPlugInIsNeverUnloaded();
    void aFolderThatIsNotThereIsTold();
    void nothingOfTheStripIsCut_data();
    void nothingOfTheStripIsCut();

private:
    QTemporaryDir m_folder; ///< with the utility and others
};

void TestBenchPlugIns::initTestCase()
{
    const auto copy = [this](const QString& from, const QString& name) {
        return QFile::copy(from, m_folder.filePath(name));
    };
    QVERIFY(copy(UTILITY, "ZorFFCUtility.so"));
    QVERIFY(copy(OTHER_INTERFACE, "OtherInterface.so"));
    QVERIFY(copy(EMPTY_PROMISE, "EmptyPromise.so"));
    QVERIFY(copy(MISSING_PART, "MissingPart.so"));
    QVERIFY(copy(IMAGE_API, "PlainLibrary.so"));
    QFile text(m_folder.filePath("Text.so"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no library at all\n") > 0);
    QFile readMe(m_folder.filePath("README"));
    QVERIFY(readMe.open(QIODevice::WriteOnly) && readMe.write("what is in here\n") > 0);
}

void TestBenchPlugIns::theUtilityOpensOnTheFrame()
{
    Bench bench(PLUG_IN_FOLDER);
    QAction* action = bench.action("FFC Utility");
    QVERIFY(!action->isChecked());
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    action->trigger();
    QVERIFY(action->isChecked());
    QDialog* dialog = utilityDialog();
    QVERIFY(dialog && dialog->isVisible());
    QCOMPARE(computedWidth(), 6);
}

void TestBenchPlugIns::anOpenUtilityFollowsTheFrame()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.action("FFC Utility")->trigger();
    QCOMPARE(computedWidth(), 0);
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    QCOMPARE(computedWidth(), 6);
    bench.open(bench.write("other.pgm", countedPgm(7, 4)));
    QCOMPARE(computedWidth(), 7);
}

void TestBenchPlugIns::aClosedUtilityOpensAgain_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("closed by its window") << false;
    QTest::newRow("hidden by the escape key, which closes nothing") << true;
}

void TestBenchPlugIns::aClosedUtilityOpensAgain()
{
    QFETCH(bool, byEscape);
    Bench bench(PLUG_IN_FOLDER);
    QAction* action = bench.action("FFC Utility");
    action->trigger();
    if (byEscape)
        QTest::keyClick(utilityDialog(), Qt::Key_Escape);
    else
        utilityDialog()->close();
    QVERIFY(!utilityDialog()->isVisible());
    QCOMPARE(action->isChecked(), byEscape);
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    action->trigger();
    QVERIFY(action->isChecked() && utilityDialog()->isVisible());
    QCOMPARE(computedWidth(), 6);
    // Chosen once more, it stays.
    action->trigger();
    QVERIFY(action->isChecked() && utilityDialog()->isVisible());
}

void TestBenchPlugIns::gainsAreSaved()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.open(bench.write("flat.pgm", "P2 2 2 255 100 200 100 200"));
    bench.action("FFC Utility")->trigger();
    utilityDialog()->findChild<QLineEdit*>("lETitle")->setText("title");
    utilityDialog()->findChild<QLineEdit*>("lECamera")->setText("camera");
    ModalWatch watch;
    watch.chosenFile = bench.path("flat.ffc");
    QTest::mouseClick(utilityDialog()->findChild<QPushButton*>("pBSave"), Qt::LeftButton);
    QFile file(bench.path("flat.ffc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY2(text.contains("title,\ncamera,\n"), text.constData());
}

void TestBenchPlugIns::theWindowCanBeClosedWhileTheUtilityIsOpen()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    bench.action("FFC Utility")->trigger();
    QSignalSpy closed(&bench.window(), &zor::MainWindow::closed);
    bench.window().close();
    QCOMPARE(closed.count(), 1);
    QVERIFY(!utilityDialog());
}

void TestBenchPlugIns::theWindowCanBeClosedUnderABoxOfTheUtility()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    bench.action("FFC Utility")->trigger();
    const QPointer<QDialog> dialog = utilityDialog();
    ModalWatch watch;
    bool wasThere = false;
    watch.onBox = [&](QMessageBox&) {
        bench.window().close();
        wasThere = !dialog.isNull();
    };
    // The utility asks for a title.
    QTest::mouseClick(dialog->findChild<QPushButton*>("pBSave"), Qt::LeftButton);
    QCOMPARE(watch.texts, QStringList("Define Title of file"));
    QVERIFY(wasThere);
    QTRY_VERIFY(!dialog);
}

void TestBenchPlugIns::theFrameThatCameLastReachesTheUtility()
{
    Bench bench(PLUG_IN_FOLDER);
    bench.action("FFC Utility")->trigger();
    const QString second = bench.write("second.pgm", countedPgm(3, 3));
    // Delivered while the viewer of the first frame starts.
    QTimer::singleShot(0, &bench.window(), [&] { bench.window().openFiles({second}); });
    bench.window().openFiles({bench.write("first.pgm", countedPgm(6, 4))});
    QCOMPARE(bench.shownSize(), QSize(3, 3));
    QCOMPARE(computedWidth(), 3);
}

void TestBenchPlugIns::filesThatAreNoPlugInsAreToldOnce()
{
    ModalWatch watch;
    Bench bench(m_folder.path());
    QTRY_COMPARE(watch.texts.size(), 1);
    const QString text = watch.texts.first();
    const auto says = [&](const char* name, const QString& reason) {
        return text.contains(m_folder.filePath(name) + ": " + reason);
    };
    QVERIFY2(text.startsWith("Not every plug-in can be used: "), qPrintable(text));
    QVERIFY2(says("Text.so", "is no plug-in"), qPrintable(text));
    QVERIFY2(says("PlainLibrary.so", "is no plug-in"), qPrintable(text));
    QVERIFY2(says("OtherInterface.so",
                  "has the interface \"com.zorlabs.ZorBench.ZBKInterfacePlugIn/2.0\" in place of "
                  "\"com.zorlabs.ZorBench.ZBKInterfacePlugIn/1.0\""),
             qPrintable(text));
    QVERIFY2(says("EmptyPromise.so", "lacks the interface that it promises"), qPrintable(text));
    QVERIFY2(says("MissingPart.so", "cannot be loaded ("), qPrintable(text));
    QVERIFY2(!text.contains("README") && !text.contains("ZorFFCUtility.so"), qPrintable(text));

    // The others work.
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    bench.action("FFC Utility")->trigger();
    QCOMPARE(computedWidth(), 6);
    QCOMPARE(watch.texts.size(), 1);
}

void TestBenchPlugIns::filesThatCannotBeReadAreTold()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::link("/no/such/library.so", folder.filePath("Gone.so")));
    QCOMPARE(::mkfifo(qPrintable(folder.filePath("Pipe.so")), 0600), 0);
    QVERIFY(QDir(folder.path()).mkdir("Folder.so"));
    const zor::PlugInFolder found = zor::loadPlugIns(folder.path());
    QVERIFY(found.plugIns.isEmpty());
    QCOMPARE(found.refusals, (QStringList{folder.filePath("Gone.so") + ": leads to a file that is not there",
                                          folder.filePath("Pipe.so") + ": is not a regular file"}));
}

void TestBenchPlugIns::aLinkBesideThePlugInIsNoSecondOne()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::link(UTILITY, folder.filePath("First.so")));
    QVERIFY(QFile::link(UTILITY, folder.filePath("Second.so")));
    const zor::PlugInFolder found = zor::loadPlugIns(folder.path());
    QCOMPARE(found.plugIns.size(), 1);
    QCOMPARE(found.refusals, QStringList());
}

void TestBenchPlugIns::aPlugInIsNeverUnloaded()
{
    zor::loadPlugIns(PLUG_IN_FOLDER);
    QVERIFY(QPluginLoader(UTILITY).loadHints() & QLibrary::PreventUnloadHint);
}

void TestBenchPlugIns::aFolderThatIsNotThereIsTold()
{
    const zor::PlugInFolder found = zor::loadPlugIns("/no/such/folder");
    QVERIFY(found.plugIns.isEmpty());
    QCOMPARE(found.refusals, QStringList("/no/such/folder: there is no such folder"));
}

void TestBenchPlugIns::nothingOfTheStripIsCut_data()
{
    QTest::addColumn<int>("pixels"); ///< height of the platform's font; 0: as it is
    QTest::addColumn<bool>("isKept");
    QTest::newRow("in the font of this platform") << 0 << false;
    QTest::newRow("where the platform's font is large") << 16 << false;
    QTest::newRow("where the platform's font is small enough") << 9 << true;
}

void TestBenchPlugIns::nothingOfTheStripIsCut()
{
    QFETCH(int, pixels);
    QFETCH(bool, isKept);
    const QFont before = QApplication::font();
    QFont platform = before;
    if (pixels > 0)
        platform.setPixelSize(pixels);
    QApplication::setFont(platform);
    QApplication::setFont(zor::benchFont());
    const int size = QFontInfo(QApplication::font()).pixelSize();
    QVERIFY2(isKept ? QApplication::font() == platform : size >= 10, qPrintable(QString::number(size)));

    Bench bench(PLUG_IN_FOLDER);
    bench.action("FFC Utility")->trigger();
    const QWidget* strip = utilityDialog()->findChild<QWidget*>("wSettings");
    QCOMPARE(strip->width(), 1174);
    const auto controls = strip->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    int seen = 0;
    for (const QWidget* control : controls) {
        if (!control->isVisible())
            continue;
        ++seen;
        QVERIFY2(control->width() >= control->sizeHint().width() &&
                     control->height() >= control->minimumSizeHint().height(),
                 qPrintable(control->objectName()));
    }
    QCOMPARE(seen, 12);
    QApplication::setFont(before);
}

QTEST_MAIN(TestBenchPlugIns)
#include "tst_bench_plug_ins.moc"
