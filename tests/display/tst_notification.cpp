#include "display/ParameterText.h"
#include "tests/display/AdapterFixture.h"

#include <QMenu>
#include <QSignalSpy>
#include <QtTest>

// The listener's address is known to the viewer alone: each test starts the viewer and speaks through it.
class TestNotification : public QObject, private AdapterFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tearDown(); }
    void becomesEvents_data();
    void becomesEvents();
    void leavesKeysInTheMap_data();
    void leavesKeysInTheMap();
    void mouseEventsCarryTheirPlaces_data();
    void mouseEventsCarryTheirPlaces();
    void aPressHandsItsResultBack();
    void aNullMapIsIgnored();
    void postedEventsKeepTheirOrder();
    void anotherThreadIsHeard_data();
    void anotherThreadIsHeard();
    void aRightPressOfAnotherThreadOpensTheMenuOnTheViews();
    void aPressAndItsReleaseCrossWhileTheViewWaits();
    void aListenerMayHaveAPressQueued();
    void withoutAViewNothingIsDelivered();
};

void TestNotification::init()
{
    setUp();
    start(false, 13);
}

void TestNotification::becomesEvents_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QByteArray>("left");
    QTest::addColumn<int>("atOnce");
    QTest::addColumn<int>("posted");
    QTest::addColumn<bool>("menu");
    const auto row = [](const char* title, const char* name, const char* code, const char* left, int atOnce,
                        int posted, bool menu = false) {
        QTest::newRow(title) << QByteArray(name) << QByteArray(code) << QByteArray(left) << atOnce << posted
                             << menu;
    };
    const int down = DisplayEvMouseDown;
    const int move = DisplayEvMouseMove;
    const int up = DisplayEvMouseUp;
    const int changed = DisplayEvViewChanged;
    const int processed = DisplayEvImageProcessed;
    row("a left press comes at once", "notification.view", "mouse.down", "1", down, 0);
    row("a left press under any name", "what.else", "mouse.down", "1", down, 0);
    row("a left press under a null name", nullptr, "mouse.down", "1", down, 0);
    row("a right press asks for the menu and never reaches the view", "notification.view", "mouse.down", "0",
        0, 0, true);
    row("a press of button 2 asks for the menu", "notification.view", "mouse.down", "2", 0, 0, true);
    row("a press without a button asks for the menu", "notification.view", "mouse.down", nullptr, 0, 0, true);
    row("a press of button 10 asks for the menu", "notification.view", "mouse.down", "10", 0, 0, true);
    row("a press of button -1 asks for the menu", "notification.view", "mouse.down", "-1", 0, 0, true);
    row("a left press by a number with a zero before", "notification.view", "mouse.down", "01", down, 0);
    row("a left press by a number with a sign", "notification.view", "mouse.down", "+1", down, 0);
    row("a left press by a number with more text after", "notification.view", "mouse.down", "1.0", down, 0);
    row("a left release comes at once", "notification.view", "mouse.up", "1", up, 0);
    row("a left release under any name", "", "mouse.up", "1", up, 0);
    row("a left release by a number with a zero before", "notification.view", "mouse.up", "01", up, 0);
    row("a release of button 10 is nothing", "notification.view", "mouse.up", "10", 0, 0);
    row("a right release is nothing", "notification.view", "mouse.up", "0", 0, 0);
    row("a release without a button is nothing", "notification.view", "mouse.up", nullptr, 0, 0);
    row("a move is posted", "notification.view", "mouse.move", nullptr, 0, move);
    row("a move under any name", "notification.image", "mouse.move", nullptr, 0, move);
    row("a move under a null name", nullptr, "mouse.move", nullptr, 0, move);
    row("a move whatever the button", "notification.view", "mouse.move", "0", 0, move);
    row("a changed view is posted", "notification.view", "view.changed", nullptr, 0, changed);
    row("a changed view under another name is dropped", "notification.image", "view.changed", nullptr, 0, 0);
    row("a changed view under no name is dropped", "", "view.changed", nullptr, 0, 0);
    row("a changed view under a null name is dropped", nullptr, "view.changed", nullptr, 0, 0);
    row("a finished image comes at once", "notification.image", "processed", nullptr, processed, 0);
    row("a finished image under another name is dropped", "notification.view", "processed", nullptr, 0, 0);
    row("a finished image under a null name is dropped", nullptr, "processed", nullptr, 0, 0);
    row("an unknown code is dropped", "notification.view", "mouse.wheel", "1", 0, 0);
    row("an empty code is dropped", "notification.view", "", "1", 0, 0);
    row("codes are whole words", "notification.view", "mouse.down2", "1", 0, 0);
    row("no code is dropped", "notification.image", nullptr, "1", 0, 0);
}

