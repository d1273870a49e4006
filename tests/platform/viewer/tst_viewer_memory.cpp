#include "display/DisplayStage.h"
#include "image/PixelTypeCode.h"
#include "image/ZorFormatFromCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

#include <cstdlib>

namespace {

/// Blocks for records and pixels that can be had before the one that can't; negative: all can.
int blocksBefore = -1;

bool mayAllocate()
{
    return blocksBefore < 0 || blocksBefore-- != 0;
}

} // namespace

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);

void* __wrap_malloc(std::size_t size)
{
    return mayAllocate() ? __real_malloc(size) : nullptr;
}

void* __wrap_calloc(std::size_t count, std::size_t size)
{
    return mayAllocate() ? __real_calloc(count, size) : nullptr;
}
}

/// Images for which there is not enough memory.
class TestViewerMemory : public QObject
{
    Q_OBJECT

private slots:
    void anImageTooMuchLeavesTheOldOneOrNone_data();
    void anImageTooMuchLeavesTheOldOneOrNone();
};

void TestViewerMemory::anImageTooMuchLeavesTheOldOneOrNone_data()
{
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<int>("blocks");
    // A record and its pixels each.
    QTest::newRow("a plain image, which is copied") << zor::Mono12 << 2;
    QTest::newRow("a packed image, which is unpacked too") << Mono12p << 4;
}

// Each block in turn is the one that can't be had.
void TestViewerMemory::anImageTooMuchLeavesTheOldOneOrNone()
{
    QFETCH(quint32, pixelType);
    QFETCH(int, blocks);
    const TestImage before(zor::Mono8, 40, 30, [](int, int, int) { return 7; });
    // The words have room for every packing of 12 bits.
    TestImage image(zor::Mono12, 80, 50, [](int, int, int) { return 9; });
    static_cast<zor::FormatBlock&>(image.change()) = ZorFormatFromCode(pixelType);
    ShownViewer shown(QSize(200, 160));
    for (int lacking = 0; lacking < blocks; ++lacking) {
        QCOMPARE(shown.show(before), 0);
        blocksBefore = lacking;
        const int status = shown.show(image);
        blocksBefore = -1;
        QVERIFY(status != 0);
        const std::int64_t size = shown.viewer->stage()->value();
        const _ZorImage* held = shown.viewer->stage()->image(0);
        QVERIFY(size == 0 || size == (std::int64_t{30} << 32 | 40));
        QCOMPARE(held != nullptr, size != 0);
        QCOMPARE(shown.run("cmd.display.view.image"), held ? 1 : 0);
        QCOMPARE(shown.grab().size(), shown.surface()->size() * shown.view.devicePixelRatioF());
    }
    QCOMPARE(shown.show(before), 0);
    blocksBefore = blocks;
    QCOMPARE(shown.show(image), 0);
    blocksBefore = -1;
    QCOMPARE(shown.viewer->stage()->value(), std::int64_t{50} << 32 | 80);
}

QTEST_MAIN(TestViewerMemory)
#include "tst_viewer_memory.moc"
