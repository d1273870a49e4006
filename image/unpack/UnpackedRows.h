#pragma once

#include <cstddef>
#include <cstdint>

/// Row functions for samples in whole bytes; see UnpackRow.h for what all row functions keep to.
namespace zor::unpack {

/// 8 bits a sample.
void bytes(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);

/// Little-endian words of 16 bits with 10, 12, 14 or 16 significant ones.
void words10(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);
void words12(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);
void words14(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);
void words16(const std::uint8_t* source, std::uint16_t* destination, std::size_t count);

/// Pixels, not samples: three samples of 10 bits from the low bit of a little-endian word of 32 bits, whose
/// upper two bits mean nothing.
void wordsOfThree10(const std::uint8_t* source, std::uint16_t* destination, std::size_t pixels);

} // namespace zor::unpack
