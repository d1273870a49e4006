#include "display/ParameterText.h"
#include "tests/display/AdapterTools.h"

#include <QRect>
#include <QtTest>

using Operation = std::function<bool(DisplayAdapterQT&)>;
using Answer = std::function<std::int32_t(ParameterMap*)>;
Q_DECLARE_METATYPE(Operation)

namespace {

/// How a command's answer is judged.
enum Rule
{
    ExactlyOne,
    NonZero,
    Ignored
};

const ParameterMap noParameters;
const _ZorImage pairImage = imageOf(8, 8);
const _ZorImage emptyPairImage = [] {
    _ZorImage image = imageOf(8, 8);
    image.imageSize = 0;
    return image;
}();

class Listener : public ZorDisplayCommand
{
} listener;

bool translate(DisplayAdapterQT& adapter)
{
    int x = -3;
    int y = 44;
    return adapter.translatePoint(&x, &y, "win", "img");
}

bool readRect(DisplayAdapterQT& adapter)
{
    QRect rect;
    return adapter.viewImageRect(&rect);
}

} // namespace

class tst_adapter_operations : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aCommandGoesOutAndIsJudged_data();
    void aCommandGoesOutAndIsJudged();
    void nothingGoesOutWithoutAViewer_data();
    void nothingGoesOutWithoutAViewer();
    void nullArgumentsAreRefused_data();
    void nullArgumentsAreRefused();
    void theErrorCodeIsLeftAlone_data();
    void theErrorCodeIsLeftAlone();
    void fitModes_data();
    void fitModes();
    void translatedPoints_data();
    void translatedPoints();
    void theSeenRectangleIsRead_data();
    void theSeenRectangleIsRead();
    void displayGivesTheLowStatusWord_data();
    void displayGivesTheLowStatusWord();
    void aPairIsShown_data();
    void aPairIsShown();
    void colorationNeedsItsItem_data();
    void colorationNeedsItsItem();
    void theStageIsHandedThrough_data();
    void theStageIsHandedThrough();
    void settingsAreTheViewers();
    void parametersAreStored();
    void flagsAndKindAreThoseOfConstruction();
    void theViewerGoesToTheOtherFactory_data();
    void theViewerGoesToTheOtherFactory();

private:
    std::unique_ptr<RecordingView> view;
    std::unique_ptr<DisplayAdapterQT> adapter;
};

void tst_adapter_operations::init()
{
    FakeViewer::reset();
    FakeImageHeaders::reset();
    view = std::make_unique<RecordingView>();
    adapter = std::make_unique<DisplayAdapterQT>(view.get(), false, 15);
}

void tst_adapter_operations::cleanup()
{
    adapter.reset();
    view.reset();
    QCOMPARE(FakeViewer::living(), 0);
}

void tst_adapter_operations::aCommandGoesOutAndIsJudged_data()
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

void tst_adapter_operations::aCommandGoesOutAndIsJudged()
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

void tst_adapter_operations::nothingGoesOutWithoutAViewer_data()
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

void tst_adapter_operations::nothingGoesOutWithoutAViewer()
{
    QFETCH(Operation, operation);
    QVERIFY(!adapter->hasViewer());
    QVERIFY(!operation(*adapter));
    QCOMPARE(adapter->lastError(), std::uint32_t(DisplayErrNoViewer));
    QCOMPARE(std::uint32_t(DisplayErrNoViewer), 8u);
    QCOMPARE(calledNames(), QStringList());
}

void tst_adapter_operations::nullArgumentsAreRefused_data()
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
    static int place = 0;
    row("translatePoint without x", [](A& a) { return a.translatePoint(nullptr, &place, "win", "img"); });
    row("translatePoint without y", [](A& a) { return a.translatePoint(&place, nullptr, "win", "img"); });
    row("translatePoint without a source",
        [](A& a) { return a.translatePoint(&place, &place, nullptr, "img"); });
    row("translatePoint without a destination",
        [](A& a) { return a.translatePoint(&place, &place, "win", nullptr); });
    row("addNotification of null", [](A& a) { return a.addNotification(nullptr); });
    row("viewImageRect into null", [](A& a) { return a.viewImageRect(nullptr); });
}

void tst_adapter_operations::nullArgumentsAreRefused()
{
    QFETCH(Operation, operation);
    startQuietly(*adapter);
    leaveOldError(*adapter);
    QVERIFY(!operation(*adapter));
    QCOMPARE(adapter->lastError(), std::uint32_t(DisplayErrArgument));
    QCOMPARE(std::uint32_t(DisplayErrArgument), 7u);
    QCOMPARE(calledNames(), QStringList());
}

