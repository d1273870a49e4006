#include "tests/display/MenuFixture.h"

#include <QtTest>

#include <atomic>

class TestContextMenu : public QObject, private MenuFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void opensTheViewersMenuAlone();
    void theMapGoesWithEveryCommand();
    void opensByNotification();
    void theViewersAnswersAreIgnored_data();
    void theViewersAnswersAreIgnored();
    void notificationsDuringTheMenuAreLost_data();
    void notificationsDuringTheMenuAreLost();
    void theViewerSpeaksWhileTheMenuOpens();
    void aFailedMenuSilencesTheViewer_data();
    void aFailedMenuSilencesTheViewer();
    void withoutAViewerNothingHappens();
    void theErrorCodeIsLeftAlone();
    void theMenuGoesBeforeTheViewer();
};

void TestContextMenu::opensTheViewersMenuAlone()
{
    start(13);
    bool heardInside = true;
    FakeViewer::script().answers["cmd.system.menu.exec"] = [&](ParameterMap*) {
        heardInside = isHeard();
        return 0;
    };
    QVERIFY(isHeard());
    QVERIFY(openMenu());
    QCOMPARE(entryTexts(), QStringList());
    QCOMPARE(FakeViewer::callsOf("cmd.system.menu.exec").size(), std::size_t(1));
    QVERIFY(!heardInside);
    QVERIFY(isHeard());
}

void TestContextMenu::theMapGoesWithEveryCommand()
{
    start(2);
    FakeViewer::calls().clear();
    QVERIFY(openMenu());
    QVERIFY(openMenu());
    const QStringList order = {"cmd.system.menu.create", "cmd.system.menu.exec", "cmd.system.menu.exec"};
    QCOMPARE(calledNames(), order);
    const auto& calls = FakeViewer::calls();
    QVERIFY(calls[0].hasMap);
    QCOMPARE(textOf(calls[0].before), QStringList());
    const QString show = QString::fromStdString(textFromPointer(menu->actions().at(1)));
    const QString set = QString::fromStdString(textFromPointer(menu->actions().at(2)));
    const QStringList full = {"hexSet=" + set, "hexShow=" + show,
                              "qmenu=" + QString::fromStdString(textFromPointer(menu.get())),
                              "qmenuWidget=" + QString::fromStdString(textFromPointer(view.get()))};
    QCOMPARE(textOf(calls[1].before), full);
    QCOMPARE(textOf(calls[2].before), full);
    QCOMPARE(calls[1].argument, calls[0].argument);
}

void TestContextMenu::opensByNotification()
{
    start(13);
    FakeViewer::script().answers["cmd.system.menu.exec"] = [](ParameterMap*) {
        // The release of the button that opened the menu.
        ParameterMap release = {{"code", "mouse.up"}, {"left", "1"}};
        FakeViewer::notify("notification.view", &release);
        return 1;
    };
    ParameterMap press = {{"code", "mouse.down"}, {"left", "0"}, {"img.x", "7"}, {"win.x", "8"}};
    QCOMPARE(FakeViewer::notify("notification.view", &press), std::int64_t(0));
    QVERIFY(FakeViewer::callsOf("cmd.system.menu.exec").empty());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(FakeViewer::callsOf("cmd.system.menu.exec").size(), std::size_t(1));
    QVERIFY(view->seen.empty());
}

void TestContextMenu::theViewersAnswersAreIgnored_data()
{
    QTest::addColumn<int>("creation");
    QTest::addColumn<int>("execution");
    QTest::newRow("creation answers 0") << 0 << 1;
    QTest::newRow("creation answers 2") << 2 << 1;
    QTest::newRow("creation answers -1") << -1 << 1;
    QTest::newRow("execution answers 0") << 1 << 0;
    QTest::newRow("execution answers 2") << 1 << 2;
    QTest::newRow("execution answers -1") << 1 << -1;
}

