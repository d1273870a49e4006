#include "plugin/ZBKInterfacePlugIn.h"
#include "tests/plugin/UtilityDialog.h"
#include "tests/support/ModalWatch.h"
#include "tests/support/NotifiedHost.h"
#include "tests/support/TestFrame.h"

#include <QFile>
#include <QLineEdit>
#include <QPluginLoader>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

const char* const InterfaceId = "com.zorlabs.ZorBench.ZBKInterfacePlugIn/1.0";

/// Another host's function.
int noteCode(void* context, std::uint32_t code, ZBKInterfacePlugIn*)
{
    static_cast<QVector<std::uint32_t>*>(context)->append(code);
    return 0;
}

// Qt adds the title and the system menu to what was set.
constexpr unsigned InitFlags =
    0x0800C003U | unsigned(Qt::WindowTitleHint) | unsigned(Qt::WindowSystemMenuHint);

} // namespace

/// The built library as a host sees it: through the loader, the metadata and the interface alone.
class TestPlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void objectIsCastByItsNames_data();
    void objectIsCastByItsNames();
    void classNameAndMembersOfTheObject();
    void nameHasNoLeadingBlank();
    void everythingBeforeInitDoesNothing();
    void initSetsTheWindowFlags();
    void showNotifiesWithContextAndPlugIn();
    void frameOfTheOpenedCallbackIsComputed();
    void imageAloneComputesNothing();
    void unusableImagesLeaveTheFrame_data();
    void unusableImagesLeaveTheFrame();
    void closeAndReopen();
    void operatorsCloseNotifies();
    void nullCallbackWorks();
    void secondInitKeepsTheDialogAndReplacesTheHost();
    void closingAHiddenDialogNotifies();
    void secondInitSetsTheFlagsAnewAndHides();
    void resetKeepsTheDialog();
    void releaseAndNewInit();
    void releaseTwice();
    void hostInfoIsKeptByADialogAlone();
    void resultSlotStaysAsItWas();
    void deletionReleasesTheDialogAndTheNextObjectIsNew();

private:
    /// The gain tables of a save: an empty list when nothing was computed.
    QByteArray savedFile();

    QPluginLoader m_loader{QStringLiteral(ZOR_PLUGIN_FILE)};
    ZBKInterfacePlugIn* m_plugIn = nullptr;
};

void TestPlugin::initTestCase()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    m_plugIn = qobject_cast<ZBKInterfacePlugIn*>(m_loader.instance());
    QVERIFY(m_plugIn);
}

void TestPlugin::cleanup()
{
    m_plugIn->Release();
}

QByteArray TestPlugin::savedFile()
{
    QTemporaryDir folder;
    QDialog* dialog = utilityDialog();
    dialog->findChild<QLineEdit*>(QStringLiteral("lETitle"))->setText(QStringLiteral("T"));
    dialog->findChild<QLineEdit*>(QStringLiteral("lECamera"))->setText(QStringLiteral("C"));
    ModalWatch watch;
    watch.chosenFile = folder.filePath(QStringLiteral("saved.ffc"));
    dialog->findChild<QPushButton*>(QStringLiteral("pBSave"))->click();
    QFile file(watch.chosenFile);
    file.open(QIODevice::ReadOnly);
    const QByteArray text = file.readAll();
    return text.mid(text.indexOf("HEX Value\n") + 10);
}

void TestPlugin::objectIsCastByItsNames_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("result");
    QTest::newRow("its class gives the object") << QByteArray("ZorFFCUtility") << "object";
    QTest::newRow("the interface's class gives the interface")
        << QByteArray("ZBKInterfacePlugIn") << "interface";
    QTest::newRow("the interface's identifier too") << QByteArray(InterfaceId) << "interface";
    QTest::newRow("QObject goes on to QObject") << QByteArray("QObject") << "object";
    QTest::newRow("an unknown name gives null") << QByteArray("CFFCUtility") << "null";
    QTest::newRow("another version of the interface gives null")
        << QByteArray("com.zorlabs.ZorBench.ZBKInterfacePlugIn/1.1") << "null";
    QTest::newRow("a null name gives null") << QByteArray() << "null";
}

