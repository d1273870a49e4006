#include "tests/display/MenuFixture.h"

#include <QSignalSpy>
#include <QtTest>

class TestHexDumpEntries : public QObject, private MenuFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void addsItsEntriesOnce();
    void entriesFollowTheDump_data();
    void entriesFollowTheDump();
    void theDumpChangesBeforeItsCommand_data();
    void theDumpChangesBeforeItsCommand();
    void withoutItsFeatureTheDumpStays();
    void aWishBeforeTheViewerIsNotKept();
    void theToggleAsksTheView();
    void thePlaceIsThatOfTheMenu();
    void aPlaceThatCannotBeTranslatedIsNotSent_data();
    void aPlaceThatCannotBeTranslatedIsNotSent();
    void withoutAViewNothingIsSent();
};

void TestHexDumpEntries::addsItsEntriesOnce()
{
    menu->addAction("Zoom in");
    start(DisplayFeatureDump);
    QVERIFY(openMenu());
    const QStringList expected = {"Zoom in", "---", "Show HexPixelDump", "Set HexPixelDump Here"};
    QCOMPARE(entryTexts(), expected);
    QVERIFY(menu->actions().at(2)->isVisible());
    QVERIFY(!menu->actions().at(3)->isVisible());
    QCOMPARE(menu->actions().at(2)->parent(), menu.get());
    QCOMPARE(menu->actions().at(3)->parent(), menu.get());
    const QList<QAction*> first = menu->actions();
    QVERIFY(openMenu());
    QCOMPARE(menu->actions(), first);
    QCOMPARE(entryTexts(), expected);
    QCOMPARE(FakeViewer::callsOf("cmd.system.menu.create").size(), std::size_t(1));
}

void TestHexDumpEntries::entriesFollowTheDump_data()
{
    QTest::addColumn<bool>("openedBefore");
    QTest::addColumn<int>("answer");
    QTest::newRow("at the first opening") << false << 1;
    QTest::newRow("at the second opening") << true << 1;
    QTest::newRow("a failed command counts as shown") << false << 0;
    QTest::newRow("a failed command counts as shown at the second opening") << true << 0;
}

void TestHexDumpEntries::entriesFollowTheDump()
{
    QFETCH(bool, openedBefore);
    QFETCH(int, answer);
    start(DisplayFeatureDump);
    if (openedBefore)
        QVERIFY(openMenu());
    FakeViewer::script().answers["cmd.display.overlay.rect.add"] = [answer](ParameterMap*) { return answer; };
    FakeViewer::script().answers["cmd.display.overlay.del"] = [answer](ParameterMap*) { return answer; };
    QCOMPARE(adapter->showDumpOverlay(true), answer == 1);
    QVERIFY(openMenu());
    QCOMPARE(menu->actions().at(1)->text(), "Hide HexPixelDump");
    QVERIFY(menu->actions().at(2)->isVisible());
    QCOMPARE(adapter->showDumpOverlay(false), answer == 1);
    QVERIFY(openMenu());
    QCOMPARE(menu->actions().at(1)->text(), "Show HexPixelDump");
    QVERIFY(!menu->actions().at(2)->isVisible());
}

void TestHexDumpEntries::theDumpChangesBeforeItsCommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("text");
    QTest::newRow("shown before it is added")
        << "cmd.display.overlay.rect.add" << true << "Hide HexPixelDump";
    QTest::newRow("hidden before it is deleted") << "cmd.display.overlay.del" << false << "Show HexPixelDump";
}

void TestHexDumpEntries::theDumpChangesBeforeItsCommand()
{
    QFETCH(QString, command);
    QFETCH(bool, on);
    QFETCH(QString, text);
    start(DisplayFeatureDump);
    QVERIFY(adapter->showDumpOverlay(!on));
    // The viewer opens its menu in the middle of the command.
    QString textInside;
    bool placeInside = !on;
    FakeViewer::script().answers[command.toStdString()] = [&](ParameterMap*) {
        openMenu();
        textInside = menu->actions().at(1)->text();
        placeInside = menu->actions().at(2)->isVisible();
        return 1;
    };
    QVERIFY(adapter->showDumpOverlay(on));
    QCOMPARE(textInside, text);
    QCOMPARE(placeInside, on);
}

void TestHexDumpEntries::withoutItsFeatureTheDumpStays()
{
    start(DisplayFeatureDump);
    QVERIFY(adapter->showDumpOverlay(true));
    adapter->setFeatureFlags(0);
    QVERIFY(!adapter->showDumpOverlay(false));
    adapter->setFeatureFlags(DisplayFeatureDump);
    QVERIFY(openMenu());
    QCOMPARE(menu->actions().at(1)->text(), "Hide HexPixelDump");
}

void TestHexDumpEntries::aWishBeforeTheViewerIsNotKept()
{
    adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, std::uint32_t(DisplayFeatureDump));
    QVERIFY(!adapter->showDumpOverlay(true));
    QCOMPARE(adapter->lastError(), 8u);
    startQuietly(*adapter);
    QVERIFY(openMenu());
    QCOMPARE(menu->actions().at(1)->text(), "Show HexPixelDump");
}

