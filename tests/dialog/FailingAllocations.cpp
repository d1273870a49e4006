#include "tests/dialog/FailingAllocations.h"

#include <QtGlobal>

#include <cstddef>
#include <cstring>
#include <set>

extern "C" {
void* __real_zorAllocate(std::size_t bytes);
void* __wrap_zorAllocate(std::size_t bytes);
void __real_zorRelease(void* block);
void __wrap_zorRelease(void* block);
}

namespace {

QVector<int> sizes;
int failing = 0;
bool failingOnwards = false;

/// Never destroyed: the leak checker looks after the last destructor and finds the lost blocks here.
std::set<void*>& live()
{
    static auto* const blocks = new std::set<void*>;
    return *blocks;
}

} // namespace

void failAllocation(int number, bool onwards)
{
    sizes.clear();
    failing = number;
    failingOnwards = onwards;
}

int allocationCount()
{
    return sizes.size();
}

const QVector<int>& allocationSizes()
{
    return sizes;
}

int liveBlocks()
{
    return static_cast<int>(live().size());
}

void* __wrap_zorAllocate(std::size_t bytes)
{
    sizes.append(static_cast<int>(bytes));
    const int number = sizes.size();
    if (failing != 0 && (number == failing || (failingOnwards && number > failing)))
        return nullptr;
    void* block = __real_zorAllocate(bytes);
    std::memset(block, UnwrittenByte, bytes);
    live().insert(block);
    return block;
}

void __wrap_zorRelease(void* block)
{
    if (block && live().erase(block) == 0)
        qFatal("a block is given back that is not live");
    __real_zorRelease(block);
}
