#include "engine/Allocation.h"
#include "engine/pix/PixAlloc.h"

#include <QtTest>

#include <cerrno>
#include <cstring>
#include <limits>

namespace {

bool outOfMemory = false;
std::size_t lastRequest = 0;

} // namespace

extern "C" {

void* __real_malloc(std::size_t bytes);
int __real_posix_memalign(void** block, std::size_t alignment, std::size_t bytes);

void* __wrap_malloc(std::size_t bytes)
{
    lastRequest = bytes;
    return outOfMemory ? nullptr : __real_malloc(bytes);
}

int __wrap_posix_memalign(void** block, std::size_t alignment, std::size_t bytes)
{
    lastRequest = bytes;
    return outOfMemory ? ENOMEM : __real_posix_memalign(block, alignment, bytes);
}
}

class TestAllocation : public QObject
{
    Q_OBJECT

private slots:
    void blocksCanBeWrittenToTheirEnd_data();
    void blocksCanBeWrittenToTheirEnd();
    void noMemoryGivesNull_data();
    void noMemoryGivesNull();
    void pixAllocRefusesSizesOfZeroAndLess_data();
    void pixAllocRefusesSizesOfZeroAndLess();
    void pixAllocGivesBlocks();
    void nullIsReleased();
};

void TestAllocation::blocksCanBeWrittenToTheirEnd_data()
{
    QTest::addColumn<qulonglong>("bytes");
    QTest::newRow("a size of 0 gets a byte all the same") << 0ull;
    QTest::newRow("one byte") << 1ull;
    QTest::newRow("a line") << 2784ull;
    QTest::newRow("just under a large block") << (8ull << 20) - 1;
    QTest::newRow("a large block") << (8ull << 20);
    QTest::newRow("a large block that ends inside a page") << (8ull << 20) + 4097;
}

void TestAllocation::blocksCanBeWrittenToTheirEnd()
{
    QFETCH(qulonglong, bytes);
    const std::size_t room = bytes > 0 ? bytes : 1;
    auto* block = static_cast<unsigned char*>(zorAllocate(bytes));
    const std::size_t request = lastRequest;
    QVERIFY(block);
    QCOMPARE(request, room);
    std::memset(block, 0x5A, room);
    QCOMPARE(int{block[0]}, 0x5A);
    QCOMPARE(int{block[room - 1]}, 0x5A);
    zorRelease(block);
}

void TestAllocation::noMemoryGivesNull_data()
{
    QTest::addColumn<qulonglong>("bytes");
    QTest::newRow("a line") << 2784ull;
    QTest::newRow("a large block") << (64ull << 20);
}

void TestAllocation::noMemoryGivesNull()
{
    QFETCH(qulonglong, bytes);
    outOfMemory = true;
    const void* block = zorAllocate(bytes);
    const void* pixels = zor::pixAlloc(static_cast<std::int32_t>(bytes));
    outOfMemory = false;
    QVERIFY(!block);
    QVERIFY(!pixels);
}

void TestAllocation::pixAllocRefusesSizesOfZeroAndLess_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("0") << 0;
    QTest::newRow("-1") << -1;
    QTest::newRow("the lowest number") << std::numeric_limits<int>::min();
}

void TestAllocation::pixAllocRefusesSizesOfZeroAndLess()
{
    QFETCH(int, bytes);
    QVERIFY(!zor::pixAlloc(bytes));
}

void TestAllocation::pixAllocGivesBlocks()
{
    auto* block = static_cast<unsigned char*>(zor::pixAlloc(1104));
    QVERIFY(block);
    std::memset(block, 0xA5, 1104);
    QCOMPARE(int{block[1103]}, 0xA5);
    zor::pixFree(block);
}

void TestAllocation::nullIsReleased()
{
    zorRelease(nullptr);
    zor::pixFree(nullptr);
    // A block of the next size still comes: nothing was harmed.
    void* block = zorAllocate(16);
    QVERIFY(block);
    zorRelease(block);
}

QTEST_APPLESS_MAIN(TestAllocation)
#include "tst_allocation.moc"
