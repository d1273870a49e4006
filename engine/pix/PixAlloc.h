#pragma once

#include <cstdint>

namespace zor {

/// A block of `bytes` bytes; null for a size of 0 or less or when memory runs out.
void* pixAlloc(std::int32_t bytes);

/// Releases a block of pixAlloc. Null is ignored.
void pixFree(void* block);

} // namespace zor