void tst_adapter_operations::theErrorCodeIsLeftAlone_data()
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

void tst_adapter_operations::theErrorCodeIsLeftAlone()
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

void tst_adapter_operations::fitModes_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("sent");
    QTest::newRow("0 counts as 1") << 0 << QStringList{"mode=1"};
    QTest::newRow("1") << 1 << QStringList{"mode=1"};
    QTest::newRow("2") << 2 << QStringList{"mode=2"};
    QTest::newRow("3") << 3 << QStringList{"mode=3"};
    QTest::newRow("4 counts as 1") << 4 << QStringList{"mode=1"};
    QTest::newRow("7 counts as 1") << 7 << QStringList{"mode=1"};
    QTest::newRow("negative counts as 1") << -2 << QStringList{"mode=1"};
}

void tst_adapter_operations::fitModes()
{
    QFETCH(int, mode);
    QFETCH(QStringList, sent);
    startQuietly(*adapter);
    QVERIFY(adapter->fitView(mode));
    QCOMPARE(textOf(FakeViewer::callsOf("cmd.display.view.fit").at(0).before), sent);
}

void tst_adapter_operations::translatedPoints_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("result");
    QTest::addColumn<bool>("success");
    QTest::addColumn<int>("error");
    QTest::addColumn<QPoint>("point");
    const QPoint given(-3, 44);
    const QPoint moved(120, -7);
    QTest::newRow("inside") << 1 << "1" << true << 0 << moved;
    QTest::newRow("another answer than 1 is success too") << 5 << "1" << true << 0 << moved;
    QTest::newRow("any result but 0 is success") << 1 << "-2" << true << 0 << moved;
    QTest::newRow("the result 0 rewrites the point and fails without an error")
        << 1 << "0" << false << 0 << moved;
    QTest::newRow("an empty result counts as 0") << 1 << "" << false << 0 << moved;
    QTest::newRow("an absent result counts as 0") << 1 << QString() << false << 0 << moved;
    QTest::newRow("a failed command leaves the point") << 0 << "1" << false << 1 << given;
}

void tst_adapter_operations::translatedPoints()
{
    QFETCH(int, answer);
    QFETCH(QString, result);
    QFETCH(bool, success);
    QFETCH(int, error);
    QFETCH(QPoint, point);
    startQuietly(*adapter);
    leaveOldError(*adapter);
    FakeViewer::script().answers["cmd.display.view.translate"] = [=](ParameterMap* map) {
        (*map)["pos.x"] = "120";
        (*map)["pos.y"] = "-7";
        if (!result.isNull())
            (*map)["result"] = result.toStdString();
        return answer;
    };
    int x = -3;
    int y = 44;
    QCOMPARE(adapter->translatePoint(&x, &y, "win", "img"), success);
    QCOMPARE(adapter->lastError(), std::uint32_t(error));
    QCOMPARE(QPoint(x, y), point);
    const ViewerCall sent = FakeViewer::callsOf("cmd.display.view.translate").at(0);
    const QStringList expected = {"cs.dst=img", "cs.src=win", "pos.x=-3", "pos.y=44"};
    QCOMPARE(textOf(sent.before), expected);
    QCOMPARE(calledNames(), QStringList{"cmd.display.view.translate"});
}

void tst_adapter_operations::theSeenRectangleIsRead_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QRect>("rect");
    QTest::newRow("1") << 1 << QRect(-5, 10, 640, 480);
    QTest::newRow("another answer than 0") << -1 << QRect(-5, 10, 640, 480);
    QTest::newRow("0 leaves the rectangle as it was") << 0 << QRect(1, 2, 3, 4);
}

void tst_adapter_operations::theSeenRectangleIsRead()
{
    QFETCH(int, answer);
    QFETCH(QRect, rect);
    startQuietly(*adapter);
    leaveOldError(*adapter);
    FakeViewer::script().answers["cmd.display.view.image"] = [=](ParameterMap* map) {
        *map = {{"pos.x", "-5"}, {"pos.y", "10"}, {"dim.w", "640"}, {"dim.h", "480"}};
        return answer;
    };
    QRect seen(1, 2, 3, 4);
    QCOMPARE(adapter->viewImageRect(&seen), answer != 0);
    QCOMPARE(seen, rect);
    QCOMPARE(adapter->lastError(), 0u);
    QVERIFY(FakeViewer::callsOf("cmd.display.view.image").at(0).before.empty());
}

