#pragma once

#include "image/ZorImage.h"

#include <cstdint>
#include <functional>
#include <vector>

/// A mono frame that owns its pixels: one byte a pixel at depth 8, two bytes otherwise.
class TestFrame
{
public:
    using Pixel = std::function<unsigned(int x, int y)>;

    /// Tight rows when `step` is 0. `depth` is 8, 10, 12 or 16.
    TestFrame(int width, int height, int depth, const Pixel& pixel, int step = 0);

    /// A frame with one value everywhere.
    static TestFrame even(int width, int height, int depth, unsigned value);

    /// A frame of 20 rows and 12 bits, from 500 up, that no gain leaves as it is.
    static TestFrame rising(int width);

    /// Borrows this frame's pixels.
    _ZorImage record();

    int width;
    int height;
    int depth;
    int step;
    std::vector<std::uint8_t> bytes;
};
