#include "tests/plugin/LoadedUtility.h"
#include "tests/plugin/LostHeaders.h"
#include "tests/support/Cursors.h"
#include "tests/support/ModalWatch.h"
#include "tests/support/NotifiedHost.h"

#include <QCloseEvent>
#include <QLibrary>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <QtPlugin>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

constexpr int NoDialog = 4;

/// Makes this program a host that exits, with this code.
const char* const ExitArgument = "--exit";
constexpr int ExitCode = 42;

int argumentCount = 1;
char programName[] = "tst_odd_hosts";
char* arguments[] = {programName, nullptr};

/// The operator closes the dialog's window.
void closeWindow(QDialog* dialog)
{
    QCloseEvent event;
    QCoreApplication::sendEvent(dialog->windowHandle(), &event);
}

} // namespace

/// Hosts that end or let go at awkward moments. Each test is the whole life of an application and of the
/// library in it, as the host sees them.
class TestOddHosts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void applicationEndsWithoutRelease_data();
    void applicationEndsWithoutRelease();
    void nextApplicationEndsWithoutReleaseToo();
    void processExitsWithoutTheEndOfTheApplication();
    void libraryGoesWithoutTheEndOfItsObject();
    void releaseInsideANotification_data();
    void releaseInsideANotification();
    void releaseWhenTheOperatorCloses_data();
    void releaseWhenTheOperatorCloses();
    void newDialogInsideANotification_data();
    void newDialogInsideANotification();
    void releaseInsideARefresh_data();
    void releaseInsideARefresh();
    void releaseInsideTheBoxOfAFrame();
    void releaseInsideASave_data();
    void releaseInsideASave();
    void releaseWhileAMenuIsOpen();
    void requestsInsideARefreshAreCarriedOut();

private:
    /// The library and a host of it, with its dialog made.
    struct Hosted
    {
        Hosted() { plugIn.Init(NotifiedHost::call, &host); }
        /// Releases; the dialog that was there has to stay while it is in use.
        void releaseInUse()
        {
            const QPointer<QDialog> used = utilityDialog();
            plugIn.Release();
            answer = plugIn.Show(true);
            stayed = !used.isNull();
        }

        NotifiedHost host;
        LoadedUtility utility;
        ZBKInterfacePlugIn& plugIn = utility.plugIn();
        int answer = -1;
        bool stayed = false;
    };

    std::unique_ptr<QApplication> m_application;
};

void TestOddHosts::init()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_application = std::make_unique<QApplication>(argumentCount, arguments);
}

void TestOddHosts::cleanup()
{
    if (m_application)
        QCOMPARE(restoreAllCursors(), 0);
    m_application.reset();
    QVERIFY(!LoadedUtility::isMapped());
    releaseLostHeaders();
}

void TestOddHosts::applicationEndsWithoutRelease_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("with the dialog open") << true;
    QTest::newRow("with the dialog never shown") << false;
}

void TestOddHosts::applicationEndsWithoutRelease()
{
    QFETCH(bool, shown);
    Hosted hosted;
    if (shown) {
        hosted.plugIn.Show(true);
        hosted.utility.show(TestFrame::rising(40));
        clickInUtility("chBHighlights");
    }
    m_application.reset();
    // The dialog is gone, and what a host may still call does nothing.
    QCOMPARE(hosted.plugIn.Show(true), NoDialog);
    QCOMPARE(hosted.plugIn.Update(), 0);
    hosted.plugIn.Reset();
    QCOMPARE(hosted.plugIn.Release(), 0);
    QVERIFY(!hosted.host.codes.contains(ZBKEventDialogClosed));
}

void TestOddHosts::nextApplicationEndsWithoutReleaseToo()
{
    Hosted hosted;
    for (int i = 0; i < 2; ++i) {
        hosted.plugIn.Init(NotifiedHost::call, &hosted.host);
        hosted.plugIn.Show(true);
        const QPointer<QDialog> dialog = utilityDialog();
        QVERIFY(dialog);
        m_application.reset();
        QVERIFY(!dialog);
        m_application = std::make_unique<QApplication>(argumentCount, arguments);
    }
}

void TestOddHosts::processExitsWithoutTheEndOfTheApplication()
{
    QProcess host;
    // What a process leaves behind when it exits is no leak.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    host.setProcessEnvironment(environment);
    host.setProcessChannelMode(QProcess::ForwardedChannels);
    host.start(QCoreApplication::applicationFilePath(), {QLatin1String(ExitArgument)});
    QVERIFY(host.waitForFinished());
    QCOMPARE(host.exitStatus(), QProcess::NormalExit);
    QCOMPARE(host.exitCode(), ExitCode);
}