void TestContextMenu::theViewersAnswersAreIgnored()
{
    QFETCH(int, creation);
    QFETCH(int, execution);
    FakeViewer::script().answers["cmd.system.menu.create"] = [this, creation](ParameterMap* map) {
        offerMenu(map);
        return creation;
    };
    FakeViewer::script().answers["cmd.system.menu.exec"] = [execution](ParameterMap*) { return execution; };
    start(13);
    QVERIFY(openMenu());
    const QStringList expected = {"cmd.system.menu.create", "cmd.system.menu.exec"};
    QCOMPARE(calledNames().filter("cmd.system.menu."), expected);
    QVERIFY(isHeard());
}

void TestContextMenu::notificationsDuringTheMenuAreLost_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("while the viewer makes the menu") << "cmd.system.menu.create";
    QTest::newRow("while the menu is open") << "cmd.system.menu.exec";
}

void TestContextMenu::notificationsDuringTheMenuAreLost()
{
    QFETCH(QString, command);
    start(13);
    std::vector<std::int64_t> answers;
    FakeViewer::script().answers[command.toStdString()] = [&](ParameterMap* map) {
        offerMenu(map);
        view->pressResult = 5;
        for (const char* code : {"mouse.down", "mouse.move", "mouse.up", "view.changed"}) {
            ParameterMap parameters = {{"code", code}, {"left", "1"}};
            answers.push_back(FakeViewer::notify("notification.view", &parameters));
        }
        ParameterMap processed = {{"code", "processed"}};
        answers.push_back(FakeViewer::notify("notification.image", &processed));
        // While the gate is closed not even the code is looked for.
        ParameterMap empty;
        answers.push_back(FakeViewer::notify("notification.view", &empty));
        if (!empty.empty())
            answers.push_back(-1);
        return 1;
    };
    QVERIFY(openMenu());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(answers, std::vector<std::int64_t>(6, 0));
    QVERIFY(view->seen.empty());
    QVERIFY(isHeard());
}

void TestContextMenu::theViewerSpeaksWhileTheMenuOpens()
{
    start(13);
    ZorDisplayCommand* const listener = FakeViewer::listener();
    std::atomic<bool> markWanted{false};
    std::atomic<int> marks{0};
    std::atomic<bool> sent{false};
    std::atomic<bool> stop{false};
    // A menu stays open until the viewer has spoken once more: that move, marked by its y, is surely lost.
    FakeViewer::script().answers["cmd.system.menu.exec"] = [&](ParameterMap*) {
        const int before = marks;
        markWanted = true;
        while (marks == before)
            std::this_thread::yield();
        return 1;
    };
    const auto markWhenWanted = [&] {
        if (!markWanted.exchange(false))
            return;
        ParameterMap mark = {{"code", "mouse.move"}, {"img.x", "1000"}, {"img.y", "1"}};
        listener->notify("notification.view", &mark);
        ++marks;
    };
    std::thread viewer([&] {
        for (int i = 1; i <= 500; ++i) {
            markWhenWanted();
            ParameterMap move = {{"code", "mouse.move"}, {"img.x", std::to_string(i)}};
            listener->notify("notification.view", &move);
            ParameterMap press = {{"code", "mouse.down"}, {"left", "0"}};
            if (i % 50 == 1)
                listener->notify("notification.view", &press);
        }
        sent = true;
        // The last press may open its menu only now.
        while (!stop) {
            markWhenWanted();
            std::this_thread::yield();
        }
    });
    while (!sent)
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    stop = true;
    viewer.join();
    QCoreApplication::sendPostedEvents();

    // A press that falls into an open menu opens no other; the first one always opens it.
    const std::size_t opened = FakeViewer::callsOf("cmd.system.menu.exec").size();
    QVERIFY2(opened >= 1 && opened <= 10, qPrintable(QString::number(opened)));
    QCOMPARE(marks.load(), int(opened));
    // Moves may be lost, but none comes twice or late.
    int last = 0;
    for (const SeenEvent& event : view->seen) {
        QVERIFY2(event.imagePos.y() == 0, "a move that came during an open menu was delivered");
        QVERIFY2(event.imagePos.x() > last, qPrintable(QString::number(last)));
        last = event.imagePos.x();
    }
    QVERIFY(last >= 1);
    QVERIFY(isHeard());
}

