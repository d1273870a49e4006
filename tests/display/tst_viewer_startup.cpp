#include "tests/display/AdapterFixture.h"

#include <QtTest>

class TestViewerStartup : public QObject, private AdapterFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void startsCommandByCommand_data();
    void startsCommandByCommand();
    void theMessageIsTakenBackByTheSameEvent_data();
    void theMessageIsTakenBackByTheSameEvent();
    void theViewersAnswersAreIgnored_data();
    void theViewersAnswersAreIgnored();
    void theMapIsNeverCleared();
    void parametersGoOutInKeyOrder();
    void flagsThatChangeLaterCountAtTheNextStart();
    void aFailedConfigureSkipsOnlyTheRegistration_data();
    void aFailedConfigureSkipsOnlyTheRegistration();
    void aFailedCreationIsTriedAgain();
    void overlayDefaultsComeBetweenListenerAndFeatures_data();
    void overlayDefaultsComeBetweenListenerAndFeatures();
    void overlayDefaultsAreRestored_data();
    void overlayDefaultsAreRestored();
};

void TestViewerStartup::startsCommandByCommand_data()
{
    QTest::addColumn<bool>("gpu");
    QTest::addColumn<int>("features");
    QTest::addColumn<bool>("canCreate");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("error");
    QTest::addColumn<QStringList>("calls");
    const QString create = "create CPU";
    const QString message = "message Initializing CPU viewer...";
    const QString back = "message ";
    const QString add = "cmd.system.notification.add";
    const QString viewEvents = "cmd.display.view.nofication";
    const QString imageEvents = "cmd.parameter.set";
    QTest::newRow("no feature") << false << 0 << true << 0 << 0
                                << QStringList{create, message, "configure", add, back};
    QTest::newRow("overlay features send nothing")
        << false << 3 << true << 0 << 0 << QStringList{create, message, "configure", add, back};
    QTest::newRow("view events") << false << 4 << true << 0 << 0
                                 << QStringList{create, message, "configure", add, viewEvents, back};
    QTest::newRow("image events") << false << 8 << true << 0 << 0
                                  << QStringList{create, message, "configure", add, imageEvents, back};
    QTest::newRow("both, as the dialog has them")
        << false << 13 << true << 0 << 0
        << QStringList{create, message, "configure", add, viewEvents, imageEvents, back};
    QTest::newRow("the GPU viewer") << true << 13 << true << 0 << 0
                                    << QStringList{"create QGL", "message Initializing GPU viewer...",
                                                   "configure",  add,
                                                   viewEvents,   imageEvents,
                                                   back};
    for (const int features : {0, 4, 8, 13}) {
        QTest::addRow("failed creation with the features %d", features)
            << false << features << false << 0 << 8 << QStringList{create, message, back};
    }
    QTest::newRow("failed creation of the GPU viewer")
        << true << 13 << false << 0 << 8
        << QStringList{"create QGL", "message Initializing GPU viewer...", back};
    QTest::newRow("failed configure, no feature")
        << false << 0 << true << 0x30005 << 5 << QStringList{create, message, "configure", back};
    QTest::newRow("failed configure, both features")
        << false << 13 << true << 0x30005 << 5
        << QStringList{create, message, "configure", viewEvents, imageEvents, back};
    QTest::newRow("only the low word of configure counts")
        << false << 0 << true << 0x30000 << 0 << QStringList{create, message, "configure", add, back};
}

void TestViewerStartup::startsCommandByCommand()
{
    QFETCH(bool, gpu);
    QFETCH(int, features);
    QFETCH(bool, canCreate);
    QFETCH(int, status);
    QFETCH(int, error);
    QFETCH(QStringList, calls);
    FakeViewer::script().canCreate = canCreate;
    FakeViewer::script().configureStatus = status;
    start(gpu, static_cast<std::uint32_t>(features));
    QCOMPARE(calledNames(), calls);
    QCOMPARE(FakeViewer::calls().at(0).argument, static_cast<const void*>(view.get()));
    QCOMPARE(adapter->lastError(), std::uint32_t(error));
    QCOMPARE(adapter->hasViewer(), canCreate);
    // The start event ends at the adapter.
    QVERIFY(view->seen.empty());
}

void TestViewerStartup::theMessageIsTakenBackByTheSameEvent_data()
{
    QTest::addColumn<bool>("canCreate");
    QTest::newRow("success") << true;
    QTest::newRow("failed creation") << false;
}

void TestViewerStartup::theMessageIsTakenBackByTheSameEvent()
{
    QFETCH(bool, canCreate);
    FakeViewer::script().canCreate = canCreate;
    start(false, 13);
    const ViewerCall shown = FakeViewer::callsOf("message Initializing CPU viewer...").at(0);
    const ViewerCall takenBack = FakeViewer::callsOf("message ").at(0);
    QCOMPARE(takenBack.argument, shown.argument);
}

