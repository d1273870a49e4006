#include "engine/Allocation.h"

#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace {

constexpr std::size_t HugePage = std::size_t{2} << 20;

/// From here on a block is worth whole huge pages: the first touch of each small page costs more than the
/// arithmetic on it.
constexpr std::size_t LargeBlock = 4 * HugePage;

} // namespace

void* zorAllocate(std::size_t bytes)
{
#if defined(__linux__)
    if (bytes >= LargeBlock) {
        void* block = nullptr;
        if (posix_memalign(&block, HugePage, bytes) != 0)
            return nullptr;
        // A refusal leaves small pages, which are just as right.
        static_cast<void>(madvise(block, bytes, MADV_HUGEPAGE));
        return block;
    }
#endif
    return std::malloc(bytes > 0 ? bytes : 1);
}

void zorRelease(void* block)
{
    std::free(block);
}