void TestContextMenu::aFailedMenuSilencesTheViewer_data()
{
    QTest::addColumn<QByteArray>("qmenu");
    QTest::addColumn<int>("creations");
    QTest::addColumn<bool>("deleted");
    QTest::newRow("the viewer gives no menu") << QByteArray() << 2 << false;
    QTest::newRow("the viewer leaves the menu empty") << QByteArray("") << 1 << true;
    QTest::newRow("the viewer gives a null menu") << QByteArray("(nil)") << 1 << true;
    QTest::newRow("the viewer gives no address") << QByteArray("menu") << 1 << true;
}

void TestContextMenu::aFailedMenuSilencesTheViewer()
{
    QFETCH(QByteArray, qmenu);
    QFETCH(int, creations);
    QFETCH(bool, deleted);
    FakeViewer::script().answers["cmd.system.menu.create"] = [qmenu](ParameterMap* map) {
        if (!qmenu.isNull())
            (*map)["qmenu"] = qmenu.toStdString();
        return 1;
    };
    start(15);
    // The request itself counts as handled.
    QVERIFY(openMenu());
    QVERIFY(!isHeard());
    QVERIFY(openMenu());
    QVERIFY(!isHeard());
    // Not even a new start-up opens the gate.
    const _ZorImage image = imageOf(100, 100);
    adapter->prepareImage(&image, true);
    QVERIFY(!isHeard());
    ParameterMap press = {{"code", "mouse.down"}, {"left", "2"}};
    FakeViewer::notify("notification.view", &press);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(int(FakeViewer::callsOf("cmd.system.menu.create").size()), creations);
    QVERIFY(FakeViewer::callsOf("cmd.system.menu.exec").empty());
    QCOMPARE(entryTexts(), QStringList());
    // The destructor asks for the key, not for a menu.
    adapter.reset();
    QCOMPARE(FakeViewer::callsOf("cmd.system.menu.delete").size(), std::size_t(deleted ? 1 : 0));
}

void TestContextMenu::withoutAViewerNothingHappens()
{
    adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, 15);
    QVERIFY(openMenu());
    QCOMPARE(calledNames(), QStringList());
    QVERIFY(view->seen.empty());
    // The gate was not touched.
    startQuietly(*adapter);
    const _ZorImage image = imageOf(100, 100);
    adapter->prepareImage(&image, false);
    QVERIFY(isHeard());
}

void TestContextMenu::theErrorCodeIsLeftAlone()
{
    start(15);
    leaveOldError(*adapter);
    QVERIFY(openMenu());
    QCOMPARE(adapter->lastError(), OldError);
    menu->actions().at(1)->trigger();
    QCOMPARE(adapter->lastError(), OldError);
}

void TestContextMenu::theMenuGoesBeforeTheViewer()
{
    start(13);
    FakeViewer::calls().clear();
    QVERIFY(openMenu());
    adapter.reset();
    const QStringList expected = {"cmd.system.menu.create", "cmd.system.menu.exec", "cmd.system.menu.delete",
                                  "delete QGL"};
    QCOMPARE(calledNames(), expected);
    QCOMPARE(textOf(FakeViewer::calls().at(2).before), textOf(FakeViewer::calls().at(1).before));

    // No menu was ever made: nothing to delete.
    FakeViewer::calls().clear();
    start(13);
    FakeViewer::calls().clear();
    adapter.reset();
    QCOMPARE(calledNames(), QStringList{"delete QGL"});
}

ZOR_DISPLAY_TEST_MAIN(TestContextMenu)
#include "tst_context_menu.moc"
