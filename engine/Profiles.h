#pragma once

#include "engine/ImageView.h"

#include <algorithm>

namespace zor {

/// Columns that one strip of column sums spans: the sums stay in the first-level cache and need no heap.
constexpr std::int32_t ColumnStrip = 1024;

/// Adds the pixels of all rows, from the top down, to `sums[0..count)`; `sums[i]` belongs to column
/// `firstColumn` + i. Exact for every frame size.
void addColumnSums(const ConstImageView& image, std::int32_t firstColumn, std::int32_t count,
                   std::uint64_t* sums);

/// The exact sum of the pixels of row y.
std::uint64_t rowSum(const ConstImageView& image, std::int32_t y);

/// Calls sink(column, sum) for each column from left to right. The image is walked row by row in strips.
template <typename Sink> void forEachColumnSum(const ConstImageView& image, Sink&& sink)
{
    std::uint64_t sums[ColumnStrip];
    for (std::int32_t first = 0, count = 0; first < image.width; first += count) {
        count = std::min(ColumnStrip, image.width - first);
        std::fill_n(sums, count, std::uint64_t{0});
        addColumnSums(image, first, count, sums);
        for (std::int32_t i = 0; i < count; ++i)
            sink(first + i, sums[i]);
    }
}

/// Stores the truncated mean of each column in means[0..width).
void storeColumnMeans(const ConstImageView& image, std::uint16_t* means);

/// Stores the truncated mean of each row in means[0..height).
void storeRowMeans(const ConstImageView& image, std::uint16_t* means);

} // namespace zor
