#include "engine/pix/PixAlloc.h"

#include "engine/Allocation.h"

namespace zor {

void* pixAlloc(std::int32_t bytes)
{
    return bytes > 0 ? zorAllocate(static_cast<std::size_t>(bytes)) : nullptr;
}

void pixFree(void* block)
{
    zorRelease(block);
}

} // namespace zor