void TestPlugin::objectIsCastByItsNames()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, result);
    QObject* object = m_loader.instance();
    const void* cast = object->qt_metacast(name.isNull() ? nullptr : name.constData());
    const void* expected = nullptr;
    if (result == QLatin1String("object"))
        expected = object;
    else if (result == QLatin1String("interface"))
        expected = m_plugIn;
    QCOMPARE(cast, expected);
}

void TestPlugin::classNameAndMembersOfTheObject()
{
    const QObject* object = m_loader.instance();
    const QMetaObject* meta = object->metaObject();
    QCOMPARE(QByteArray(meta->className()), QByteArray("ZorFFCUtility"));
    QCOMPARE(QByteArray(meta->superClass()->className()), QByteArray("QObject"));
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QVERIFY(!object->parent());
    QCOMPARE(m_loader.instance(), object);
}

void TestPlugin::nameHasNoLeadingBlank()
{
    QCOMPARE(m_plugIn->Name(), QStringLiteral("FFC Utility"));
    m_plugIn->Init(nullptr, nullptr);
    QCOMPARE(utilityDialog()->windowTitle(), QStringLiteral(" FFC Utility"));
}

void TestPlugin::everythingBeforeInitDoesNothing()
{
    TestFrame frame = TestFrame::even(4, 4, 8, 100);
    _ZorImage record = frame.record();
    QCOMPARE(m_plugIn->Show(true), 4);
    QCOMPARE(m_plugIn->Show(false), 4);
    QVERIFY(!utilityDialog());
    QCOMPARE(m_plugIn->SetImage(&record), 0);
    QCOMPARE(m_plugIn->SetImage(nullptr), 0);
    QCOMPARE(m_plugIn->Update(), 0);
    QVERIFY(!m_plugIn->HasResult());
    m_plugIn->Reset();
    QCOMPARE(m_plugIn->Release(), 0);
    QVERIFY(!utilityDialog());
}

void TestPlugin::initSetsTheWindowFlags()
{
    QCOMPARE(m_plugIn->Init(nullptr, nullptr), 0);
    const QDialog* dialog = utilityDialog();
    QVERIFY(dialog);
    QVERIFY(!dialog->parent());
    QVERIFY(!dialog->isVisible());
    QCOMPARE(static_cast<unsigned>(dialog->windowFlags()), InitFlags);
    for (const auto hint :
         {Qt::WindowMinimizeButtonHint, Qt::WindowMaximizeButtonHint, Qt::WindowCloseButtonHint})
        QVERIFY(dialog->windowFlags().testFlag(hint));
    QCOMPARE(dialog->windowType(), Qt::Dialog);
}

void TestPlugin::showNotifiesWithContextAndPlugIn()
{
    NotifiedHost host;
    m_plugIn->Init(NotifiedHost::call, &host);
    QVERIFY(host.codes.isEmpty());
    QCOMPARE(m_plugIn->Show(true), 0);
    QVERIFY(utilityDialog()->isVisible());
    QVERIFY(!utilityDialog()->isModal());
    QCOMPARE(host.codes, QVector<std::uint32_t>({16387}));
    QCOMPARE(host.plugIn, m_plugIn);
    QCOMPARE(m_plugIn->Show(true), 0);
    QCOMPARE(host.codes.size(), 1);
}

void TestPlugin::frameOfTheOpenedCallbackIsComputed()
{
    NotifiedHost host;
    m_plugIn->Init(NotifiedHost::call, &host);
    host.onCode = [&](std::uint32_t) {
        TestFrame frame(2, 2, 12, [](int x, int) { return x == 0 ? 500U : 1000U; });
        _ZorImage record = frame.record();
        QCOMPARE(host.plugIn->SetImage(&record), 0);
    };
    m_plugIn->Show(true);
    QCOMPARE(savedFile(), QByteArray("1,512\n2,256\n:FFC_Y start,\n-- Row(Y),HEX Value\n1,256\n2,256\n"));
}

void TestPlugin::imageAloneComputesNothing()
{
    NotifiedHost host;
    m_plugIn->Init(NotifiedHost::call, &host);
    m_plugIn->Show(true);
    TestFrame frame(2, 2, 8, [](int x, int) { return x == 0 ? 50U : 100U; });
    _ZorImage record = frame.record();
    QCOMPARE(m_plugIn->SetImage(&record), 0);
    QCOMPARE(savedFile(), QByteArray(":FFC_Y start,\n-- Row(Y),HEX Value\n"));
    QCOMPARE(m_plugIn->Update(), 0);
    QCOMPARE(savedFile(), QByteArray("1,512\n2,256\n:FFC_Y start,\n-- Row(Y),HEX Value\n1,256\n2,256\n"));
}

