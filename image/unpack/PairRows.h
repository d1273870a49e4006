#pragma once

#include <cstddef>
#include <cstdint>

/// Row functions for the `Packed` formats, two samples in three bytes: high bits in the outer ones; the low
/// bits of the even pixel at the foot of the middle byte's high nibble, those of the odd one at the foot of
/// its low nibble. See UnpackRow.h for what all row functions keep to.
namespace zor::unpack {

void pairs10(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);
void pairs12(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);

} // namespace zor::unpack
