#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The mono formats from their definitions, one bit at a time. Slow and plain on purpose.

struct MonoFormat
{
    std::string name;
    std::uint32_t code;
    std::uint32_t heldBits;  ///< bits of a sample's value
    std::uint32_t pixelBits; ///< bits of memory that a pixel takes
    /// Where bit `bit` of the sample at column `x` lies in its line, counted from the lowest bit of the
    /// line's first byte.
    std::uint64_t (*bitPlace)(std::uint64_t x, std::uint32_t bit);
    std::uint32_t storedBits; ///< bits to collect; above `heldBits` where a field is wider than the value
};

/// The twelve, in the order of their rows.
const std::vector<MonoFormat>& monoFormats();

/// The sample at column `x` of a line, limited to the format's full scale.
std::uint32_t referenceSample(const MonoFormat& format, const std::uint8_t* line, std::uint64_t x);

/// A sample of `from` bits as one of `to` bits: its bits from the top down, begun again when they are used
/// up.
std::uint32_t referenceDepth(std::uint32_t sample, std::uint32_t from, std::uint32_t to);