void TestNotification::becomesEvents()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, code);
    QFETCH(QByteArray, left);
    QFETCH(int, atOnce);
    QFETCH(int, posted);
    QFETCH(bool, menu);
    ParameterMap parameters;
    if (!code.isNull())
        parameters["code"] = code.toStdString();
    if (!left.isNull())
        parameters["left"] = left.toStdString();
    QCOMPARE(FakeViewer::notify(name.isNull() ? nullptr : name.constData(), &parameters), std::int64_t(0));
    FakeViewer::calls().clear();

    std::vector<int> expected;
    if (atOnce != 0)
        expected.push_back(atOnce);
    QCOMPARE(view->seenTypes(), expected);
    QCoreApplication::sendPostedEvents();
    if (posted != 0)
        expected.push_back(posted);
    QCOMPARE(view->seenTypes(), expected);
    QCOMPARE(calledNames().contains("cmd.system.menu.create"), menu);
}

void TestNotification::leavesKeysInTheMap_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QStringList>("after");
    QTest::newRow("no code") << QByteArray() << QStringList{"code="};
    QTest::newRow("a press without a button")
        << QByteArray("mouse.down") << QStringList{"code=mouse.down", "left="};
    QTest::newRow("a release without a button")
        << QByteArray("mouse.up") << QStringList{"code=mouse.up", "left="};
    QTest::newRow("a move") << QByteArray("mouse.move") << QStringList{"code=mouse.move"};
    QTest::newRow("a finished image") << QByteArray("processed") << QStringList{"code=processed"};
}

void TestNotification::leavesKeysInTheMap()
{
    QFETCH(QByteArray, code);
    QFETCH(QStringList, after);
    ParameterMap parameters;
    if (!code.isNull())
        parameters["code"] = code.toStdString();
    FakeViewer::notify("notification.image", &parameters);
    QCOMPARE(textOf(parameters), after);
}

void TestNotification::mouseEventsCarryTheirPlaces_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::newRow("press") << QByteArray("mouse.down");
    QTest::newRow("move") << QByteArray("mouse.move");
    QTest::newRow("release") << QByteArray("mouse.up");
}

void TestNotification::mouseEventsCarryTheirPlaces()
{
    QFETCH(QByteArray, code);
    ParameterMap parameters = {{"code", code.toStdString()},
                               {"left", "1"},
                               {"img.x", "1200"},
                               {"img.y", "-7"},
                               {"win.x", "33"},
                               {"win.y", "44"}};
    QSignalSpy spy(view.get(), &DisplayView::sigMouseMoved);
    FakeViewer::notify("notification.view", &parameters);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(view->seen.size(), std::size_t(1));
    QCOMPARE(view->seen[0].imagePos, QPoint(1200, -7));
    QCOMPARE(view->seen[0].windowPos, QPoint(33, 44));
    QCOMPARE(view->seen[0].result, 0);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].toPoint(), QPoint(1200, -7));

    ParameterMap placeless = {{"code", code.toStdString()}, {"left", "1"}};
    FakeViewer::notify("notification.view", &placeless);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(view->seen.at(1).imagePos, QPoint());
    QCOMPARE(view->seen.at(1).windowPos, QPoint());
}