void tst_adapter_operations::displayGivesTheLowStatusWord_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("error");
    QTest::newRow("success") << 0 << 0;
    QTest::newRow("a status") << 5 << 5;
    QTest::newRow("the high word does not count") << 0x70000 << 0;
    QTest::newRow("only the low word is kept") << 0x70009 << 9;
    QTest::newRow("negative") << -1 << 0xFFFF;
}

void tst_adapter_operations::displayGivesTheLowStatusWord()
{
    QFETCH(int, status);
    QFETCH(int, error);
    startQuietly(*adapter);
    leaveOldError(*adapter);
    FakeViewer::script().displayStatus = status;
    const _ZorImage image = imageOf(64, 48);
    QCOMPARE(adapter->displayImage(&image), error == 0);
    QCOMPARE(adapter->lastError(), std::uint32_t(error));
    QCOMPARE(calledNames(), QStringList{"display"});
    QCOMPARE(FakeViewer::calls().at(0).argument, static_cast<const void*>(&image));
}

void tst_adapter_operations::aPairIsShown_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("0 is failure") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("any other answer is success") << -8;
}

void tst_adapter_operations::aPairIsShown()
{
    QFETCH(int, answer);
    startQuietly(*adapter);
    leaveOldError(*adapter);
    FakeViewer::script().pairResult = answer;
    const _ZorImage other = imageOf(9, 9);
    QCOMPARE(adapter->displayImagePair(&pairImage, &other), answer != 0);
    QCOMPARE(adapter->lastError(), 0u);
    QCOMPARE(calledNames(), QStringList{"displayPair"});
    QCOMPARE(FakeViewer::calls().at(0).argument, static_cast<const void*>(&pairImage));
    QCOMPARE(FakeViewer::calls().at(0).second, static_cast<const void*>(&other));
}

void tst_adapter_operations::colorationNeedsItsItem_data()
{
    QTest::addColumn<bool>("hasStage");
    QTest::addColumn<bool>("hasItem");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QStringList>("calls");
    const QStringList both = {"setValue", "cmd.image.rebuild"};
    QTest::newRow("on") << true << true << true << both;
    QTest::newRow("off") << true << true << false << both;
    QTest::newRow("without the item") << true << false << true << QStringList();
    QTest::newRow("without a stage") << false << true << true << QStringList();
}

void tst_adapter_operations::colorationNeedsItsItem()
{
    QFETCH(bool, hasStage);
    QFETCH(bool, hasItem);
    QFETCH(bool, on);
    QFETCH(QStringList, calls);
    FakeViewer::script().hasStage = hasStage;
    if (hasItem)
        FakeViewer::script().stageItems["image.coloration"] = 0;
    startQuietly(*adapter);
    leaveOldError(*adapter);
    QCOMPARE(adapter->setColoration(on), !calls.isEmpty());
    QCOMPARE(adapter->lastError(), 0u);
    QCOMPARE(calledNames(), calls);
    if (!calls.isEmpty())
        QCOMPARE(FakeViewer::calls().at(0).text.c_str(), on ? "image.coloration=1" : "image.coloration=0");
}

void tst_adapter_operations::theStageIsHandedThrough_data()
{
    QTest::addColumn<bool>("hasViewer");
    QTest::addColumn<bool>("hasStage");
    QTest::newRow("without a viewer") << false << true;
    QTest::newRow("without a stage") << true << false;
    QTest::newRow("with both") << true << true;
}

void tst_adapter_operations::theStageIsHandedThrough()
{
    QFETCH(bool, hasViewer);
    QFETCH(bool, hasStage);
    _ZorImage held = imageOf(64, 48);
    FakeViewer::script().hasStage = hasStage;
    FakeViewer::script().stageImage = &held;
    FakeViewer::script().stageValue = std::int64_t(1) << 40;
    FakeViewer::script().stageItems["item"] = -(std::int64_t(1) << 41);
    if (hasViewer)
        startQuietly(*adapter);
    const bool there = hasViewer && hasStage;
    QCOMPARE(adapter->stageValue(nullptr), there ? std::int64_t(1) << 40 : 0);
    QCOMPARE(adapter->stageValue(""), there ? std::int64_t(1) << 40 : 0);
    QCOMPARE(adapter->stageValue("item"), there ? -(std::int64_t(1) << 41) : 0);
    QCOMPARE(adapter->stageValue("absent"), std::int64_t(0));
    QCOMPARE(adapter->stageImage(0), there ? &held : nullptr);
    QVERIFY(!adapter->stageImage(1));
    QCOMPARE(adapter->stageItem("item") != nullptr, there);
    QVERIFY(!adapter->stageItem("absent"));
    QVERIFY(!adapter->stageItem(""));
    QVERIFY(!adapter->stageItem(nullptr));
}

