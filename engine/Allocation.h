#pragma once

#include <cstddef>

/// The one place where dialog and engine get memory for images and lines. The blocks are of the malloc
/// family.
extern "C" {

/// A block of the given size, at least one byte, with unset content; null when memory runs out.
void* zorAllocate(std::size_t bytes);

/// Gives a block back. Null is ignored.
void zorRelease(void* block);
}
