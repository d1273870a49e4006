#include "display/DisplaySettings.h"
#include "display/DisplayStage.h"
#include "image/PixelTypeCode.h"
#include "image/ZorImageApi.h"
#include "image/ZorImgProcessor.h"
#include "tests/platform/viewer/ViewerTools.h"
#include "tests/support/FormatCodes.h"

#include <QTest>

/// The processors between what `display` gets and what is seen: order, ownership, rebuilding.
class TestViewerProcessors : public QObject
{
    Q_OBJECT

private slots:
    void processorsRunInOrder();
    void pairReportsTheFirstResultThatIsNotZero_data();
    void pairReportsTheFirstResultThatIsNotZero();
    void processorsAreDeletedByTheViewer();
    void aProcessorWithoutOutputIsPassedOver();
    void rebuildRunsTheProcessorsOnTheCopy();
    void rebuildRunsTheProcessorsOnBothOfAPair();
    void theLastOutputIsSeenInItsOwnFormat_data();
    void theLastOutputIsSeenInItsOwnFormat();
    void nothingOfAProcessorsBufferIsReadLater_data();
    void nothingOfAProcessorsBufferIsReadLater();
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

/// Answers with the first byte, with its sign, of what it is given and passes on.
class Answerer : public ZorImgProcessor
{
public:
    int processImage(const _ZorImage* source) override { return static_cast<std::int8_t>(*source->data); }
    void noOperation() override {}
    int constantZero() override { return 0; }
    _ZorImage* outputImage() override { return nullptr; }
};

// One format of each way to the screen.
void addFormats()
{
    QTest::addColumn<quint32>("pixelType");
    QTest::newRow("Mono8, as it lies") << zor::Mono8;
    QTest::newRow("BGR8, as it lies") << Bgr8Code;
    QTest::newRow("BGRa8, unpacked") << codeOf("BGRa8");
    QTest::newRow("BayerRG8, luma") << codeOf("BayerRG8");
    QTest::newRow("YUV444_8, luma") << codeOf("YUV444_8");
}

QImage closeUp(const TestImage& image, ZorImgProcessor* processor)
{
    ShownViewer shown(QSize(200, 150));
    if (processor)
        addProcessor(shown.viewer, processor);
    if (shown.show(image) != 0)
        qFatal("the image is refused");
    shown.setScale(48.0);
    return shown.grab();
}
} // namespace

void TestViewerProcessors::processorsRunInOrder()
{
    ShownViewer shown(QSize(40, 30));
    QCOMPARE(addProcessor(shown.viewer, new Painter(3)), 1);
    QCOMPARE(addProcessor(shown.viewer, new Painter(7, 5)), 1);
    TestImage image = flat(10);
    shown.show(image);
    image.poison();
    // (10 * 2 + 3) * 2 + 7.
    QCOMPARE(qRed(shown.pixel(5, 5)), 53);
    QCOMPARE(int(*shown.viewer->stage()->image(0)->data), 10);
    QCOMPARE(numberIn(shown.listener.last("processed"), "result"), 5);
    QCOMPARE(shown.listener.heard.back().name, QString("notification.image"));
}

void TestViewerProcessors::pairReportsTheFirstResultThatIsNotZero_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<int>("reported");
    QTest::newRow("both answer") << 3 << 5 << 3;
    QTest::newRow("the first is negative") << -3 << 5 << -3;
    QTest::newRow("the first alone") << 3 << 0 << 3;
    QTest::newRow("the second alone") << 0 << 5 << 5;
    QTest::newRow("none") << 0 << 0 << 0;
}

