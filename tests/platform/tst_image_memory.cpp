#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/RecordOf.h"

#include <QtTest>

#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>
#include <vector>

namespace {

/// Allocations that still succeed; negative: all do.
int allocationsLeft = -1;
/// The same for `operator new`, which working memory comes from.
int newsLeft = -1;
/// Blocks that are out.
int blocksOut = 0;

bool mayAllocate(int& left)
{
    if (left == 0)
        return false;
    if (left > 0)
        --left;
    return true;
}

} // namespace

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);
void* __real__Znwm(std::size_t size);

void* __wrap_malloc(std::size_t size)
{
    void* block = mayAllocate(allocationsLeft) ? __real_malloc(size) : nullptr;
    blocksOut += block ? 1 : 0;
    return block;
}

void* __wrap_calloc(std::size_t count, std::size_t size)
{
    void* block = mayAllocate(allocationsLeft) ? __real_calloc(count, size) : nullptr;
    blocksOut += block ? 1 : 0;
    return block;
}

/// What is read of a block after its release is no longer what was in it.
void __wrap_free(void* block)
{
    blocksOut -= block ? 1 : 0;
    if (block)
        std::memset(block, 0xDD, malloc_usable_size(block));
    __real_free(block);
}

/// operator new(std::size_t)
void* __wrap__Znwm(std::size_t size)
{
    if (!mayAllocate(newsLeft))
        throw std::bad_alloc();
    return __real__Znwm(size);
}
}

/// What the image libraries do when there is no memory, and that they lose none.
class TestImageMemory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aHeaderNeedsOneBlock();
    void aFailingCloneLosesNothing_data();
    void aFailingCloneLosesNothing();
    void aRefusedCloneLosesNothing_data();
    void aRefusedCloneLosesNothing();
    void aFailingConversionLosesNothing_data();
    void aFailingConversionLosesNothing();
    void aRefusedConversionLosesNothing_data();
    void aRefusedConversionLosesNothing();
    void aConversionWithoutWorkingMemoryLosesNothing_data();
    void aConversionWithoutWorkingMemoryLosesNothing();
    void aCloneOfTheSameSizeNeedsNoNewBlock();
    void aPartOfTheSlotsOwnPixelsIsCloned_data();
    void aPartOfTheSlotsOwnPixelsIsCloned();
};

namespace {

/// One row of 8-bit pixels.
_ZorImage sourceOf(std::vector<std::uint8_t>& pixels)
{
    return recordOf(zor::Mono8, static_cast<std::uint32_t>(pixels.size()), 1, pixels);
}

} // namespace

void TestImageMemory::init()
{
    allocationsLeft = -1;
    newsLeft = -1;
    blocksOut = 0;
}

void TestImageMemory::aHeaderNeedsOneBlock()
{
    _ZorImage old = {};
    _ZorImage* header = &old;
    allocationsLeft = 0;
    QVERIFY(ZorCreateImageHeader(&header, 1, zor::Mono8, 0, 0, 0) != 0);
    QVERIFY(header == nullptr);
    allocationsLeft = 1;
    QCOMPARE(ZorCreateImageHeader(&header, 1, zor::Mono8, 0, 0, 0), 0);
    ZorReleaseImageHeader(&header);
    QCOMPARE(blocksOut, 0);
}

void TestImageMemory::aFailingCloneLosesNothing_data()
{
    QTest::addColumn<int>("blocks");
    QTest::addColumn<bool>("filledSlot");
    QTest::newRow("no record, empty slot") << 0 << false;
    QTest::newRow("no pixels, empty slot") << 1 << false;
    QTest::newRow("no record, filled slot") << 0 << true;
    QTest::newRow("no pixels, filled slot") << 1 << true;
}

