#pragma once

#include <cstdint>

/// What an accessor of whole samples holds to mark their type: T is the type of a sample, UT its unsigned
/// twin, and `long` has 32 bits on every machine. Samples are never read through it.
template <class T, class UT> class ZimTPixelAccessor
{
public:
    ZimTPixelAccessor() = default;
    ZimTPixelAccessor(const ZimTPixelAccessor&) = delete;
    ZimTPixelAccessor& operator=(const ZimTPixelAccessor&) = delete;
    virtual ~ZimTPixelAccessor() { m_reserved = -1; }

private:
    std::int32_t m_reserved = -1; ///< read by nothing
};