void TestPlugin::unusableImagesLeaveTheFrame_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("null record") << 0;
    QTest::newRow("null pixels") << 1;
    QTest::newRow("size 0") << 2;
}

void TestPlugin::unusableImagesLeaveTheFrame()
{
    QFETCH(int, kind);
    m_plugIn->Init(nullptr, nullptr);
    TestFrame frame(2, 1, 8, [](int x, int) { return x == 0 ? 50U : 100U; });
    _ZorImage record = frame.record();
    m_plugIn->SetImage(&record);
    if (kind == 1)
        record.data = nullptr;
    if (kind == 2)
        record.imageSize = 0;
    QCOMPARE(m_plugIn->SetImage(kind == 0 ? nullptr : &record), 0);
    m_plugIn->Update();
    QCOMPARE(savedFile(), QByteArray("1,512\n2,256\n:FFC_Y start,\n-- Row(Y),HEX Value\n1,256\n"));
}

void TestPlugin::closeAndReopen()
{
    NotifiedHost host;
    m_plugIn->Init(NotifiedHost::call, &host);
    m_plugIn->Show(true);
    TestFrame frame(2, 1, 8, [](int x, int) { return x == 0 ? 50U : 100U; });
    _ZorImage record = frame.record();
    m_plugIn->SetImage(&record);
    QCOMPARE(m_plugIn->Show(false), 0);
    QVERIFY(!utilityDialog()->isVisible());
    QCOMPARE(m_plugIn->Show(true), 0);
    QCOMPARE(host.codes, QVector<std::uint32_t>({16387, 16386, 16387}));
    QCOMPARE(savedFile(), QByteArray("1,512\n2,256\n:FFC_Y start,\n-- Row(Y),HEX Value\n1,256\n"));
}

void TestPlugin::operatorsCloseNotifies()
{
    NotifiedHost host;
    m_plugIn->Init(NotifiedHost::call, &host);
    m_plugIn->Show(true);
    utilityDialog()->close();
    QCOMPARE(host.codes, QVector<std::uint32_t>({16387, 16386}));
}

void TestPlugin::nullCallbackWorks()
{
    m_plugIn->Init(nullptr, nullptr);
    QCOMPARE(m_plugIn->Show(true), 0);
    TestFrame frame = TestFrame::even(1, 1, 16, 300);
    _ZorImage record = frame.record();
    m_plugIn->SetImage(&record);
    m_plugIn->Update();
    QCOMPARE(savedFile(), QByteArray("1,256\n:FFC_Y start,\n-- Row(Y),HEX Value\n1,256\n"));
    QCOMPARE(m_plugIn->Show(false), 0);
}

void TestPlugin::secondInitKeepsTheDialogAndReplacesTheHost()
{
    NotifiedHost first;
    NotifiedHost second;
    m_plugIn->Init(NotifiedHost::call, &first);
    const QDialog* dialog = utilityDialog();
    m_plugIn->Init(NotifiedHost::call, &second);
    QCOMPARE(utilityDialog(), dialog);
    m_plugIn->Show(true);
    QVERIFY(first.codes.isEmpty());
    QCOMPARE(second.codes, QVector<std::uint32_t>({16387}));

    QVector<std::uint32_t> third;
    m_plugIn->Init(noteCode, &third);
    m_plugIn->Show(false);
    QCOMPARE(second.codes.size(), 1);
    QCOMPARE(third, QVector<std::uint32_t>({16386}));

    m_plugIn->Init(nullptr, &third);
    m_plugIn->Show(true);
    m_plugIn->Show(false);
    QCOMPARE(third.size(), 1);
    QCOMPARE(utilityDialog(), dialog);
}

void TestPlugin::closingAHiddenDialogNotifies()
{
    NotifiedHost host;
    m_plugIn->Init(NotifiedHost::call, &host);
    QCOMPARE(m_plugIn->Show(false), 0);
    QVERIFY(!utilityDialog()->isVisible());
    QCOMPARE(host.codes, QVector<std::uint32_t>({16386}));
    QCOMPARE(m_plugIn->Show(true), 0);
    QCOMPARE(host.codes, QVector<std::uint32_t>({16386, 16387}));
}