void TestImageMemory::aFailingCloneLosesNothing()
{
    QFETCH(int, blocks);
    QFETCH(bool, filledSlot);
    std::vector<std::uint8_t> small(4);
    std::vector<std::uint8_t> large(8);
    const _ZorImage first = sourceOf(small);
    const _ZorImage second = sourceOf(large);
    _ZorImage* clone = nullptr;
    if (filledSlot) {
        QCOMPARE(ZorCloneImage(&clone, &first), 0);
    }
    allocationsLeft = blocks;
    QVERIFY(ZorCloneImage(&clone, &second) != 0);
    QVERIFY(clone == nullptr);
    QCOMPARE(blocksOut, 0);
}

void TestImageMemory::aRefusedCloneLosesNothing_data()
{
    QTest::addColumn<bool>("hasSource");
    QTest::addColumn<bool>("filledSlot");
    QTest::newRow("no source, empty slot") << false << false;
    QTest::newRow("no source, filled slot") << false << true;
    QTest::newRow("a size without pixels, empty slot") << true << false;
    QTest::newRow("a size without pixels, filled slot") << true << true;
}

void TestImageMemory::aRefusedCloneLosesNothing()
{
    QFETCH(bool, hasSource);
    QFETCH(bool, filledSlot);
    std::vector<std::uint8_t> pixels(4);
    _ZorImage source = sourceOf(pixels);
    _ZorImage* clone = nullptr;
    if (filledSlot) {
        QCOMPARE(ZorCloneImage(&clone, &source), 0);
        QCOMPARE(blocksOut, 2);
    }
    source.data = nullptr;
    QVERIFY(ZorCloneImage(&clone, hasSource ? &source : nullptr) != 0);
    QVERIFY(clone == nullptr);
    QCOMPARE(blocksOut, 0);
}

void TestImageMemory::aFailingConversionLosesNothing_data()
{
    QTest::addColumn<int>("blocks");
    QTest::addColumn<bool>("succeeds");
    QTest::newRow("no record") << 0 << false;
    QTest::newRow("no pixels") << 1 << false;
    QTest::newRow("two blocks are enough") << 2 << true;
}

void TestImageMemory::aFailingConversionLosesNothing()
{
    QFETCH(int, blocks);
    QFETCH(bool, succeeds);
    std::vector<std::uint8_t> pixels(4);
    const _ZorImage source = sourceOf(pixels);
    _ZorImage old = {};
    _ZorImage* result = &old;
    allocationsLeft = blocks;
    QCOMPARE(ZimConvert(&source, zor::Mono16, &result) == 0, succeeds);
    QCOMPARE(result != nullptr, succeeds);
    ZorReleaseImage(&result);
    QCOMPARE(blocksOut, 0);
}

using SourceChange = void (*)(_ZorImage&);
Q_DECLARE_METATYPE(SourceChange)

void TestImageMemory::aRefusedConversionLosesNothing_data()
{
    QTest::addColumn<SourceChange>("change");
    QTest::addColumn<quint32>("target");
    const auto row = [](const char* name, SourceChange change, quint32 target = zor::Mono16) {
        QTest::newRow(name) << change << target;
    };
    row(
        "another target", [](_ZorImage&) {}, codeOf("BayerRG8"));
    row("signed samples", [](_ZorImage& image) { image.isSigned = 1; });
    row("a size without pixels", [](_ZorImage& image) { image.data = nullptr; });
    row("a pitch too small", [](_ZorImage& image) { image.pitch = 3; });
    row("a result too large for a record",
        [](_ZorImage& image) { image.width = image.pitch = image.imageSize = 0xFFFFFFFF; });
}

void TestImageMemory::aRefusedConversionLosesNothing()
{
    QFETCH(SourceChange, change);
    QFETCH(quint32, target);
    std::vector<std::uint8_t> pixels(4);
    _ZorImage source = sourceOf(pixels);
    change(source);
    _ZorImage old = {};
    _ZorImage* result = &old;
    QVERIFY(ZimConvert(&source, target, &result) != 0);
    QVERIFY(result == nullptr);
    QCOMPARE(blocksOut, 0);
}