void TestNotification::aPressHandsItsResultBack()
{
    view->pressResult = -77;
    ParameterMap press = {{"code", "mouse.down"}, {"left", "1"}};
    QCOMPARE(FakeViewer::notify("notification.view", &press), std::int64_t(-77));
    // A release does not.
    ParameterMap release = {{"code", "mouse.up"}, {"left", "1"}};
    QCOMPARE(FakeViewer::notify("notification.view", &release), std::int64_t(0));

    ParameterMap processed = {{"code", "processed"}, {"result", "-12"}};
    QCOMPARE(FakeViewer::notify("notification.image", &processed), std::int64_t(0));
    QCOMPARE(view->seen.back().type, int(DisplayEvImageProcessed));
    QCOMPARE(view->seen.back().result, -12);
    processed["result"] = "";
    FakeViewer::notify("notification.image", &processed);
    QCOMPARE(view->seen.back().result, 0);
}

void TestNotification::aNullMapIsIgnored()
{
    QCOMPARE(FakeViewer::notify("notification.view", nullptr), std::int64_t(0));
    QCoreApplication::sendPostedEvents();
    QVERIFY(view->seen.empty());
}

void TestNotification::postedEventsKeepTheirOrder()
{
    for (int i = 0; i < 20; ++i) {
        ParameterMap parameters = {{"code", i % 3 == 2 ? "view.changed" : "mouse.move"},
                                   {"img.x", std::to_string(i)}};
        FakeViewer::notify("notification.view", &parameters);
    }
    QVERIFY(view->seen.empty());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(view->seen.size(), std::size_t(20));
    for (int i = 0; i < 20; ++i) {
        const SeenEvent& event = view->seen[std::size_t(i)];
        QCOMPARE(event.type, int(i % 3 == 2 ? DisplayEvViewChanged : DisplayEvMouseMove));
        QCOMPARE(event.imagePos.x(), i % 3 == 2 ? 0 : i);
    }
}

void TestNotification::anotherThreadIsHeard_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("posted");
    const QByteArray viewName = "notification.view";
    QTest::newRow("a left press on the viewer's thread")
        << viewName << QByteArray("mouse.down") << int(DisplayEvMouseDown) << false;
    QTest::newRow("a left release on the viewer's thread")
        << viewName << QByteArray("mouse.up") << int(DisplayEvMouseUp) << false;
    QTest::newRow("a finished image on the viewer's thread")
        << QByteArray("notification.image") << QByteArray("processed") << int(DisplayEvImageProcessed)
        << false;
    QTest::newRow("a move on the view's thread")
        << viewName << QByteArray("mouse.move") << int(DisplayEvMouseMove) << true;
    QTest::newRow("a changed view on the view's thread")
        << viewName << QByteArray("view.changed") << int(DisplayEvViewChanged) << true;
}

void TestNotification::anotherThreadIsHeard()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, code);
    QFETCH(int, type);
    QFETCH(bool, posted);
    std::thread viewer([&] {
        ParameterMap parameters = {{"code", code.toStdString()}, {"left", "1"}, {"img.x", "5"}};
        FakeViewer::notify(name.constData(), &parameters);
    });
    const std::thread::id viewerThread = viewer.get_id();
    viewer.join();
    QCOMPARE(view->seen.size(), posted ? std::size_t(0) : std::size_t(1));
    QCoreApplication::sendPostedEvents();
    QCOMPARE(view->seen.size(), std::size_t(1));
    QCOMPARE(view->seen[0].type, type);
    QVERIFY(view->seen[0].thread == (posted ? std::this_thread::get_id() : viewerThread));
}

void TestNotification::aRightPressOfAnotherThreadOpensTheMenuOnTheViews()
{
    QMenu menu;
    std::vector<std::thread::id> threads;
    FakeViewer::script().answers["cmd.system.menu.create"] = [&](ParameterMap* map) {
        threads.push_back(std::this_thread::get_id());
        paramSetText(map, "qmenu", textFromPointer(&menu).c_str());
        return 1;
    };
    FakeViewer::script().answers["cmd.system.menu.exec"] = [&](ParameterMap*) {
        threads.push_back(std::this_thread::get_id());
        return 1;
    };
    std::int64_t answer = -1;
    std::thread viewer([&answer] {
        ParameterMap press = {{"code", "mouse.down"}, {"left", "0"}};
        answer = FakeViewer::notify("notification.view", &press);
    });
    viewer.join();
    QCOMPARE(answer, std::int64_t(0));
    QCOMPARE(calledNames().filter("cmd.system.menu."), QStringList());
    QCoreApplication::sendPostedEvents();
    const QStringList expected = {"cmd.system.menu.create", "cmd.system.menu.exec"};
    QCOMPARE(calledNames().filter("cmd.system.menu."), expected);
    QVERIFY(threads == std::vector<std::thread::id>(2, std::this_thread::get_id()));
    QVERIFY(view->seen.empty());
}

