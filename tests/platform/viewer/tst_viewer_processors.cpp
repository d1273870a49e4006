#include "display/DisplaySettings.h"
#include "display/DisplayStage.h"
#include "image/PixelTypeCode.h"
#include "image/ZorImageApi.h"
#include "image/ZorImgProcessor.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

/// The processors between what `display` gets and what is seen: order, ownership, rebuilding.
class TestViewerProcessors : public QObject
{
    Q_OBJECT

private slots:
    void processorsRunInOrder();
    void processorsAreDeletedByTheViewer();
    void aProcessorWithoutOutputIsPassedOver();
    void rebuildRunsTheProcessorsOnTheCopy();
};

namespace {
/// Brings every sample to one value, and counts itself.
class Painter : public ZorImgProcessor
{
public:
    explicit Painter(int add, int result = 0)
        : m_add(add)
        , m_result(result)
    {
        ++alive;
    }
    ~Painter() override
    {
        --alive;
        ZorReleaseImage(&m_image);
    }
    int processImage(const _ZorImage* source) override
    {
        ZorCloneImage(&m_image, source);
        for (std::uint32_t i = 0; i < m_image->imageSize; ++i)
            m_image->data[i] = static_cast<std::uint8_t>(m_image->data[i] * 2 + m_add);
        return m_result;
    }
    void noOperation() override {}
    int constantZero() override { return 0; }
    _ZorImage* outputImage() override { return hasOutput ? m_image : nullptr; }

    static int alive;
    bool hasOutput = true;

private:
    int m_add;
    int m_result;
    _ZorImage* m_image = nullptr;
};

int Painter::alive = 0;

int addProcessor(ShownViewer& shown, ZorImgProcessor* processor)
{
    char address[64] = {};
    std::snprintf(address, sizeof address, "%p", static_cast<void*>(processor));
    shown.viewer->settings()->setText("processor", address);
    return shown.viewer->settings()->run("processing.proc.add");
}

TestImage flat(int value, int width = 40, int height = 30)
{
    return {ZorMono8, width, height, [value](int, int, int) { return value; }};
}
} // namespace

void TestViewerProcessors::processorsRunInOrder()
{
    ShownViewer shown(QSize(40, 30));
    QCOMPARE(addProcessor(shown, new Painter(3)), 1);
    QCOMPARE(addProcessor(shown, new Painter(7, 5)), 1);
    TestImage image = flat(10);
    shown.show(image);
    image.poison();
    // (10 * 2 + 3) * 2 + 7.
    QCOMPARE(qRed(shown.pixel(5, 5)), 53);
    QCOMPARE(int(*shown.viewer->stage()->image(0)->data), 10);
    QCOMPARE(numberIn(shown.listener.last("processed"), "result"), 5);
    QCOMPARE(shown.listener.heard.back().name, QString("notification.image"));
}

void TestViewerProcessors::processorsAreDeletedByTheViewer()
{
    QCOMPARE(Painter::alive, 0);
    {
        ShownViewer shown(QSize(40, 30));
        DisplaySettings* settings = shown.viewer->settings();
        QCOMPARE(settings->run("processing.proc.add"), 0);
        settings->setText("processor", "not an address");
        QCOMPARE(settings->run("processing.proc.add"), 0);
        auto* twice = new Painter(1);
        QCOMPARE(addProcessor(shown, twice), 1);
        QCOMPARE(addProcessor(shown, twice), 1);
        addProcessor(shown, new Painter(2));
        QCOMPARE(Painter::alive, 2);
        shown.show(flat(10));
        QCOMPARE(qRed(shown.pixel(5, 5)), (10 * 2 + 1) * 2 + 2);
        QCOMPARE(settings->run("processing.proc.del"), 1);
        QCOMPARE(Painter::alive, 0);
        // The address is used up: what was deleted does not come back.
        QCOMPARE(settings->run("processing.proc.add"), 0);
        shown.show(flat(10));
        QCOMPARE(qRed(shown.pixel(5, 5)), 10);
        addProcessor(shown, new Painter(3));
    }
    QCOMPARE(Painter::alive, 0);
}

void TestViewerProcessors::aProcessorWithoutOutputIsPassedOver()
{
    ShownViewer shown(QSize(40, 30));
    auto* mute = new Painter(50);
    mute->hasOutput = false;
    addProcessor(shown, mute);
    addProcessor(shown, new Painter(1));
    QCOMPARE(shown.show(flat(10)), 0);
    QCOMPARE(qRed(shown.pixel(5, 5)), 21);
}

void TestViewerProcessors::rebuildRunsTheProcessorsOnTheCopy()
{
    ShownViewer shown(QSize(40, 30));
    shown.show(flat(10));
    addProcessor(shown, new Painter(1));
    QCOMPARE(qRed(shown.pixel(5, 5)), 10);
    QCOMPARE(shown.run("cmd.image.rebuild"), 1);
    QCOMPARE(qRed(shown.pixel(5, 5)), 21);
    QCOMPARE(shown.run("cmd.image.rebuild"), 1);
    QCOMPARE(qRed(shown.pixel(5, 5)), 21);
    shown.viewer->settings()->run("processing.proc.del");
    shown.run("cmd.image.rebuild");
    QCOMPARE(qRed(shown.pixel(5, 5)), 10);
}

QTEST_MAIN(TestViewerProcessors)
#include "tst_viewer_processors.moc"