void TestHexDumpEntries::theToggleAsksTheView()
{
    start(DisplayFeatureDump);
    QVERIFY(openMenu());
    QSignalSpy spy(view.get(), &DisplayView::sigHexDump);
    menu->actions().at(1)->trigger();
    QCOMPARE(spy.size(), 1);
    QVERIFY(FakeViewer::callsOf("cmd.display.overlay.rect.add").empty());
    // The listener decides; until then the text stays.
    QVERIFY(openMenu());
    QCOMPARE(menu->actions().at(1)->text(), "Show HexPixelDump");
    connect(view.get(), &DisplayView::sigHexDump, view.get(), [this] { adapter->showDumpOverlay(true); });
    menu->actions().at(1)->trigger();
    QCOMPARE(spy.size(), 2);
    QVERIFY(openMenu());
    QCOMPARE(menu->actions().at(1)->text(), "Hide HexPixelDump");
}

void TestHexDumpEntries::thePlaceIsThatOfTheMenu()
{
    start(DisplayFeatureDump);
    QVERIFY(openMenu());
    view->move(100, 50);
    menu->move(130, 90);
    const QPoint place = view->mapFromGlobal(menu->pos());
    FakeViewer::script().answers["cmd.display.view.translate"] = [](ParameterMap* map) {
        (*map)["pos.x"] = "512";
        (*map)["pos.y"] = "-6";
        (*map)["result"] = "1";
        return 1;
    };
    QSignalSpy spy(view.get(), &DisplayView::sigHexDumpHere);
    view->seen.clear();
    menu->actions().at(2)->trigger();
    const QStringList expected = {"cs.dst=img", "cs.src=win", QString("pos.x=%1").arg(place.x()),
                                  QString("pos.y=%1").arg(place.y())};
    QCOMPARE(textOf(FakeViewer::callsOf("cmd.display.view.translate").at(0).before), expected);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy[0][0].toPoint(), QPoint(512, -6));
    QCOMPARE(view->seen.size(), std::size_t(1));
    QCOMPARE(view->seen[0].imagePos, QPoint(512, -6));
    QCOMPARE(view->seen[0].windowPos, place);
}

void TestHexDumpEntries::aPlaceThatCannotBeTranslatedIsNotSent_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("result");
    QTest::addColumn<bool>("hasWidget");
    QTest::addColumn<bool>("keepsMenu");
    QTest::newRow("the command fails") << 0 << "1" << true << true;
    QTest::newRow("the point lies outside") << 1 << "0" << true << true;
    QTest::newRow("the viewer names no widget") << 1 << "1" << false << true;
    QTest::newRow("the viewer takes its menu out of the map") << 1 << "1" << true << false;
}

void TestHexDumpEntries::aPlaceThatCannotBeTranslatedIsNotSent()
{
    QFETCH(int, answer);
    QFETCH(QString, result);
    QFETCH(bool, hasWidget);
    QFETCH(bool, keepsMenu);
    if (!hasWidget) {
        FakeViewer::script().answers["cmd.system.menu.create"] = [this](ParameterMap* map) {
            paramSetText(map, "qmenu", textFromPointer(menu.get()).c_str());
            return 1;
        };
    }
    if (!keepsMenu) {
        FakeViewer::script().answers["cmd.system.menu.exec"] = [](ParameterMap* map) {
            (*map)["qmenu"] = "";
            return 1;
        };
    }
    start(DisplayFeatureDump);
    QVERIFY(openMenu());
    FakeViewer::script().answers["cmd.display.view.translate"] = [=](ParameterMap* map) {
        (*map)["result"] = result.toStdString();
        return answer;
    };
    QSignalSpy spy(view.get(), &DisplayView::sigHexDumpHere);
    menu->actions().at(2)->trigger();
    QCOMPARE(spy.size(), 0);
    QCOMPARE(FakeViewer::callsOf("cmd.display.view.translate").size(),
             std::size_t(hasWidget && keepsMenu ? 1 : 0));
}

void TestHexDumpEntries::withoutAViewNothingIsSent()
{
    adapter = std::make_unique<DisplayAdapterQT>(nullptr, false, std::uint32_t(DisplayFeatureDump));
    QEvent start(DisplayEvStart);
    QEvent request(DisplayEvContextMenu);
    QVERIFY(adapter->handleDisplayEvent(&start));
    QVERIFY(adapter->handleDisplayEvent(&request));
    FakeViewer::script().answers["cmd.display.view.translate"] = [](ParameterMap* map) {
        (*map)["result"] = "1";
        return 1;
    };
    menu->actions().at(1)->trigger();
    QVERIFY(FakeViewer::callsOf("cmd.display.view.translate").empty());
    menu->actions().at(2)->trigger();
    // The place is translated, and then there is nobody to notify.
    QCOMPARE(FakeViewer::callsOf("cmd.display.view.translate").size(), std::size_t(1));
    QCoreApplication::sendPostedEvents();
    QVERIFY(view->seen.empty());
}

ZOR_DISPLAY_TEST_MAIN(TestHexDumpEntries)
#include "tst_hex_dump_entries.moc"