// A host with a loader of its own, which knows of no object.
void TestOddHosts::libraryGoesWithoutTheEndOfItsObject()
{
    QLibrary library(QStringLiteral(ZOR_PLUGIN_FILE));
    const auto instance = reinterpret_cast<QtPluginInstanceFunction>(library.resolve("qt_plugin_instance"));
    QVERIFY(instance);
    // Kept where the leak checker finds it; the compiler drops a plain variable that nobody reads later.
    static QObject* volatile object = nullptr;
    object = instance();
    auto* plugIn = qobject_cast<ZBKInterfacePlugIn*>(static_cast<QObject*>(object));
    plugIn->Init(nullptr, nullptr);
    plugIn->Show(true);
    plugIn->Release();
    QVERIFY(library.unload());
    QVERIFY(!LoadedUtility::isMapped());
    m_application.reset();
}

void TestOddHosts::releaseInsideANotification_data()
{
    QTest::addColumn<bool>("opens");
    QTest::newRow("when the dialog opens") << true;
    QTest::newRow("when the dialog closes") << false;
}

void TestOddHosts::releaseInsideANotification()
{
    QFETCH(bool, opens);
    Hosted hosted;
    const std::uint32_t awaited = opens ? ZBKEventDialogOpened : ZBKEventDialogClosed;
    hosted.host.onCode = [&](std::uint32_t code) {
        hosted.utility.show(TestFrame::rising(40));
        if (code == awaited)
            hosted.releaseInUse();
    };
    hosted.plugIn.Show(true);
    if (!opens)
        hosted.plugIn.Show(false);
    QCOMPARE(hosted.answer, NoDialog);
    QVERIFY(hosted.stayed);
    QVERIFY(!utilityDialog());
    QCOMPARE(hosted.host.codes.last(), awaited);
    QCOMPARE(hosted.host.codes.size(), opens ? 1 : 2);
}

void TestOddHosts::releaseWhenTheOperatorCloses_data()
{
    QTest::addColumn<QString>("then");
    QTest::newRow("and the event loop runs on") << "loop";
    QTest::newRow("and the library is unloaded") << "unload";
    QTest::newRow("and the application ends") << "end";
}

void TestOddHosts::releaseWhenTheOperatorCloses()
{
    QFETCH(QString, then);
    Hosted hosted;
    hosted.plugIn.Show(true);
    hosted.utility.show(TestFrame::rising(40));
    hosted.host.onCode = [&](std::uint32_t) { hosted.releaseInUse(); };
    const QPointer<QDialog> dialog = utilityDialog();
    closeWindow(dialog);
    QCOMPARE(hosted.answer, NoDialog);
    QVERIFY(hosted.stayed);
    if (then == "loop")
        QCoreApplication::processEvents();
    else if (then == "unload")
        QVERIFY(hosted.utility.unload());
    else
        m_application.reset();
    QVERIFY(!dialog);
}

void TestOddHosts::newDialogInsideANotification_data()
{
    releaseInsideANotification_data();
}

void TestOddHosts::newDialogInsideANotification()
{
    QFETCH(bool, opens);
    Hosted hosted;
    const QPointer<QDialog> first = utilityDialog();
    const std::uint32_t awaited = opens ? ZBKEventDialogOpened : ZBKEventDialogClosed;
    hosted.host.onCode = [&](std::uint32_t code) {
        if (code != awaited || hosted.stayed)
            return;
        hosted.plugIn.Release();
        hosted.stayed = !first.isNull();
        hosted.plugIn.Init(NotifiedHost::call, &hosted.host);
        hosted.plugIn.Show(true);
        hosted.utility.show(TestFrame::rising(40));
    };
    hosted.plugIn.Show(true);
    if (!opens)
        hosted.plugIn.Show(false);
    QVERIFY(hosted.stayed);
    QVERIFY(!first);
    QDialog* second = utilityDialog();
    QVERIFY(second && second->isVisible());
    hosted.utility.show(TestFrame::rising(30));
    QCOMPARE(hosted.plugIn.Show(false), 0);
    QCOMPARE(hosted.host.codes.last(), ZBKEventDialogClosed);
}

void TestOddHosts::releaseInsideARefresh_data()
{
    QTest::addColumn<bool>("operatorAsks");
    QTest::addColumn<bool>("goesOn");
    QTest::newRow("of the host's update") << false << false;
    QTest::newRow("of a click on Update") << true << false;
    QTest::newRow("of the host's update, then a new dialog") << false << true;
    QTest::newRow("of a click on Update, then a new dialog") << true << true;
}

