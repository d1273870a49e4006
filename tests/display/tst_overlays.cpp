#include "tests/display/AdapterFixture.h"

#include <QtTest>

namespace {

const QStringList dumpDefaults = {"adjust=1", "line.clr=50372", "line.width=1", "objectID=@dump"};
const QStringList inspectDefaults = {"line.clr=16419840", "line.width=1", "objectID=@inspect"};

} // namespace

class TestOverlays : public QObject, private AdapterFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(3); }
    void cleanup() { tearDown(); }
    void rectanglesNeedFeatureAndViewer_data();
    void rectanglesNeedFeatureAndViewer();
    void rectanglesAreStoredForTheNextShow_data();
    void rectanglesAreStoredForTheNextShow();
    void rectanglesNeedAViewer();
    void showingNeedsFeatureAndViewer_data();
    void showingNeedsFeatureAndViewer();
    void onlyOneIsSuccess_data();
    void onlyOneIsSuccess();
    void deletingBeforeAnyRectangleSendsTheDefaults();
    void defaultsAreThereAfterAFailedConfigure();
    void theViewerMayWriteIntoTheStoredMap();

private:
    bool setRect(bool dump, int x, int y, int w, int h, const char* space)
    {
        return dump ? adapter->setDumpRect(x, y, w, h, space) : adapter->setInspectRect(x, y, w, h, space);
    }
    bool show(bool dump, bool on)
    {
        return dump ? adapter->showDumpOverlay(on) : adapter->showInspectOverlay(on);
    }
};

static void featureRows()
{
    QTest::addColumn<bool>("dump");
    QTest::addColumn<quint32>("features");
    QTest::addColumn<bool>("started");
    QTest::addColumn<quint32>("error");
    QTest::newRow("inspect with the dialog's features") << false << 13u << true << 0u;
    QTest::newRow("dump with the dialog's features") << true << 13u << true << 3u;
    QTest::newRow("dump with its feature alone") << true << 2u << true << 0u;
    QTest::newRow("inspect with the dump feature alone") << false << 2u << true << 3u;
    QTest::newRow("inspect without a viewer") << false << 13u << false << 8u;
    QTest::newRow("dump without a viewer") << true << 2u << false << 8u;
    QTest::newRow("the feature comes before the viewer, dump") << true << 13u << false << 3u;
    QTest::newRow("the feature comes before the viewer, inspect") << false << 0u << false << 3u;
}

void TestOverlays::rectanglesNeedFeatureAndViewer_data()
{
    featureRows();
}

void TestOverlays::rectanglesNeedFeatureAndViewer()
{
    QFETCH(bool, dump);
    QFETCH(quint32, features);
    QFETCH(bool, started);
    QFETCH(quint32, error);
    adapter->setFeatureFlags(features);
    if (started) {
        startQuietly(*adapter);
        leaveOldError(*adapter);
    }
    QCOMPARE(setRect(dump, 1, 2, 3, 4, "img"), error == 0);
    QCOMPARE(adapter->lastError(), error);
    // Never a command.
    QCOMPARE(calledNames(), QStringList());
}

void TestOverlays::rectanglesAreStoredForTheNextShow_data()
{
    QTest::addColumn<bool>("dump");
    QTest::addColumn<QByteArray>("space");
    QTest::addColumn<QString>("stored");
    for (const bool dump : {true, false}) {
        const char* overlay = dump ? "dump" : "inspect";
        QTest::addRow("%s in a named space", overlay) << dump << QByteArray("base") << "cs=base";
        QTest::addRow("%s with an empty space is in img", overlay) << dump << QByteArray("") << "cs=img";
        QTest::addRow("%s with a null space is in img", overlay) << dump << QByteArray() << "cs=img";
    }
}

void TestOverlays::rectanglesAreStoredForTheNextShow()
{
    QFETCH(bool, dump);
    QFETCH(QByteArray, space);
    QFETCH(QString, stored);
    startQuietly(*adapter);
    QVERIFY(setRect(dump, 1, 1, 1, 1, "win"));
    QVERIFY(setRect(dump, -10, 20, 300, 0, space.isNull() ? nullptr : space.constData()));
    QCOMPARE(calledNames(), QStringList());

    QVERIFY(show(dump, true));
    QStringList expected = dump ? dumpDefaults : inspectDefaults;
    expected << stored << "rect.h=0"
             << "rect.w=300"
             << "rect.x=-10"
             << "rect.y=20";
    expected.sort();
    QCOMPARE(textOf(FakeViewer::calls().at(0).before), expected);

    // The same entry goes with the deletion, and the other overlay keeps its own.
    QVERIFY(show(dump, false));
    QCOMPARE(FakeViewer::calls().at(1).argument, FakeViewer::calls().at(0).argument);
    QCOMPARE(textOf(FakeViewer::calls().at(1).before), expected);
    QVERIFY(show(!dump, true));
    QCOMPARE(textOf(FakeViewer::calls().at(2).before), dump ? inspectDefaults : dumpDefaults);
}

