#pragma once

#include <cstdint>
#include <list>

namespace zor {

/// A gain code is a gain in fixed point for the correction on the screen: 4 integer bits (8 to 11), 8
/// fraction bits (0 to 7), bits 12 to 15 zero. 0x0100 is 1.0.
constexpr std::uint16_t GainCodeOne = 0x0100;

/// The code of a gain. The sign is dropped, the fraction truncated, an integer part of 16 or more wraps to
/// its low 4 bits, and the fraction is taken against the low 16 bits of the integer part read as a signed
/// number. +infinity gives 0x00FF, NaN 0x0000.
void EncodeGain(double value, std::uint16_t& code);

/// Encodes the gains in their order into `codes` until `count` codes are made or the list ends; the codes
/// left over, up to `capacity`, become GainCodeOne. `count` is at most `capacity`.
void encodeGains(const std::list<double>& gains, std::uint16_t* codes, std::int32_t count,
                 std::int32_t capacity);

} // namespace zor