void TestNotification::aPressAndItsReleaseCrossWhileTheViewWaits()
{
    std::vector<int> signalled;
    std::vector<std::thread::id> threads;
    connect(
        view.get(), &DisplayView::sigMouseMoved, view.get(),
        [&](QPoint, QEvent::Type type) {
            signalled.push_back(type);
            threads.push_back(std::this_thread::get_id());
        },
        Qt::DirectConnection);
    view->pressResult = 3;
    std::int64_t answer = 0;
    std::thread viewer([&] {
        ParameterMap press = {{"code", "mouse.down"}, {"left", "1"}};
        answer = FakeViewer::notify("notification.view", &press);
        ParameterMap move = {{"code", "mouse.move"}};
        FakeViewer::notify("notification.view", &move);
        ParameterMap release = {{"code", "mouse.up"}, {"left", "1"}};
        FakeViewer::notify("notification.view", &release);
        ParameterMap processed = {{"code", "processed"}, {"result", "4"}};
        FakeViewer::notify("notification.image", &processed);
    });
    const std::thread::id viewerThread = viewer.get_id();
    viewer.join();
    QCOMPARE(answer, std::int64_t(3));
    const std::vector<int> direct = {DisplayEvMouseDown, DisplayEvMouseUp, DisplayEvImageProcessed};
    QCOMPARE(view->seenTypes(), direct);
    QCoreApplication::sendPostedEvents();
    const std::vector<int> expected = {DisplayEvMouseDown, DisplayEvMouseUp, DisplayEvMouseMove};
    QCOMPARE(signalled, expected);
    QVERIFY(threads[0] == viewerThread && threads[1] == viewerThread);
    QVERIFY(threads[2] == std::this_thread::get_id());
}

void TestNotification::aListenerMayHaveAPressQueued()
{
    QObject listener;
    std::vector<std::thread::id> threads;
    int type = 0;
    connect(view.get(), &DisplayView::sigMouseMoved, &listener, [&](QPoint, QEvent::Type which) {
        threads.push_back(std::this_thread::get_id());
        type = which;
    });
    std::thread viewer([] {
        ParameterMap press = {{"code", "mouse.down"}, {"left", "1"}};
        FakeViewer::notify("notification.view", &press);
    });
    viewer.join();
    QVERIFY(threads.empty());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(threads.size(), std::size_t(1));
    QVERIFY(threads[0] == std::this_thread::get_id());
    QCOMPARE(type, int(DisplayEvMouseDown));
}

void TestNotification::withoutAViewNothingIsDelivered()
{
    DisplayAdapterQT viewless(nullptr, false, 13);
    FakeViewer::calls().clear();
    QEvent start(DisplayEvStart);
    QVERIFY(viewless.handleDisplayEvent(&start));
    QVERIFY(viewless.hasViewer());
    // No view, no message.
    const QStringList expected = {"create CPU", "configure", "cmd.system.notification.add",
                                  "cmd.display.view.nofication", "cmd.parameter.set"};
    QCOMPARE(calledNames(), expected);
    for (const char* code : {"mouse.down", "mouse.move", "mouse.up", "view.changed"}) {
        ParameterMap parameters = {{"code", code}, {"left", "1"}};
        QCOMPARE(FakeViewer::notify("notification.view", &parameters), std::int64_t(0));
    }
    ParameterMap processed = {{"code", "processed"}};
    QCOMPARE(FakeViewer::notify("notification.image", &processed), std::int64_t(0));
    QCoreApplication::sendPostedEvents();
    QVERIFY(view->seen.empty());
}

ZOR_DISPLAY_TEST_MAIN(TestNotification)
#include "tst_notification.moc"