void TestViewerStartup::theViewersAnswersAreIgnored_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("0") << 0;
    QTest::newRow("2") << 2;
    QTest::newRow("-1") << -1;
}

void TestViewerStartup::theViewersAnswersAreIgnored()
{
    QFETCH(int, answer);
    for (const char* command :
         {"cmd.parameter.set", "cmd.system.notification.add", "cmd.display.view.nofication"})
        FakeViewer::script().answers[command] = [answer](ParameterMap*) { return answer; };
    adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, 13);
    adapter->setParameter("gamma", "2");
    QVERIFY(prepare(imageOf(64, 48)));
    const QStringList expected = {"create CPU",
                                  "message Initializing CPU viewer...",
                                  "cmd.parameter.set",
                                  "configure",
                                  "cmd.system.notification.add",
                                  "cmd.display.view.nofication",
                                  "cmd.parameter.set",
                                  "message "};
    QCOMPARE(calledNames(), expected);
    QCOMPARE(adapter->lastError(), 0u);
    ParameterMap press = {{"code", "mouse.down"}, {"left", "1"}};
    FakeViewer::notify("notification.view", &press);
    QCOMPARE(view->seenTypes(), std::vector<int>{DisplayEvMouseDown});
}

void TestViewerStartup::theMapIsNeverCleared()
{
    adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, 13);
    adapter->setParameter("gamma", "2");
    QVERIFY(prepare(imageOf(64, 48)));

    const auto set = FakeViewer::callsOf("cmd.parameter.set");
    QCOMPARE(set.size(), std::size_t(2));
    const QStringList first = {"name=gamma", "value=2"};
    QCOMPARE(textOf(set[0].before), first);

    const ViewerCall add = FakeViewer::callsOf("cmd.system.notification.add").at(0);
    const QString proc = QString::fromStdString("proc=" + add.before.at("proc"));
    const QStringList second = {"name=gamma", proc, "value=2"};
    QCOMPARE(textOf(add.before), second);

    const ViewerCall flags = FakeViewer::callsOf("cmd.display.view.nofication").at(0);
    const QStringList third = {"flags=7", "name=gamma", proc, "value=2"};
    QCOMPARE(textOf(flags.before), third);

    const QStringList fourth = {"flags=7", "name=image.notification.flags.set", proc, "value=1"};
    QCOMPARE(textOf(set[1].before), fourth);
    // One map throughout.
    QCOMPARE(add.argument, set[0].argument);
    QCOMPARE(flags.argument, set[0].argument);
    QCOMPARE(set[1].argument, set[0].argument);
}

void TestViewerStartup::parametersGoOutInKeyOrder()
{
    adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, 0);
    adapter->setParameter("zebra", "1");
    adapter->setParameter("ant", "");
    adapter->setParameter("Yak", "3");
    QVERIFY(prepare(imageOf(64, 48)));
    QStringList sent;
    for (const ViewerCall& call : FakeViewer::callsOf("cmd.parameter.set"))
        sent << textOf(call.before).join(' ');
    const QStringList expected = {"name=Yak value=3", "name=ant value=", "name=zebra value=1"};
    QCOMPARE(sent, expected);
    const QStringList order = {"create CPU",
                               "message Initializing CPU viewer...",
                               "cmd.parameter.set",
                               "cmd.parameter.set",
                               "cmd.parameter.set",
                               "configure",
                               "cmd.system.notification.add",
                               "message "};
    QCOMPARE(calledNames(), order);
}

void TestViewerStartup::flagsThatChangeLaterCountAtTheNextStart()
{
    start(false, 0);
    FakeViewer::calls().clear();
    adapter->setFeatureFlags(DisplayFeatureViewEvents | DisplayFeatureImageEvents);
    adapter->setParameter("gamma", "2");
    QCOMPARE(calledNames(), QStringList());
    prepare(imageOf(64, 48), true);
    const QStringList expected = {
        "message Initializing CPU viewer...", "cmd.parameter.set", "configure", "cmd.system.notification.add",
        "cmd.display.view.nofication",        "cmd.parameter.set", "message "};
    QCOMPARE(calledNames(), expected);
}

void TestViewerStartup::aFailedConfigureSkipsOnlyTheRegistration_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("error");
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("the low 16 bits are kept") << 0x12345 << 0x2345;
    QTest::newRow("negative") << -1 << 0xFFFF;
}

void TestViewerStartup::aFailedConfigureSkipsOnlyTheRegistration()
{
    QFETCH(int, status);
    QFETCH(int, error);
    start(false, 13);
    FakeViewer::calls().clear();
    FakeViewer::script().configureStatus = status;
    QVERIFY(prepare(imageOf(65, 48)));
    QCOMPARE(adapter->lastError(), std::uint32_t(error));
    QVERIFY(adapter->hasViewer());
    const QStringList expected = {"message Initializing CPU viewer...", "configure",
                                  "cmd.display.view.nofication", "cmd.parameter.set", "message "};
    QCOMPARE(calledNames(), expected);
    // The next start-up that succeeds registers again.
    FakeViewer::calls().clear();
    FakeViewer::script().configureStatus = 0;
    prepare(imageOf(65, 48), true);
    QCOMPARE(adapter->lastError(), 0u);
    QCOMPARE(FakeViewer::callsOf("cmd.system.notification.add").size(), std::size_t(1));
}