void TestImageMemory::aConversionWithoutWorkingMemoryLosesNothing_data()
{
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<int>("news");
    QTest::addColumn<bool>("succeeds");
    QTest::newRow("Mono8 needs none") << zor::Mono8 << 0 << true;
    QTest::newRow("BayerRG8, none") << codeOf("BayerRG8") << 0 << false;
    QTest::newRow("BayerRG8, none for the luma") << codeOf("BayerRG8") << 1 << false;
    QTest::newRow("BayerRG8, enough") << codeOf("BayerRG8") << 2 << true;
    QTest::newRow("TrueSense, none") << codeOf("TrueSense_BGGR_WBBW_0_8") << 0 << false;
    QTest::newRow("TrueSense, none for the luma") << codeOf("TrueSense_BGGR_WBBW_0_8") << 1 << false;
    QTest::newRow("TrueSense, enough") << codeOf("TrueSense_BGGR_WBBW_0_8") << 2 << true;
}

void TestImageMemory::aConversionWithoutWorkingMemoryLosesNothing()
{
    QFETCH(quint32, pixelType);
    QFETCH(int, news);
    QFETCH(bool, succeeds);
    std::vector<std::uint8_t> pixels(9);
    const _ZorImage source = recordOf(pixelType, 3, 3, pixels);
    _ZorImage old = {};
    _ZorImage* result = &old;
    newsLeft = news;
    const int status = ZimConvert(&source, zor::Mono16, &result);
    newsLeft = -1;
    QCOMPARE(status == 0, succeeds);
    QCOMPARE(result != nullptr, succeeds);
    ZorReleaseImage(&result);
    QCOMPARE(blocksOut, 0);
}

void TestImageMemory::aCloneOfTheSameSizeNeedsNoNewBlock()
{
    std::vector<std::uint8_t> pixels(4, 1);
    const _ZorImage source = sourceOf(pixels);
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    allocationsLeft = 0;
    pixels[0] = 2;
    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    QCOMPARE(int(clone->data[0]), 2);
    ZorReleaseImage(&clone);
    QCOMPARE(blocksOut, 0);
}

void TestImageMemory::aPartOfTheSlotsOwnPixelsIsCloned_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("blocks");
    QTest::addColumn<bool>("succeeds");
    QTest::newRow("its beginning") << 0 << 40 << 2 << true;
    QTest::newRow("its middle") << 30 << 40 << 2 << true;
    QTest::newRow("its end") << 60 << 40 << 2 << true;
    QTest::newRow("all of it, in place") << 0 << 100 << 0 << true;
    QTest::newRow("as many bytes from the second on, in place") << 1 << 100 << 0 << true;
    QTest::newRow("more than it has, with spare bytes") << 10 << 106 << 2 << true;
    QTest::newRow("no pixels for a part") << 30 << 40 << 1 << false;
    QTest::newRow("no record for a part") << 30 << 40 << 0 << false;
}

/// The source's pixels are those of the slot: they are copied before they are released.
void TestImageMemory::aPartOfTheSlotsOwnPixelsIsCloned()
{
    QFETCH(int, first);
    QFETCH(int, size);
    QFETCH(int, blocks);
    QFETCH(bool, succeeds);
    std::vector<std::uint8_t> pixels(100);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = std::uint8_t(i + 1);
    const _ZorImage whole = sourceOf(pixels);
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, &whole), 0);
    pixels.resize(pixels.size() + 16); // the spare bytes of a clone are 0
    const QByteArray expected(reinterpret_cast<const char*>(pixels.data()) + first, size);

    _ZorImage part = *clone;
    part.data += first;
    part.width = part.pitch = part.imageSize = std::uint32_t(size);
    allocationsLeft = blocks;
    QCOMPARE(ZorCloneImage(&clone, &part) == 0, succeeds);
    QCOMPARE(clone != nullptr, succeeds);
    if (succeeds) {
        QCOMPARE(clone->width, std::uint32_t(size));
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(clone->data), size), expected);
    }
    ZorReleaseImage(&clone);
    QCOMPARE(blocksOut, 0);
}

QTEST_APPLESS_MAIN(TestImageMemory)
#include "tst_image_memory.moc"