void TestPlugin::secondInitSetsTheFlagsAnewAndHides()
{
    m_plugIn->Init(nullptr, nullptr);
    m_plugIn->Show(true);
    QDialog* dialog = utilityDialog();
    dialog->setWindowFlags(Qt::Tool);
    dialog->show();
    m_plugIn->Init(nullptr, nullptr);
    QCOMPARE(static_cast<unsigned>(dialog->windowFlags()), InitFlags);
    QVERIFY(!dialog->isVisible());
}

void TestPlugin::resetKeepsTheDialog()
{
    m_plugIn->Init(nullptr, nullptr);
    m_plugIn->Show(true);
    TestFrame frame(2, 1, 8, [](int x, int) { return x == 0 ? 50U : 100U; });
    _ZorImage record = frame.record();
    m_plugIn->SetImage(&record);
    m_plugIn->Update();
    m_plugIn->Reset();
    QVERIFY(utilityDialog()->isVisible());
    // Were the frame still there, its gains would be halved now.
    utilityDialog()->findChild<QLineEdit*>(QStringLiteral("lENormFFC"))->setText(QStringLiteral("0.5"));
    m_plugIn->Update();
    // The gains are the last ones still, and a save writes them.
    QCOMPARE(savedFile(), QByteArray("1,512\n2,256\n:FFC_Y start,\n-- Row(Y),HEX Value\n1,256\n"));
}

void TestPlugin::releaseAndNewInit()
{
    NotifiedHost host;
    m_plugIn->Init(NotifiedHost::call, &host);
    m_plugIn->Show(true);
    QCOMPARE(m_plugIn->Release(), 0);
    QVERIFY(!utilityDialog());
    QCOMPARE(m_plugIn->Show(true), 4);
    m_plugIn->Init(NotifiedHost::call, &host);
    m_plugIn->Show(true);
    QCOMPARE(host.codes, QVector<std::uint32_t>({16387, 16387}));
}

void TestPlugin::releaseTwice()
{
    m_plugIn->Init(nullptr, nullptr);
    QCOMPARE(m_plugIn->Release(), 0);
    QCOMPARE(m_plugIn->Release(), 0);
}

void TestPlugin::hostInfoIsKeptByADialogAlone()
{
    // The dialog's copy shares the text's characters.
    ZBKHostInfo info;
    info.text = QString(9, QLatin1Char('x'));
    m_plugIn->SetHostInfo(info);
    QVERIFY(info.text.isDetached());
    m_plugIn->Init(nullptr, nullptr);
    QVERIFY(info.text.isDetached());
    m_plugIn->SetHostInfo(info);
    QVERIFY(!info.text.isDetached());
    m_plugIn->SetHostInfo(ZBKHostInfo());
    QVERIFY(info.text.isDetached());
    m_plugIn->SetHostInfo(info);
    m_plugIn->Release();
    QVERIFY(info.text.isDetached());
}

void TestPlugin::resultSlotStaysAsItWas()
{
    void* slot = this;
    QCOMPARE(m_plugIn->GetResult(&slot), 0);
    QCOMPARE(slot, static_cast<void*>(this));
    m_plugIn->Init(nullptr, nullptr);
    TestFrame frame = TestFrame::even(2, 2, 8, 100);
    _ZorImage record = frame.record();
    m_plugIn->SetImage(&record);
    m_plugIn->Update();
    QVERIFY(!m_plugIn->HasResult());
    QCOMPARE(m_plugIn->GetResult(&slot), 0);
    QCOMPARE(slot, static_cast<void*>(this));
}

void TestPlugin::deletionReleasesTheDialogAndTheNextObjectIsNew()
{
    m_plugIn->Init(nullptr, nullptr);
    QVERIFY(utilityDialog());
    delete m_loader.instance();
    QVERIFY(!utilityDialog());
    QObject* next = m_loader.instance();
    QVERIFY(next);
    m_plugIn = qobject_cast<ZBKInterfacePlugIn*>(next);
    QVERIFY(m_plugIn);
    QCOMPARE(m_plugIn->Show(true), 4);
    QCOMPARE(m_plugIn->Init(nullptr, nullptr), 0);
    QVERIFY(utilityDialog());
}

QTEST_MAIN(TestPlugin)
#include "tst_plugin.moc"
