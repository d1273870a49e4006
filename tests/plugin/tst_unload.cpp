#include "display/UnloadableMetaType.h"
#include "tests/plugin/LoadedUtility.h"
#include "tests/plugin/LostHeaders.h"
#include "tests/support/Cursors.h"

#include <QEvent>
#include <QMetaMethod>
#include <QMetaType>
#include <QTest>

#include <memory>

namespace {

int noCode(void*, std::uint32_t, ZBKInterfacePlugIn*)
{
    return 0;
}

int argumentCount = 1;
char programName[] = "tst_unload";
char* arguments[] = {programName, nullptr};

/// What an operator and a host do between Init and Release.
void live(LoadedUtility& utility)
{
    utility.plugIn().Init(noCode, nullptr);
    utility.plugIn().Show(true);
    utility.show(TestFrame::rising(40));
    clickInUtility("chBHighlights");
    LoadedUtility::readPixels();
    QVERIFY(LoadedUtility::openMenu());
    utility.plugIn().Release();
    QVERIFY(!utilityDialog());
}

/// The type of a slot's argument; a question that has the type registered.
int viewType()
{
    const QMetaObject* meta = utilityDialog()->metaObject();
    return meta->method(meta->indexOfSlot("onViewChanged(DisplayView*)")).parameterType(0);
}

} // namespace

/// The plug-in goes and Qt stays: nothing that Qt has kept may point into the library. Each test is the whole
/// life of an application.
class TestUnload : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void applicationGoesOnAndEnds();
    void hundredTimesInOneProcess();
    void nameOutlivesTheLibrary();
    void metaTypesGoWithTheLibrary();
    void metaTypesOfTheHostStay();

private:
    std::unique_ptr<QApplication> m_application;
};

void TestUnload::init()
{
    QVERIFY(!LoadedUtility::isMapped());
    m_application = std::make_unique<QApplication>(argumentCount, arguments);
}

void TestUnload::cleanup()
{
    m_application.reset();
    releaseLostHeaders();
}

void TestUnload::applicationGoesOnAndEnds()
{
    {
        LoadedUtility utility;
        live(utility);
        QVERIFY(LoadedUtility::isMapped());
        QVERIFY(utility.unload());
    }
    QVERIFY(!LoadedUtility::isMapped());
    // One for each view.
    QCOMPARE(releaseLostHeaders(), 2);
    // Qt compares the names of the fonts that it holds.
    QWidget own;
    own.setFont(QFont(QStringLiteral("monospace"), 31));
    own.grab();
    QCOMPARE(restoreAllCursors(), 0);
}

void TestUnload::hundredTimesInOneProcess()
{
    for (int round = 0; round < 100; ++round) {
        LoadedUtility utility;
        live(utility);
        QVERIFY(utility.unload());
        QVERIFY(!LoadedUtility::isMapped());
        QCOMPARE(releaseLostHeaders(), 2);
    }
}

void TestUnload::nameOutlivesTheLibrary()
{
    QString name;
    {
        LoadedUtility utility;
        name = utility.plugIn().Name();
    }
    QVERIFY(!LoadedUtility::isMapped());
    QCOMPARE(name, QStringLiteral("FFC Utility"));
}

void TestUnload::metaTypesGoWithTheLibrary()
{
    QCOMPARE(QMetaType::type("QEvent::Type"), int(QMetaType::UnknownType));
    QCOMPARE(QMetaType::type("DisplayView*"), int(QMetaType::UnknownType));
    for (int round = 0; round < 2; ++round) {
        LoadedUtility utility;
        utility.plugIn().Init(noCode, nullptr);
        // Both can be copied, as for a connection between threads.
        const int view = viewType();
        const int event = QMetaType::type("QEvent::Type");
        for (const int id : {view, event}) {
            QVERIFY(id != QMetaType::UnknownType);
            const quint64 value = 77;
            void* copy = QMetaType::create(id, &value);
            QCOMPARE(*static_cast<const int*>(copy), 77);
            QMetaType::destroy(id, copy);
        }
        QVERIFY(QMetaType::typeFlags(event).testFlag(QMetaType::IsEnumeration));
        QVERIFY(QMetaType::typeFlags(view).testFlag(QMetaType::PointerToQObject));
        QCOMPARE(QByteArray(QMetaType::metaObjectForType(view)->className()), QByteArray("DisplayView"));
        QVERIFY(utility.unload());
        QVERIFY(!LoadedUtility::isMapped());
        QCOMPARE(QMetaType::type("QEvent::Type"), int(QMetaType::UnknownType));
        QCOMPARE(QMetaType::type("DisplayView*"), int(QMetaType::UnknownType));
    }
}

// As in a host that shows images by the same display layer.
void TestUnload::metaTypesOfTheHostStay()
{
    const zor::UnloadableMetaType<QEvent::Type> own("QEvent::Type", &QEvent::staticMetaObject);
    {
        LoadedUtility utility;
        utility.plugIn().Init(noCode, nullptr);
        QCOMPARE(QMetaType::type("QEvent::Type"), own.id());
    }
    QVERIFY(!LoadedUtility::isMapped());
    QCOMPARE(QMetaType::type("QEvent::Type"), own.id());
}

QTEST_APPLESS_MAIN(TestUnload)
#include "tst_unload.moc"
