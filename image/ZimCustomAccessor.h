#pragma once

#include <cstdint>

namespace zor {

/// Access to samples by a rule of somebody else's, which a ZimPixelAccessor of kind 1956 hands through. The
/// order of the operations is binding.
class CustomAccessor
{
public:
    virtual ~CustomAccessor() = default;
    virtual int read(const std::uint8_t* pixel, int channel, unsigned column) = 0;
    virtual void write(std::uint8_t* pixel, int channel, int value, unsigned column) = 0;
};

} // namespace zor
