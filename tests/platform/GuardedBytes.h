#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

/// Bytes that end right before a page that may not be touched: a read or write past them ends the program, in
/// every build.
class GuardedBytes
{
public:
    explicit GuardedBytes(std::size_t size)
        : m_size(size)
    {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t usable = (size + page - 1) / page * page;
        m_mapped = usable + page;
        m_map = mmap(nullptr, m_mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m_map == MAP_FAILED || mprotect(static_cast<char*>(m_map) + usable, page, PROT_NONE) != 0)
            throw std::bad_alloc();
        m_data = static_cast<std::uint8_t*>(m_map) + usable - size;
    }
    ~GuardedBytes() { munmap(m_map, m_mapped); }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;

    std::uint8_t* data() const { return m_data; }
    std::size_t size() const { return m_size; }

private:
    std::size_t m_size;
    std::size_t m_mapped = 0;
    void* m_map = nullptr;
    std::uint8_t* m_data = nullptr;
};