void TestOddHosts::releaseInsideARefresh()
{
    QFETCH(bool, operatorAsks);
    QFETCH(bool, goesOn);
    Hosted hosted;
    hosted.plugIn.Show(true);
    TestFrame frame = TestFrame::rising(40);
    _ZorImage record = frame.record();
    hosted.plugIn.SetImage(&record);
    const QPointer<QDialog> dialog = utilityDialog();
    // The start of the viewers lets events in.
    bool isInside = false;
    QTimer::singleShot(0, [&] {
        isInside = QGuiApplication::overrideCursor() != nullptr;
        hosted.releaseInUse();
        if (!goesOn)
            return;
        hosted.plugIn.Init(NotifiedHost::call, &hosted.host);
        hosted.plugIn.Show(true);
        hosted.utility.show(TestFrame::rising(30));
    });
    if (operatorAsks) {
        clickInUtility("pBUpdate");
        QCoreApplication::processEvents();
    } else {
        QCOMPARE(hosted.plugIn.Update(), 0);
    }
    QVERIFY(isInside);
    QVERIFY(hosted.stayed);
    QCOMPARE(hosted.answer, NoDialog);
    QVERIFY(!dialog);
    QCOMPARE(utilityDialog() != nullptr, goesOn);
}

void TestOddHosts::releaseInsideTheBoxOfAFrame()
{
    Hosted hosted;
    hosted.plugIn.Show(true);
    ModalWatch watch;
    watch.onBox = [&](QMessageBox&) { hosted.releaseInUse(); };
    TestFrame frame = TestFrame::rising(40);
    _ZorImage record = frame.record();
    record.pixelType = 0;
    QCOMPARE(hosted.plugIn.SetImage(&record), 0);
    QCOMPARE(watch.texts, QStringList("Converter error!"));
    QVERIFY(hosted.stayed);
    QVERIFY(!utilityDialog());
}

void TestOddHosts::releaseInsideASave_data()
{
    QTest::addColumn<bool>("titled");
    QTest::newRow("while the box asks for the title") << false;
    QTest::newRow("while the file dialog is open") << true;
}

void TestOddHosts::releaseInsideASave()
{
    QFETCH(bool, titled);
    Hosted hosted;
    hosted.plugIn.Show(true);
    if (titled) {
        static_cast<QLineEdit*>(findInUtility("lETitle"))->setText(QStringLiteral("T"));
        static_cast<QLineEdit*>(findInUtility("lECamera"))->setText(QStringLiteral("C"));
    }
    ModalWatch watch;
    watch.onBox = [&](QMessageBox&) { hosted.releaseInUse(); };
    watch.onFileDialog = [&](QFileDialog&) { hosted.releaseInUse(); };
    const QPointer<QDialog> dialog = utilityDialog();
    clickInUtility("pBSave");
    QCOMPARE(watch.fileDialogs, titled ? 1 : 0);
    QVERIFY(hosted.stayed);
    QCOMPARE(hosted.answer, NoDialog);
    QCoreApplication::processEvents();
    QVERIFY(!dialog);
}

void TestOddHosts::releaseWhileAMenuIsOpen()
{
    Hosted hosted;
    hosted.plugIn.Show(true);
    hosted.utility.show(TestFrame::rising(40));
    QVERIFY(LoadedUtility::openMenu([&] { hosted.plugIn.Release(); }));
    QVERIFY(!utilityDialog());
}

void TestOddHosts::requestsInsideARefreshAreCarriedOut()
{
    Hosted hosted;
    hosted.plugIn.Show(true);
    TestFrame frame = TestFrame::rising(40);
    _ZorImage record = frame.record();
    hosted.plugIn.SetImage(&record);
    bool isInside = false;
    QTimer::singleShot(0, [&] {
        isInside = QGuiApplication::overrideCursor() != nullptr;
        hosted.plugIn.Update();
        clickInUtility("chBHighlights");
        hosted.plugIn.Reset();
    });
    hosted.plugIn.Update();
    QVERIFY(isInside);
    // A frame that comes after the reset is the only one.
    hosted.utility.show(TestFrame::rising(30));
    hosted.plugIn.Release();
    QVERIFY(!utilityDialog());
}

/// The life of the other process.
static void exitWithTheDialogOpen()
{
    QApplication application(argumentCount, arguments);
    {
        QPluginLoader loader(QStringLiteral(ZOR_PLUGIN_FILE));
        auto* plugIn = qobject_cast<ZBKInterfacePlugIn*>(loader.instance());
        plugIn->Init(nullptr, nullptr);
        plugIn->Show(true);
    }
    std::exit(ExitCode);
}

int main(int argc, char* argv[])
{
    if (argc == 2 && std::strcmp(argv[1], ExitArgument) == 0)
        exitWithTheDialogOpen();
    TestOddHosts hosts;
    return QTest::qExec(&hosts, argc, argv);
}

#include "tst_odd_hosts.moc"
