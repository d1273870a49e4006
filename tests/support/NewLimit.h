#pragma once

#include <atomic>
#include <cstddef>
#include <limits>
#include <new>

// For one source of a program that is linked with WRAP _Znwm.

constexpr std::size_t NoLimit = std::numeric_limits<std::size_t>::max();

/// Requests of `new` of this size and more find no memory.
inline std::atomic<std::size_t> tooLarge{NoLimit};

extern "C" {
void* __real__Znwm(std::size_t size);
void* __wrap__Znwm(std::size_t size)
{
    if (size >= tooLarge)
        throw std::bad_alloc();
    return __real__Znwm(size);
}
}
