#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// One pixel format as the camera makers' format lists tell it, put together by hand and by their naming
/// rules, never from the product's table.
struct ExpectedFormat
{
    std::string name;
    std::string layout;
    std::uint32_t channels;
    std::uint32_t depth;
    std::string knownLetters; ///< letters of its channels in the order of their positions
    std::uint32_t phase;
    std::uint32_t family;
    std::uint32_t pixelBits;
    std::uint32_t packingByte;
};

/// All formats in row order.
std::vector<ExpectedFormat> expectedFormats();