void TestViewerStartup::aFailedCreationIsTriedAgain()
{
    FakeViewer::script().canCreate = false;
    start(false, 13);
    QCOMPARE(adapter->lastError(), 8u);
    QVERIFY(!adapter->viewAt(0.5, 0.5));
    QCOMPARE(adapter->lastError(), 8u);
    FakeViewer::script().canCreate = true;
    FakeViewer::calls().clear();
    // The geometry is known by now, so an ordinary frame starts nothing.
    QVERIFY(!prepare(imageOf(64, 48)));
    QVERIFY(!adapter->hasViewer());
    QVERIFY(prepare(imageOf(64, 49)));
    QVERIFY(adapter->hasViewer());
    QCOMPARE(calledNames().at(0), "create CPU");
    QCOMPARE(adapter->lastError(), 0u);
    // The one viewer stays.
    FakeViewer::calls().clear();
    QVERIFY(prepare(imageOf(64, 50)));
    QVERIFY(!calledNames().contains("create CPU"));
    QCOMPARE(FakeViewer::living(), 1);
}

void TestViewerStartup::overlayDefaultsComeBetweenListenerAndFeatures_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("dump");
    QTest::addColumn<QStringList>("inspect");
    const QStringList dump = {"adjust=1", "line.clr=50372", "line.width=1", "objectID=@dump"};
    const QStringList inspect = {"line.clr=16419840", "line.width=1", "objectID=@inspect"};
    QTest::newRow("not there while the listener is added")
        << "cmd.system.notification.add" << QStringList() << QStringList();
    QTest::newRow("there when view events are asked for") << "cmd.display.view.nofication" << dump << inspect;
    QTest::newRow("there when image events are asked for") << "cmd.parameter.set" << dump << inspect;
}

void TestViewerStartup::overlayDefaultsComeBetweenListenerAndFeatures()
{
    QFETCH(QString, command);
    QFETCH(QStringList, dump);
    QFETCH(QStringList, inspect);
    // The viewer has both overlays shown in the middle of the command.
    FakeViewer::script().answers[command.toStdString()] = [this](ParameterMap*) {
        adapter->showDumpOverlay(true);
        adapter->showInspectOverlay(true);
        return 1;
    };
    start(false, 15);
    const auto shown = FakeViewer::callsOf("cmd.display.overlay.rect.add");
    QCOMPARE(shown.size(), std::size_t(2));
    QCOMPARE(textOf(shown[0].before), dump);
    QCOMPARE(textOf(shown[1].before), inspect);
}

void TestViewerStartup::overlayDefaultsAreRestored_data()
{
    QTest::addColumn<bool>("dump");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("dump") << true << QStringList{"adjust=1",     "cs=base",        "line.clr=50372",
                                                 "line.width=1", "objectID=@dump", "rect.h=4",
                                                 "rect.w=3",     "rect.x=1",       "rect.y=2"};
    // The viewer's own key stays: only the defaults are written.
    QTest::newRow("inspect") << false << QStringList{"adjust=0",     "cs=base",           "line.clr=16419840",
                                                     "line.width=1", "objectID=@inspect", "rect.h=4",
                                                     "rect.w=3",     "rect.x=1",          "rect.y=2"};
}

void TestViewerStartup::overlayDefaultsAreRestored()
{
    QFETCH(bool, dump);
    QFETCH(QStringList, expected);
    start(false, DisplayFeatureDump | DisplayFeatureInspect);
    const auto show = [&] {
        return dump ? adapter->showDumpOverlay(true) : adapter->showInspectOverlay(true);
    };
    QVERIFY(dump ? adapter->setDumpRect(1, 2, 3, 4, "base") : adapter->setInspectRect(1, 2, 3, 4, "base"));
    // A viewer may write into the overlay's map.
    FakeViewer::script().answers["cmd.display.overlay.rect.add"] = [](ParameterMap* map) {
        (*map)["line.clr"] = "1";
        (*map)["line.width"] = "9";
        (*map)["objectID"] = "@other";
        (*map)["adjust"] = "0";
        return 1;
    };
    QVERIFY(show());
    prepare(imageOf(64, 48), true);
    QVERIFY(show());
    QCOMPARE(textOf(FakeViewer::callsOf("cmd.display.overlay.rect.add").at(1).before), expected);
}

ZOR_DISPLAY_TEST_MAIN(TestViewerStartup)
#include "tst_viewer_startup.moc"
