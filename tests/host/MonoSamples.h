#pragma once

#include "engine/ImageView.h"

#include <cstddef>
#include <vector>

/// The pixels of a mono frame. Rows are padded with values that must never count.
struct MonoSamples
{
    MonoSamples(int depthOfPixels, int widthOfImage, int heightOfImage, const std::vector<int>& pixels,
                int padding = 4)
        : depth(depthOfPixels)
        , width(widthOfImage)
        , height(heightOfImage)
        , step(widthOfImage * (depthOfPixels == 8 ? 1 : 2) + padding)
        , bytes(static_cast<std::size_t>(step * heightOfImage), 0xEE)
    {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int pixel = pixels[static_cast<std::size_t>(y * width + x)];
                std::uint8_t* row = bytes.data() + y * step;
                if (depth == 8)
                    row[x] = static_cast<std::uint8_t>(pixel);
                else
                    zor::storeCell(row, x, static_cast<std::uint16_t>(pixel));
            }
        }
    }

    zor::ConstImageView view() const { return {bytes.data(), step, width, height, depth}; }

    int depth, width, height, step;
    std::vector<std::uint8_t> bytes;
};
