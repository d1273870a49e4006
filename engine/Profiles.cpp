#include "engine/Profiles.h"

#include "engine/FixedPoint.h"

namespace zor {
namespace {

/// How many rows or pixels of up to 16 bits a 32-bit sum holds without overflow: 65537.
constexpr std::int32_t ExactAddends = 0xFFFFFFFF / 0xFFFF;

void addRow(const std::uint8_t* row, bool bytes, std::int32_t count, std::uint32_t* sums)
{
    if (bytes) {
        for (std::int32_t i = 0; i < count; ++i)
            sums[i] += row[i];
    } else {
        for (std::int32_t i = 0; i < count; ++i)
            sums[i] += loadCell(row, i);
    }
}

std::uint32_t sumRow(const std::uint8_t* row, bool bytes, std::int32_t count)
{
    std::uint32_t sum = 0;
    if (bytes) {
        for (std::int32_t i = 0; i < count; ++i)
            sum += row[i];
    } else {
        for (std::int32_t i = 0; i < count; ++i)
            sum += loadCell(row, i);
    }
    return sum;
}

/// Sums in 32 bits over as many rows as these hold, twice as many columns at a time as in 64.
void addStrip(const ConstImageView& image, std::int32_t firstColumn, std::int32_t count, std::uint64_t* sums)
{
    const bool bytes = image.depth == 8;
    const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(firstColumn) * (bytes ? 1 : 2);
    std::uint32_t partial[ColumnStrip];
    for (std::int32_t y = 0; y < image.height;) {
        const std::int32_t end = y + std::min(ExactAddends, image.height - y);
        std::fill_n(partial, count, 0u);
        for (; y < end; ++y)
            addRow(image.row(y) + offset, bytes, count, partial);
        for (std::int32_t i = 0; i < count; ++i)
            sums[i] += partial[i];
    }
}

} // namespace

void addColumnSums(const ConstImageView& image, std::int32_t firstColumn, std::int32_t count,
                   std::uint64_t* sums)
{
    for (std::int32_t i = 0, strip = 0; i < count; i += strip) {
        strip = std::min(ColumnStrip, count - i);
        addStrip(image, firstColumn + i, strip, sums + i);
    }
}

std::uint64_t rowSum(const ConstImageView& image, std::int32_t y)
{
    const bool bytes = image.depth == 8;
    const std::uint8_t* row = image.row(y);
    std::uint64_t sum = 0;
    for (std::int32_t x = 0, count = 0; x < image.width; x += count) {
        count = std::min(ExactAddends, image.width - x);
        sum += sumRow(row + static_cast<std::ptrdiff_t>(x) * (bytes ? 1 : 2), bytes, count);
    }
    return sum;
}

void storeColumnMeans(const ConstImageView& image, std::uint16_t* means)
{
    const double height = image.height;
    forEachColumnSum(image, [&](std::int32_t x, std::uint64_t sum) {
        means[x] = truncateToMean(static_cast<double>(sum) / height);
    });
}

void storeRowMeans(const ConstImageView& image, std::uint16_t* means)
{
    const double width = image.width;
    for (std::int32_t y = 0; y < image.height; ++y)
        means[y] = truncateToMean(static_cast<double>(rowSum(image, y)) / width);
}

} // namespace zor
