#pragma once

#include "tests/reference/PixelFormats.h"

#include <cstdint>
#include <string>
#include <vector>

/// One pixel format as the product has to know it, put together by hand and by the naming rules, never from
/// the product's table. `Mono12p` has depth 10 although its samples have 12 bits.
struct ExpectedFormat
{
    std::string name;
    std::string layout;
    std::uint32_t channels;
    std::uint32_t depth;
    std::string knownLetters; ///< letters of its channels in the order of their positions
    std::uint32_t phase;
    reference::Family family;
    std::uint32_t pixelBits;
    std::uint32_t packingByte;
};

/// All formats in row order.
std::vector<ExpectedFormat> expectedFormats();
