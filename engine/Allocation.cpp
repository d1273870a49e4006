#include "engine/Allocation.h"

#include <cstdlib>

#if defined(__linux__)
#include <array>
#include <cstdint>
#include <malloc.h>
#include <mutex>
#include <sys/mman.h>
#endif

namespace {

#if defined(__linux__)

constexpr std::size_t HugePage = std::size_t{2} << 20;

/// From here on a block is worth whole huge pages: the first touch of each small page costs more than the
/// arithmetic on it.
constexpr std::size_t LargeBlock = 4 * HugePage;

/// Large blocks that were given back and wait for the next frame, whose pages need not be touched for a first
/// time again. A few, and small enough together to be worth keeping.
class KeptBlocks
{
public:
    ~KeptBlocks()
    {
        for (const Kept& kept : m_blocks)
            std::free(kept.block);
    }

    /// A block of at least that size and hardly more; null when there is none. An aligned block may have up
    /// to a huge page behind what was asked for.
    void* take(std::size_t bytes)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (Kept& kept : m_blocks) {
            if (kept.bytes >= bytes && kept.bytes - bytes < 2 * HugePage) {
                void* const block = kept.block;
                m_total -= kept.bytes;
                kept = Kept();
                return block;
            }
        }
        return nullptr;
    }

    /// False when the block does not belong here, or when there is no room for it.
    bool keep(void* block)
    {
        if (reinterpret_cast<std::uintptr_t>(block) % HugePage != 0)
            return false;
        const std::size_t bytes = malloc_usable_size(block);
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (bytes < LargeBlock || bytes > MostBytes - m_total)
            return false;
        for (Kept& kept : m_blocks) {
            if (!kept.block) {
                kept = {block, bytes};
                m_total += bytes;
                return true;
            }
        }
        return false;
    }

private:
    struct Kept
    {
        void* block = nullptr;
        std::size_t bytes = 0;
    };

    static constexpr std::size_t MostBytes = std::size_t{64} << 20;

    std::mutex m_mutex;
    std::array<Kept, 6> m_blocks{};
    std::size_t m_total = 0;
};

KeptBlocks keptBlocks;

#endif

} // namespace

void* zorAllocate(std::size_t bytes)
{
#if defined(__linux__)
    if (bytes >= LargeBlock) {
        void* block = keptBlocks.take(bytes);
        if (block)
            return block;
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
#if defined(__linux__)
    if (block && keptBlocks.keep(block))
        return;
#endif
    std::free(block);
}
