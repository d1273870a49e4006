#include "display/DisplayAdapterQT.h"
#include "display/ZorDisplayProcessor.h"
#include "image/ZorImgProcessor.h"
#include "tests/display/AdapterTools.h"
#include "tests/support/VirtualPlace.h"

#include <QtTest>

Q_DECLARE_METATYPE(const QMetaObject*)

namespace {

/// An image processor that adds nothing to the base.
class PlainProcessor final : public ZorImgProcessor
{
public:
    int processImage(const _ZorImage*) override { return 0; }
    void noOperation() override {}
    int constantZero() override { return 0; }
    _ZorImage* outputImage() override { return nullptr; }
};

} // namespace

// The operations are called by their place in the class, by libraries that were built elsewhere.
class TestInterfaceOrder : public QObject
{
    Q_OBJECT

private slots:
    void operationsAreAtTheirPlaces_data();
    void operationsAreAtTheirPlaces();
    void mouseEventsStartEmpty();
    void thePlainListenerIgnoresNotifications();
    void theImageProcessorsBaseAnswers();
    void adaptersHaveNoSignalsOrSlots_data();
    void adaptersHaveNoSignalsOrSlots();
};

static void adapterRows()
{
    // QObject's own operations take the first twelve places: metaObject, qt_metacast, qt_metacall, the
    // destructor (two places), event, eventFilter, timerEvent, childEvent, customEvent, connectNotify,
    // disconnectNotify.
    std::size_t place = 12;
    const auto add = [&place](const char* name, auto function) {
        QTest::addRow("adapter: %s", name) << virtualPlace(function) << place++;
    };
    using A = DisplayAdapter;
    add("hasViewer", &A::hasViewer);
    add("isGpuViewer", &A::isGpuViewer);
    add("viewerSettings", &A::viewerSettings);
    add("handleDisplayEvent", &A::handleDisplayEvent);
    add("prepareImage", &A::prepareImage);
    add("lastError", &A::lastError);
    add("displayImage", &A::displayImage);
    add("setColoration", &A::setColoration);
    add("zoomView", &A::zoomView);
    add("fitView", &A::fitView);
    add("viewAt", &A::viewAt);
    add("viewScale", &A::viewScale);
    add("displayImagePair", &A::displayImagePair);
    add("showDumpOverlay", &A::showDumpOverlay);
    add("setDumpRect", &A::setDumpRect);
    add("showInspectOverlay", &A::showInspectOverlay);
    add("setInspectRect", &A::setInspectRect);
    add("translatePoint", &A::translatePoint);
    add("addNotification", &A::addNotification);
    add("viewImageRect", &A::viewImageRect);
    add("setParameter", &A::setParameter);
    add("parameter", &A::parameter);
    add("featureFlags", &A::featureFlags);
    add("setFeatureFlags", &A::setFeatureFlags);
    add("stageValue", &A::stageValue);
    add("stageImage", &A::stageImage);
    add("stageItem", &A::stageItem);
}

