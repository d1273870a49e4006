#include "display/ParameterText.h"
#include "tests/display/AdapterFixture.h"

#include <QPoint>
#include <QRect>
#include <QtTest>

using Operation = std::function<bool(DisplayAdapterQT&)>;
Q_DECLARE_METATYPE(Operation)

namespace {

/// How a command's answer is judged.
enum Rule
{
    ExactlyOne,
    NonZero,
    Ignored
};

const _ZorImage pairImage = imageOf(8, 8);
const _ZorImage emptyPairImage = [] {
    _ZorImage image = imageOf(8, 8);
    image.imageSize = 0;
    return image;
}();

class SilentListener : public ZorDisplayCommand
{
} listener;

/// The point that the rows translate, set before each.
const QPoint givenPoint(-3, 44);
int pointX = 0;
int pointY = 0;

bool translate(DisplayAdapterQT& adapter)
{
    return adapter.translatePoint(&pointX, &pointY, "win", "img");
}

bool readRect(DisplayAdapterQT& adapter)
{
    QRect rect;
    return adapter.viewImageRect(&rect);
}

} // namespace

class TestAdapterOperations : public QObject, private AdapterFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tearDown(); }
    void aCommandGoesOutAndIsJudged_data();
    void aCommandGoesOutAndIsJudged();
    void nothingGoesOutWithoutAViewer_data();
    void nothingGoesOutWithoutAViewer();
    void nullArgumentsAreRefused_data();
    void nullArgumentsAreRefused();
    void theErrorCodeIsLeftAlone_data();
    void theErrorCodeIsLeftAlone();
};

void TestAdapterOperations::init()
{
    setUp(15);
    pointX = givenPoint.x();
    pointY = givenPoint.y();
}

void TestAdapterOperations::aCommandGoesOutAndIsJudged_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("hasMap");
    QTest::addColumn<QStringList>("parameters");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("success");
    const auto rows = [](const char* name, const Operation& operation, const char* command, bool hasMap,
                         const QStringList& parameters, Rule rule) {
        for (const int answer : {0, 1, 2, -1}) {
            const bool success = rule == Ignored || (rule == ExactlyOne ? answer == 1 : answer != 0);
            QTest::addRow("%s, the viewer answers %d", name, answer)
                << operation << command << hasMap << parameters << answer << success;
        }
    };
    using A = DisplayAdapterQT;
    rows(
        "zoom in", [](A& a) { return a.zoomView(true); }, "cmd.display.view.zoom.in", false, {}, NonZero);
    rows(
        "zoom out", [](A& a) { return a.zoomView(false); }, "cmd.display.view.zoom.out", false, {}, NonZero);
    rows(
        "fit", [](A& a) { return a.fitView(2); }, "cmd.display.view.fit", true, {"mode=2"}, ExactlyOne);
    rows(
        "view at", [](A& a) { return a.viewAt(0.5, -0.25); }, "cmd.display.view.at", true,
        {"cs=base", "pos.x=0.500000", "pos.y=-0.250000"}, ExactlyOne);
    rows(
        "scale", [](A& a) { return a.viewScale(3.37); }, "cmd.display.view.scale", true,
        {"cs=base", "scale=3.370000"}, ExactlyOne);
    rows(
        "add a listener", [](A& a) { return a.addNotification(&listener); }, "cmd.system.notification.add",
        true, {"proc=" + QString::fromStdString(textFromPointer(&listener))}, NonZero);
    rows("read the rectangle", readRect, "cmd.display.view.image", true, {}, NonZero);
    rows(
        "coloration", [](A& a) { return a.setColoration(true); }, "cmd.image.rebuild", false, {}, Ignored);
}

void TestAdapterOperations::aCommandGoesOutAndIsJudged()
{
    QFETCH(Operation, operation);
    QFETCH(QString, command);
    QFETCH(bool, hasMap);
    QFETCH(QStringList, parameters);
    QFETCH(int, answer);
    QFETCH(bool, success);
    FakeViewer::script().stageItems["image.coloration"] = 0;
    startQuietly(*adapter);
    leaveOldError(*adapter);
    QCOMPARE(adapter->lastError(), OldError);
    FakeViewer::script().answers[command.toStdString()] = [answer](ParameterMap*) { return answer; };

    QCOMPARE(operation(*adapter), success);

    const auto sent = FakeViewer::callsOf(command.toStdString());
    QCOMPARE(sent.size(), std::size_t(1));
    QCOMPARE(sent[0].hasMap, hasMap);
    QCOMPARE(textOf(sent[0].before), parameters);
    QCOMPARE(textOf(sent[0].after), parameters);
    QCOMPARE(calledNames().filter("cmd.").size(), 1);
    // An unwelcome answer is no error code.
    QCOMPARE(adapter->lastError(), 0u);
}

