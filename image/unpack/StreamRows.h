#pragma once

#include <cstddef>
#include <cstdint>

/// Row functions for samples in one stream of bits, the first in the lowest bits; see UnpackRow.h for what
/// all row functions keep to.
namespace zor::unpack {

/// 10 bits a sample, four samples in five bytes.
void stream10(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);

/// 12 bits a sample, two samples in three bytes.
void stream12(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);

/// Fields of 12 bits, whose upper two bits mean nothing.
void stream10In12(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);

} // namespace zor::unpack