void TestInterfaceOrder::operationsAreAtTheirPlaces_data()
{
    QTest::addColumn<std::size_t>("place");
    QTest::addColumn<std::size_t>("expected");
    const auto row = [](const char* name, std::size_t place, std::size_t expected) {
        QTest::newRow(name) << place << expected;
    };
    adapterRows();
    row("processor: command", virtualPlace(&ZorDisplayProcessor::command), 2);
    row("processor: settings", virtualPlace(&ZorDisplayProcessor::settings), 3);
    row("processor: configure", virtualPlace(&ZorDisplayProcessor::configure), 4);
    row("processor: display", virtualPlace(&ZorDisplayProcessor::display), 5);
    row("processor: stage", virtualPlace(&ZorDisplayProcessor::stage), 7);
    row("processor: displayPair", virtualPlace(&ZorDisplayProcessor::displayPair), 10);
    row("settings: setText", virtualPlace(&DisplaySettings::setText), 9);
    row("settings: getDouble", virtualPlace(&DisplaySettings::getDouble), 13);
    row("settings: run", virtualPlace(&DisplaySettings::run), 16);
    row("stage: find", virtualPlace(&DisplayStage::find), 2);
    row("stage: value", virtualPlace(&DisplayStage::value), 10);
    row("stage: image", virtualPlace(&DisplayStage::image), 11);
    row("item: value", virtualPlace(&DisplayStageItem::value), 5);
    row("item: setValue", virtualPlace(&DisplayStageItem::setValue), 7);
    row("image processor: constantOne, after the destructor", virtualPlace(&ZorImgProcessor::constantOne), 2);
    row("image processor: processImage", virtualPlace(&ZorImgProcessor::processImage), 3);
    row("image processor: noOperation", virtualPlace(&ZorImgProcessor::noOperation), 4);
    row("image processor: constantZero", virtualPlace(&ZorImgProcessor::constantZero), 5);
    row("image processor: outputImage", virtualPlace(&ZorImgProcessor::outputImage), 6);
    row("image processor: baseZero", virtualPlace(&ZorImgProcessor::baseZero), 7);
    row("image processor: baseTrue", virtualPlace(&ZorImgProcessor::baseTrue), 8);
    row("image processor: baseTrueToo", virtualPlace(&ZorImgProcessor::baseTrueToo), 9);
    row("listener: object, after the destructor", virtualPlace(&ZorDisplayCommand::object), 2);
    row("listener: notify", virtualPlace(&ZorDisplayCommand::notify), 3);
}

void TestInterfaceOrder::operationsAreAtTheirPlaces()
{
    if (!ZOR_HAS_VIRTUAL_PLACE)
        QSKIP("in this ABI the place of a virtual operation cannot be read");
    QFETCH(std::size_t, place);
    QFETCH(std::size_t, expected);
    QCOMPARE(place, expected);
}

void TestInterfaceOrder::mouseEventsStartEmpty()
{
    const DisplayAdapterQT::DisplayMouseEv mouse(DisplayEvMouseMove);
    QCOMPARE(mouse.result, 0);
    QCOMPARE(mouse.imagePos, QPoint());
    QCOMPARE(mouse.windowPos, QPoint());
}

void TestInterfaceOrder::thePlainListenerIgnoresNotifications()
{
    ZorDisplayCommand listener;
    ParameterMap map;
    QCOMPARE(listener.object(), &listener);
    QCOMPARE(listener.notify("notification.view", &map), std::int64_t(0));
    QVERIFY(map.empty());
}

void TestInterfaceOrder::theImageProcessorsBaseAnswers()
{
    PlainProcessor processor;
    ZorImgProcessor& base = processor;
    QCOMPARE(base.constantOne(), 1);
    QCOMPARE(base.baseZero(), 0);
    QCOMPARE(base.baseTrue(), true);
    QCOMPARE(base.baseTrueToo(), true);
}

void TestInterfaceOrder::adaptersHaveNoSignalsOrSlots_data()
{
    QTest::addColumn<const QMetaObject*>("meta");
    QTest::addColumn<const QMetaObject*>("base");
    QTest::newRow("DisplayAdapter") << &DisplayAdapter::staticMetaObject << &QObject::staticMetaObject;
    QTest::newRow("DisplayAdapterQT")
        << DisplayAdapterQT(nullptr, false, 0).metaObject() << &DisplayAdapter::staticMetaObject;
}

void TestInterfaceOrder::adaptersHaveNoSignalsOrSlots()
{
    QFETCH(const QMetaObject*, meta);
    QFETCH(const QMetaObject*, base);
    QCOMPARE(meta->className(), QTest::currentDataTag());
    QCOMPARE(meta->superClass(), base);
    QCOMPARE(meta->methodCount(), meta->methodOffset());
}

ZOR_DISPLAY_TEST_MAIN(TestInterfaceOrder)
#include "tst_interface_order.moc"