void tst_adapter_operations::settingsAreTheViewers()
{
    QVERIFY(!adapter->viewerSettings());
    FakeViewer::script().settings["display.view.scale"] = 0.73;
    startQuietly(*adapter);
    QVERIFY(adapter->viewerSettings());
    double scale = 0;
    QVERIFY(adapter->viewerSettings()->getDouble("display.view.scale", &scale));
    QCOMPARE(scale, 0.73);
    adapter->viewerSettings()->setText("processor", "0x10");
    adapter->viewerSettings()->run("processing.proc.add");
    const QStringList expected = {"setText", "run"};
    QCOMPARE(calledNames(), expected);
    FakeViewer::script().hasSettings = false;
    QVERIFY(!adapter->viewerSettings());
}

void tst_adapter_operations::parametersAreStored()
{
    QVERIFY(!adapter->setParameter(nullptr, "value"));
    QVERIFY(!adapter->setParameter("name", nullptr));
    QCOMPARE(adapter->parameter("name").c_str(), "");
    QVERIFY(adapter->setParameter("name", "first"));
    QVERIFY(adapter->setParameter("name", "second"));
    QVERIFY(!adapter->setParameter("name", nullptr));
    QCOMPARE(adapter->parameter("name").c_str(), "second");
    QVERIFY(adapter->setParameter("name", ""));
    QCOMPARE(adapter->parameter("name").c_str(), "");
    QCOMPARE(adapter->parameter("absent").c_str(), "");
    QCOMPARE(adapter->parameter(nullptr).c_str(), "");
    QCOMPARE(calledNames(), QStringList());
    // Only what was stored goes out; the reads of absent names stored nothing.
    const _ZorImage image = imageOf(64, 48);
    adapter->setFeatureFlags(0);
    adapter->prepareImage(&image, false);
    const auto sent = FakeViewer::callsOf("cmd.parameter.set");
    QCOMPARE(sent.size(), std::size_t(1));
    const QStringList expected = {"name=name", "value="};
    QCOMPARE(textOf(sent[0].before), expected);
}

void tst_adapter_operations::flagsAndKindAreThoseOfConstruction()
{
    QCOMPARE(adapter->featureFlags(), 15u);
    adapter->setFeatureFlags(0x80000001u);
    QCOMPARE(adapter->featureFlags(), 0x80000001u);
    QVERIFY(!adapter->isGpuViewer());
    QVERIFY(!adapter->parent());
    QCOMPARE(adapter->lastError(), 0u);
    QVERIFY(DisplayAdapterQT(nullptr, true, 0).isGpuViewer());
}

void tst_adapter_operations::theViewerGoesToTheOtherFactory_data()
{
    QTest::addColumn<bool>("gpu");
    QTest::addColumn<bool>("started");
    QTest::addColumn<QString>("factory");
    QTest::newRow("software viewer") << false << true << "delete QGL";
    QTest::newRow("GPU viewer") << true << true << "delete CPU";
    QTest::newRow("no software viewer") << false << false << "delete QGL";
    QTest::newRow("no GPU viewer") << true << false << "delete CPU";
}

void tst_adapter_operations::theViewerGoesToTheOtherFactory()
{
    QFETCH(bool, gpu);
    QFETCH(bool, started);
    QFETCH(QString, factory);
    adapter = std::make_unique<DisplayAdapterQT>(view.get(), gpu, 13);
    if (started)
        startQuietly(*adapter);
    FakeViewer::calls().clear();
    adapter.reset();
    QCOMPARE(calledNames(), QStringList{factory});
    QCOMPARE(FakeViewer::calls().at(0).argument != nullptr, started);
    QCOMPARE(FakeViewer::living(), 0);
    QCOMPARE(FakeImageHeaders::created(), started ? 1 : 0);
    // The header is left alone.
    QCOMPARE(FakeImageHeaders::released(), 0);
}

ZOR_DISPLAY_TEST_MAIN(tst_adapter_operations)
#include "tst_adapter_operations.moc"
