#include "image/HighLightProcessor.h"
#include "image/ZorImageApi.h"
#include "tests/image/TestRecords.h"

#include <QtTest>

#include <memory>

namespace {

/// What the image library does in this program.
enum class Cloning
{
    Works,
    FailsAndNullsTheSlot,
    FailsAndLeavesTheSlot
};
Cloning cloning = Cloning::Works;
int releases = 0;

} // namespace

extern "C" {
int __real_ZorCloneImage(_ZorImage** slot, const _ZorImage* source);
int __real_ZorReleaseImage(_ZorImage** slot);

int __wrap_ZorCloneImage(_ZorImage** slot, const _ZorImage* source)
{
    if (cloning == Cloning::Works)
        return __real_ZorCloneImage(slot, source);
    if (cloning == Cloning::FailsAndNullsTheSlot)
        __real_ZorReleaseImage(slot);
    return 1;
}

int __wrap_ZorReleaseImage(_ZorImage** slot)
{
    ++releases;
    return __real_ZorReleaseImage(slot);
}
}

/// The processor's answers, and its copy: when there is one, and who gives it back.
class TestHighlightProcessor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void emptyImagesAreCloned_data();
    void emptyImagesAreCloned();
    void eachImageReplacesTheLast();
    void withoutSourceOrCopyNothingHappens();
    void answersOfTheInterface();
    void theCopyIsGivenBack();
};

void TestHighlightProcessor::init()
{
    cloning = Cloning::Works;
    releases = 0;
}

void TestHighlightProcessor::emptyImagesAreCloned_data()
{
    QTest::addColumn<uint>("width");
    QTest::addColumn<uint>("height");
    QTest::addColumn<bool>("hasPixels");
    QTest::newRow("no width") << 0u << 3u << true;
    QTest::newRow("no height") << 3u << 0u << true;
    QTest::newRow("neither, and no pixels") << 0u << 0u << false;
    QTest::newRow("no width and no pixels") << 0u << 3u << false;
}

void TestHighlightProcessor::emptyImagesAreCloned()
{
    QFETCH(uint, width);
    QFETCH(uint, height);
    QFETCH(bool, hasPixels);
    std::vector<std::uint8_t> bytes(hasPixels ? 9 : 0, 250);
    const _ZorImage source =
        recordOf(codeOf("Mono8"), width, height, 3, hasPixels ? bytes.data() : nullptr, bytes.size());
    HighLightProcessor processor;
    QCOMPARE(processor.processImage(&source), 0);
    const _ZorImage* output = processor.outputImage();
    QVERIFY(output);
    QCOMPARE(output->width, width);
    QCOMPARE(output->height, height);
    QCOMPARE(output->imageSize, source.imageSize);
    if (hasPixels)
        QCOMPARE(std::memcmp(output->data, bytes.data(), bytes.size()), 0);
}

void TestHighlightProcessor::eachImageReplacesTheLast()
{
    HighLightProcessor processor;
    OneRow first(plainFormat(8, false, 8), 4, {200, 1, 2, 3}, 1);
    processor.processImage(&first.image);
    OneRow second(plainFormat(12, false, 16), 6, {1, 2, 130, 3, 4, 5}, 2);
    processor.processImage(&second.image);
    QCOMPARE(processor.outputImage()->width, 6u);
    QCOMPARE(samplesOf(*processor.outputImage(), 6, 2), (QVector<qint64>{1, 2, 130, 0, 0, 5}));
    // Of the same size: what the last marks cleared is there again.
    OneRow third(plainFormat(12, false, 16), 6, {1, 2, 3, 4, 5, 6}, 2);
    processor.processImage(&third.image);
    QCOMPARE(samplesOf(*processor.outputImage(), 6, 2), (QVector<qint64>{1, 2, 3, 4, 5, 6}));
}

void TestHighlightProcessor::withoutSourceOrCopyNothingHappens()
{
    HighLightProcessor processor;
    QCOMPARE(processor.processImage(nullptr), 0);
    QVERIFY(!processor.outputImage());

    OneRow source(plainFormat(8, false, 8), 3, {200, 1, 2}, 1);
    cloning = Cloning::FailsAndNullsTheSlot;
    QCOMPARE(processor.processImage(&source.image), 0);
    QVERIFY(!processor.outputImage());

    cloning = Cloning::Works;
    processor.processImage(&source.image);
    cloning = Cloning::FailsAndNullsTheSlot;
    QCOMPARE(processor.processImage(&source.image), 0);
    QVERIFY(!processor.outputImage());

    // With an old copy in the slot, but no source.
    cloning = Cloning::Works;
    processor.processImage(&source.image);
    cloning = Cloning::FailsAndLeavesTheSlot;
    QCOMPARE(processor.processImage(nullptr), 0);
    QCOMPARE(samplesOf(*processor.outputImage(), 3, 1), (QVector<qint64>{200, 0, 0}));
    cloning = Cloning::Works;
}

void TestHighlightProcessor::answersOfTheInterface()
{
    HighLightProcessor processor;
    ZorImgProcessor& base = processor;
    QVERIFY(!base.outputImage());
    QCOMPARE(base.constantOne(), 1);
    QCOMPARE(base.constantZero(), 0);
    QCOMPARE(base.baseZero(), 0);
    QVERIFY(base.baseTrue());
    QVERIFY(base.baseTrueToo());
    OneRow source(plainFormat(8, false, 8), 3, {200, 1, 2}, 1);
    base.processImage(&source.image);
    _ZorImage* const output = base.outputImage();
    base.noOperation();
    QCOMPARE(base.outputImage(), output);
    QCOMPARE(samplesOf(*output, 3, 1), (QVector<qint64>{200, 0, 0}));
}

void TestHighlightProcessor::theCopyIsGivenBack()
{
    delete new HighLightProcessor;
    QCOMPARE(releases, 0);
    OneRow source(plainFormat(8, false, 8), 3, {200, 1, 2}, 1);
    std::unique_ptr<ZorImgProcessor> processor = std::make_unique<HighLightProcessor>();
    processor->processImage(&source.image);
    processor->processImage(&source.image);
    QCOMPARE(releases, 0);
    processor.reset();
    QCOMPARE(releases, 1);
}

QTEST_APPLESS_MAIN(TestHighlightProcessor)
#include "tst_highlight_processor.moc"