void TestOverlays::rectanglesNeedAViewer()
{
    QVERIFY(!adapter->setInspectRect(1, 2, 3, 4, "base"));
    QCOMPARE(adapter->lastError(), 8u);
    startQuietly(*adapter);
    QVERIFY(adapter->showInspectOverlay(true));
    // Nothing was prepared before the first image.
    QCOMPARE(textOf(FakeViewer::calls().at(0).before), inspectDefaults);
}

void TestOverlays::showingNeedsFeatureAndViewer_data()
{
    featureRows();
}

void TestOverlays::showingNeedsFeatureAndViewer()
{
    QFETCH(bool, dump);
    QFETCH(quint32, features);
    QFETCH(bool, started);
    QFETCH(quint32, error);
    adapter->setFeatureFlags(features);
    if (started)
        startQuietly(*adapter);
    for (const bool on : {true, false}) {
        if (started)
            leaveOldError(*adapter);
        QCOMPARE(show(dump, on), error == 0);
        QCOMPARE(adapter->lastError(), error);
        const QString command = on ? "cmd.display.overlay.rect.add" : "cmd.display.overlay.del";
        QCOMPARE(calledNames(), error == 0 ? QStringList{command} : QStringList());
    }
}

void TestOverlays::onlyOneIsSuccess_data()
{
    QTest::addColumn<bool>("dump");
    QTest::addColumn<bool>("on");
    QTest::addColumn<int>("answer");
    for (const bool dump : {true, false}) {
        for (const bool on : {true, false}) {
            for (const int answer : {0, 1, 2, -1}) {
                QTest::addRow("%s %s, the viewer answers %d", dump ? "dump" : "inspect", on ? "on" : "off",
                              answer)
                    << dump << on << answer;
            }
        }
    }
}

void TestOverlays::onlyOneIsSuccess()
{
    QFETCH(bool, dump);
    QFETCH(bool, on);
    QFETCH(int, answer);
    startQuietly(*adapter);
    leaveOldError(*adapter);
    const char* command = on ? "cmd.display.overlay.rect.add" : "cmd.display.overlay.del";
    FakeViewer::script().answers[command] = [answer](ParameterMap*) { return answer; };
    QCOMPARE(show(dump, on), answer == 1);
    QCOMPARE(adapter->lastError(), 0u);
    QCOMPARE(calledNames(), QStringList{command});
}

void TestOverlays::deletingBeforeAnyRectangleSendsTheDefaults()
{
    startQuietly(*adapter);
    QVERIFY(adapter->showDumpOverlay(false));
    QVERIFY(adapter->showInspectOverlay(false));
    const auto sent = FakeViewer::callsOf("cmd.display.overlay.del");
    QCOMPARE(sent.size(), std::size_t(2));
    QCOMPARE(textOf(sent[0].before), dumpDefaults);
    QCOMPARE(textOf(sent[1].before), inspectDefaults);
}

void TestOverlays::defaultsAreThereAfterAFailedConfigure()
{
    FakeViewer::script().configureStatus = 4;
    startQuietly(*adapter);
    QCOMPARE(adapter->lastError(), 4u);
    QVERIFY(adapter->showDumpOverlay(true));
    QVERIFY(adapter->showInspectOverlay(true));
    QCOMPARE(textOf(FakeViewer::calls().at(0).before), dumpDefaults);
    QCOMPARE(textOf(FakeViewer::calls().at(1).before), inspectDefaults);
}

void TestOverlays::theViewerMayWriteIntoTheStoredMap()
{
    startQuietly(*adapter);
    FakeViewer::script().answers["cmd.display.overlay.rect.add"] = [](ParameterMap* map) {
        (*map)["handle"] = "12";
        return 1;
    };
    QVERIFY(adapter->showInspectOverlay(true));
    QVERIFY(adapter->showInspectOverlay(false));
    QVERIFY(textOf(FakeViewer::calls().at(1).before).contains("handle=12"));
}

ZOR_DISPLAY_TEST_MAIN(TestOverlays)
#include "tst_overlays.moc"
