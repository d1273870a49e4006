#include "host/quality/NonUniformity.h"

#include "engine/CellImage.h"
#include "engine/Profiles.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zor {

namespace {

bool isSaturated(const ConstImageView& image, std::int32_t x, std::int32_t y)
{
    const std::uint8_t* row = image.row(y);
    return (image.depth == 8 ? row[x] : loadCell(row, x)) >= saturationLimit(image.depth);
}

/// So many pixels as a share of all.
double shareOf(const ConstImageView& image, std::uint64_t pixels)
{
    return static_cast<double>(pixels) / (static_cast<double>(image.width) * image.height);
}

} // namespace

std::vector<double> columnMeans(const ConstImageView& image)
{
    std::vector<double> means(static_cast<std::size_t>(image.width));
    forEachColumnSum(image, [&](std::int32_t column, std::uint64_t sum) {
        means[static_cast<std::size_t>(column)] = static_cast<double>(sum) / image.height;
    });
    return means;
}

std::vector<double> rowMeans(const ConstImageView& image)
{
    std::vector<double> means(static_cast<std::size_t>(image.height));
    for (std::int32_t y = 0; y < image.height; ++y)
        means[static_cast<std::size_t>(y)] = static_cast<double>(rowSum(image, y)) / image.width;
    return means;
}

double variationPercent(const std::vector<double>& values)
{
    double sum = 0.0;
    for (const double value : values)
        sum += value;
    const double count = static_cast<double>(values.size());
    const double mean = sum / count;
    if (!(mean > 0.0))
        return std::numeric_limits<double>::quiet_NaN();

    double squares = 0.0;
    for (const double value : values)
        squares += (value - mean) * (value - mean);
    return std::sqrt(squares / count) / mean * 100.0;
}

NonUniformity nonUniformity(const ConstImageView& image)
{
    return {variationPercent(columnMeans(image)), variationPercent(rowMeans(image))};
}

std::uint64_t saturatedPixels(const ConstImageView& image)
{
    const std::int32_t limit = saturationLimit(image.depth);
    std::uint64_t found = 0;
    for (std::int32_t y = 0; y < image.height; ++y) {
        const std::uint8_t* row = image.row(y);
        std::uint32_t foundInRow = 0;
        if (image.depth == 8) {
            for (std::int32_t x = 0; x < image.width; ++x)
                foundInRow += row[x] >= limit ? 1 : 0;
        } else {
            for (std::int32_t x = 0; x < image.width; ++x)
                foundInRow += loadCell(row, x) >= limit ? 1 : 0;
        }
        found += foundInRow;
    }
    return found;
}

double saturatedShare(const ConstImageView& image)
{
    return shareOf(image, saturatedPixels(image));
}

double newlySaturatedShare(const ConstImageView& before, const ConstImageView& after)
{
    std::uint64_t found = 0;
    for (std::int32_t y = 0; y < after.height; ++y)
        for (std::int32_t x = 0; x < after.width; ++x)
            found += isSaturated(after, x, y) && !isSaturated(before, x, y) ? 1 : 0;
    return shareOf(after, found);
}

} // namespace zor
