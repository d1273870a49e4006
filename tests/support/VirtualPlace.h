#pragma once

#include <cstdint>
#include <cstring>

/// True where virtualPlace works: compilers with the Itanium C++ ABI on x86-64.
#if defined(__GNUC__) && defined(__x86_64__)
#define ZOR_HAS_VIRTUAL_PLACE 1
#else
#define ZOR_HAS_VIRTUAL_PLACE 0
#endif

/// The place of a virtual operation in its class's table, counted from 0. A virtual destructor takes two
/// places. In this ABI a pointer to a virtual member function holds 1 plus the offset in the table.
template <class Function> std::size_t virtualPlace(Function function)
{
    std::uintptr_t word = 0;
    static_assert(sizeof(function) >= sizeof word);
    std::memcpy(&word, &function, sizeof word);
    return (word - 1) / sizeof(void*);
}