void TestViewerProcessors::pairReportsTheFirstResultThatIsNotZero()
{
    QFETCH(int, first);
    QFETCH(int, second);
    QFETCH(int, reported);
    ShownViewer shown(QSize(40, 30));
    addProcessor(shown.viewer, new Answerer);
    const TestImage one = flat(first);
    const TestImage other = flat(second);
    QCOMPARE(shown.viewer->displayPair(one.record(), other.record()), 1);
    QCOMPARE(shown.listener.count("processed"), 1);
    QCOMPARE(numberIn(shown.listener.last("processed"), "result"), reported);
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
        QCOMPARE(addProcessor(shown.viewer, twice), 1);
        QCOMPARE(addProcessor(shown.viewer, twice), 1);
        addProcessor(shown.viewer, new Painter(2));
        QCOMPARE(Painter::alive, 2);
        shown.show(flat(10));
        QCOMPARE(qRed(shown.pixel(5, 5)), (10 * 2 + 1) * 2 + 2);
        QCOMPARE(settings->run("processing.proc.del"), 1);
        QCOMPARE(Painter::alive, 0);
        // The address is used up: what was deleted does not come back.
        QCOMPARE(settings->run("processing.proc.add"), 0);
        shown.show(flat(10));
        QCOMPARE(qRed(shown.pixel(5, 5)), 10);
        addProcessor(shown.viewer, new Painter(3));
    }
    QCOMPARE(Painter::alive, 0);
}

void TestViewerProcessors::aProcessorWithoutOutputIsPassedOver()
{
    ShownViewer shown(QSize(40, 30));
    auto* mute = new Painter(50);
    mute->hasOutput = false;
    addProcessor(shown.viewer, mute);
    addProcessor(shown.viewer, new Painter(1));
    QCOMPARE(shown.show(flat(10)), 0);
    QCOMPARE(qRed(shown.pixel(5, 5)), 21);
}

void TestViewerProcessors::rebuildRunsTheProcessorsOnTheCopy()
{
    ShownViewer shown(QSize(40, 30));
    shown.show(flat(10));
    addProcessor(shown.viewer, new Painter(1));
    QCOMPARE(qRed(shown.pixel(5, 5)), 10);
    QCOMPARE(shown.run("cmd.image.rebuild"), 1);
    QCOMPARE(qRed(shown.pixel(5, 5)), 21);
    QCOMPARE(shown.run("cmd.image.rebuild"), 1);
    QCOMPARE(qRed(shown.pixel(5, 5)), 21);
    shown.viewer->settings()->run("processing.proc.del");
    shown.run("cmd.image.rebuild");
    QCOMPARE(qRed(shown.pixel(5, 5)), 10);
}

void TestViewerProcessors::rebuildRunsTheProcessorsOnBothOfAPair()
{
    ShownViewer shown(QSize(82, 30));
    QCOMPARE(shown.viewer->displayPair(flat(10).record(), flat(20).record()), 1);
    addProcessor(shown.viewer, new Painter(1));
    QCOMPARE(shown.run("cmd.image.rebuild"), 1);
    QCOMPARE(qRed(shown.pixel(20, 15)), 21);
    QCOMPARE(qRed(shown.pixel(62, 15)), 41);
}

void TestViewerProcessors::theLastOutputIsSeenInItsOwnFormat_data()
{
    addFormats();
}

// Greys, colours and numbers.
void TestViewerProcessors::theLastOutputIsSeenInItsOwnFormat()
{
    QFETCH(quint32, pixelType);
    const auto value = [](int x, int y, int c) { return 20 + 7 * x + 3 * y + 11 * c; };
    const TestImage plain(pixelType, 8, 6, [&](int x, int y, int c) { return 2 * value(x, y, c) + 1; });
    const QImage expected = closeUp(plain, nullptr);
    QCOMPARE(closeUp(TestImage(pixelType, 8, 6, value), new Painter(1)), expected);
}

void TestViewerProcessors::nothingOfAProcessorsBufferIsReadLater_data()
{
    addFormats();
}

void TestViewerProcessors::nothingOfAProcessorsBufferIsReadLater()
{
    QFETCH(quint32, pixelType);
    TestImage image(pixelType, 8, 6, [](int x, int y, int c) { return 20 + 7 * x + 3 * y + 11 * c; });
    const QImage expected = closeUp(image, nullptr);
    ShownViewer shown(QSize(200, 150));
    addProcessor(shown.viewer, new Replacer(image));
    QCOMPARE(shown.show(flat(77)), 0);
    image.poison();
    shown.setScale(48.0);
    QCOMPARE(shown.grab(), expected);
    QCOMPARE(shown.viewer->stage()->image(0)->pixelType, zor::Mono8);
    shown.viewer->settings()->run("processing.proc.del");
    QCOMPARE(shown.grab(), expected);
}

QTEST_MAIN(TestViewerProcessors)
#include "tst_viewer_processors.moc"