void TestAdapterOperations::nothingGoesOutWithoutAViewer_data()
{
    QTest::addColumn<Operation>("operation");
    const auto row = [](const char* name, const Operation& operation) { QTest::newRow(name) << operation; };
    using A = DisplayAdapterQT;
    row("displayImage", [](A& a) { return a.displayImage(&pairImage); });
    row("setColoration", [](A& a) { return a.setColoration(true); });
    row("zoomView in", [](A& a) { return a.zoomView(true); });
    row("zoomView out", [](A& a) { return a.zoomView(false); });
    row("fitView", [](A& a) { return a.fitView(1); });
    row("viewAt", [](A& a) { return a.viewAt(0.5, 0.5); });
    row("viewScale", [](A& a) { return a.viewScale(1); });
    row("displayImagePair", [](A& a) { return a.displayImagePair(&pairImage, &pairImage); });
    row("displayImagePair with a null image", [](A& a) { return a.displayImagePair(nullptr, &pairImage); });
    row("showDumpOverlay", [](A& a) { return a.showDumpOverlay(true); });
    row("setDumpRect", [](A& a) { return a.setDumpRect(1, 2, 3, 4, "img"); });
    row("showInspectOverlay", [](A& a) { return a.showInspectOverlay(true); });
    row("setInspectRect", [](A& a) { return a.setInspectRect(1, 2, 3, 4, "img"); });
    row("translatePoint", translate);
    row("translatePoint with null places",
        [](A& a) { return a.translatePoint(nullptr, nullptr, "win", "img"); });
    row("addNotification", [](A& a) { return a.addNotification(&listener); });
    row("addNotification of null", [](A& a) { return a.addNotification(nullptr); });
    row("viewImageRect", readRect);
    row("viewImageRect into null", [](A& a) { return a.viewImageRect(nullptr); });
}

void TestAdapterOperations::nothingGoesOutWithoutAViewer()
{
    QFETCH(Operation, operation);
    QVERIFY(!adapter->hasViewer());
    QVERIFY(!operation(*adapter));
    QCOMPARE(adapter->lastError(), std::uint32_t(DisplayErrNoViewer));
    QCOMPARE(std::uint32_t(DisplayErrNoViewer), 8u);
    QCOMPARE(calledNames(), QStringList());
    QCOMPARE(QPoint(pointX, pointY), givenPoint);
}

void TestAdapterOperations::nullArgumentsAreRefused_data()
{
    QTest::addColumn<Operation>("operation");
    const auto row = [](const char* name, const Operation& operation) { QTest::newRow(name) << operation; };
    using A = DisplayAdapterQT;
    row("prepareImage of null", [](A& a) { return a.prepareImage(nullptr, true); });
    row("a pair without the first image", [](A& a) { return a.displayImagePair(nullptr, &pairImage); });
    row("a pair without the second image", [](A& a) { return a.displayImagePair(&pairImage, nullptr); });
    row("a pair whose first image has size 0",
        [](A& a) { return a.displayImagePair(&emptyPairImage, &pairImage); });
    row("a pair whose second image has size 0",
        [](A& a) { return a.displayImagePair(&pairImage, &emptyPairImage); });
    row("translatePoint without x", [](A& a) { return a.translatePoint(nullptr, &pointY, "win", "img"); });
    row("translatePoint without y", [](A& a) { return a.translatePoint(&pointX, nullptr, "win", "img"); });
    row("translatePoint without a source",
        [](A& a) { return a.translatePoint(&pointX, &pointY, nullptr, "img"); });
    row("translatePoint without a destination",
        [](A& a) { return a.translatePoint(&pointX, &pointY, "win", nullptr); });
    row("addNotification of null", [](A& a) { return a.addNotification(nullptr); });
    row("viewImageRect into null", [](A& a) { return a.viewImageRect(nullptr); });
}

void TestAdapterOperations::nullArgumentsAreRefused()
{
    QFETCH(Operation, operation);
    startQuietly(*adapter);
    leaveOldError(*adapter);
    QVERIFY(!operation(*adapter));
    QCOMPARE(adapter->lastError(), std::uint32_t(DisplayErrArgument));
    QCOMPARE(std::uint32_t(DisplayErrArgument), 7u);
    QCOMPARE(calledNames(), QStringList());
    QCOMPARE(QPoint(pointX, pointY), givenPoint);
}

void TestAdapterOperations::theErrorCodeIsLeftAlone_data()
{
    QTest::addColumn<Operation>("operation");
    const auto row = [](const char* name, const Operation& operation) { QTest::newRow(name) << operation; };
    using A = DisplayAdapterQT;
    row("hasViewer", [](A& a) { return a.hasViewer(); });
    row("isGpuViewer", [](A& a) { return a.isGpuViewer(); });
    row("viewerSettings", [](A& a) { return a.viewerSettings() != nullptr; });
    row("stageValue of the stage", [](A& a) { return a.stageValue(nullptr) != 0; });
    row("stageValue of an item", [](A& a) { return a.stageValue("item") != 0; });
    row("stageImage", [](A& a) { return a.stageImage(0) != nullptr; });
    row("stageItem", [](A& a) { return a.stageItem("item") != nullptr; });
    row("setParameter", [](A& a) { return a.setParameter("name", "value"); });
    row("setParameter of null", [](A& a) { return a.setParameter("name", nullptr); });
    row("parameter", [](A& a) { return a.parameter("name").empty(); });
    row("featureFlags", [](A& a) { return a.featureFlags() != 0; });
    row("setFeatureFlags", [](A& a) {
        a.setFeatureFlags(3);
        return true;
    });
}

void TestAdapterOperations::theErrorCodeIsLeftAlone()
{
    QFETCH(Operation, operation);
    adapter->prepareImage(nullptr, false);
    operation(*adapter);
    QCOMPARE(adapter->lastError(), 7u);
    QCOMPARE(calledNames(), QStringList());
    startQuietly(*adapter);
    leaveOldError(*adapter);
    operation(*adapter);
    QCOMPARE(adapter->lastError(), OldError);
}

ZOR_DISPLAY_TEST_MAIN(TestAdapterOperations)
#include "tst_adapter_operations.moc"
