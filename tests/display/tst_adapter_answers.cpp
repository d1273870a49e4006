#include "tests/display/AdapterFixture.h"

#include <QRect>
#include <QtTest>

class TestAdapterAnswers : public QObject, private AdapterFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(15); }
    void cleanup() { tearDown(); }
    void fitModes_data();
    void fitModes();
    void translatedPoints_data();
    void translatedPoints();
    void theSeenRectangleIsRead_data();
    void theSeenRectangleIsRead();
    void displayGivesTheLowStatusWord_data();
    void displayGivesTheLowStatusWord();
    void aNullImageIsTheViewersMatter();
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
};

void TestAdapterAnswers::fitModes_data()
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

void TestAdapterAnswers::fitModes()
{
    QFETCH(int, mode);
    QFETCH(QStringList, sent);
    startQuietly(*adapter);
    QVERIFY(adapter->fitView(mode));
    QCOMPARE(textOf(FakeViewer::callsOf("cmd.display.view.fit").at(0).before), sent);
}

void TestAdapterAnswers::translatedPoints_data()
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

void TestAdapterAnswers::translatedPoints()
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

void TestAdapterAnswers::theSeenRectangleIsRead_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QRect>("rect");
    QTest::newRow("1") << 1 << QRect(-5, 10, 640, 480);
    QTest::newRow("another answer than 0") << -1 << QRect(-5, 10, 640, 480);
    QTest::newRow("0 leaves the rectangle as it was") << 0 << QRect(1, 2, 3, 4);
}

void TestAdapterAnswers::theSeenRectangleIsRead()
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

void TestAdapterAnswers::displayGivesTheLowStatusWord_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("error");
    QTest::newRow("success") << 0 << 0;
    QTest::newRow("a status") << 5 << 5;
    QTest::newRow("the high word does not count") << 0x70000 << 0;
    QTest::newRow("only the low word is kept") << 0x70009 << 9;
    QTest::newRow("negative") << -1 << 0xFFFF;
}

void TestAdapterAnswers::displayGivesTheLowStatusWord()
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

void TestAdapterAnswers::aNullImageIsTheViewersMatter()
{
    startQuietly(*adapter);
    for (const int status : {0, 6}) {
        FakeViewer::calls().clear();
        FakeViewer::script().displayStatus = status;
        QCOMPARE(adapter->displayImage(nullptr), status == 0);
        QCOMPARE(adapter->lastError(), std::uint32_t(status));
        QCOMPARE(calledNames(), QStringList{"display"});
        QVERIFY(!FakeViewer::calls().at(0).argument);
    }
}

void TestAdapterAnswers::aPairIsShown_data()
{
    QTest::addColumn<int>("answer");
    QTest::newRow("0 is failure") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("any other answer is success") << -8;
}

void TestAdapterAnswers::aPairIsShown()
{
    QFETCH(int, answer);
    startQuietly(*adapter);
    leaveOldError(*adapter);
    FakeViewer::script().pairResult = answer;
    const _ZorImage first = imageOf(8, 8);
    const _ZorImage other = imageOf(9, 9);
    QCOMPARE(adapter->displayImagePair(&first, &other), answer != 0);
    QCOMPARE(adapter->lastError(), 0u);
    QCOMPARE(calledNames(), QStringList{"displayPair"});
    QCOMPARE(FakeViewer::calls().at(0).argument, static_cast<const void*>(&first));
    QCOMPARE(FakeViewer::calls().at(0).second, static_cast<const void*>(&other));
}

void TestAdapterAnswers::colorationNeedsItsItem_data()
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

void TestAdapterAnswers::colorationNeedsItsItem()
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

void TestAdapterAnswers::theStageIsHandedThrough_data()
{
    QTest::addColumn<bool>("hasViewer");
    QTest::addColumn<bool>("hasStage");
    QTest::newRow("without a viewer") << false << true;
    QTest::newRow("without a stage") << true << false;
    QTest::newRow("with both") << true << true;
}

void TestAdapterAnswers::theStageIsHandedThrough()
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

void TestAdapterAnswers::settingsAreTheViewers()
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

void TestAdapterAnswers::parametersAreStored()
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

void TestAdapterAnswers::flagsAndKindAreThoseOfConstruction()
{
    QCOMPARE(adapter->featureFlags(), 15u);
    adapter->setFeatureFlags(0x80000001u);
    QCOMPARE(adapter->featureFlags(), 0x80000001u);
    QVERIFY(!adapter->isGpuViewer());
    QVERIFY(!adapter->parent());
    QCOMPARE(adapter->lastError(), 0u);
    QVERIFY(DisplayAdapterQT(nullptr, true, 0).isGpuViewer());
}

void TestAdapterAnswers::theViewerGoesToTheOtherFactory_data()
{
    QTest::addColumn<bool>("gpu");
    QTest::addColumn<bool>("started");
    QTest::addColumn<QString>("factory");
    QTest::newRow("software viewer") << false << true << "delete QGL";
    QTest::newRow("GPU viewer") << true << true << "delete CPU";
    QTest::newRow("no software viewer") << false << false << "delete QGL";
    QTest::newRow("no GPU viewer") << true << false << "delete CPU";
}

void TestAdapterAnswers::theViewerGoesToTheOtherFactory()
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

ZOR_DISPLAY_TEST_MAIN(TestAdapterAnswers)
#include "tst_adapter_answers.moc"
