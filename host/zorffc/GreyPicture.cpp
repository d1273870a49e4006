#include "host/zorffc/GreyPicture.h"

#include "engine/CellImage.h"

#include <algorithm>
#include <new>
#include <vector>

namespace zor {

namespace {

std::int32_t pixelAt(const ConstImageView& image, const std::uint8_t* row, std::int32_t x)
{
    return image.depth == 8 ? row[x] : loadCell(row, x);
}

void addToHistogram(const ConstImageView& image, std::vector<std::uint64_t>& histogram)
{
    for (std::int32_t y = 0; y < image.height; ++y)
        for (std::int32_t x = 0; x < image.width; ++x)
            ++histogram[static_cast<std::size_t>(pixelAt(image, image.row(y), x))];
}

/// The first value at which more than `count` pixels are reached.
template <typename Iterator> std::ptrdiff_t stepsPast(Iterator first, Iterator last, std::uint64_t count)
{
    std::uint64_t reached = 0;
    return std::find_if(first, last, [&](std::uint64_t pixels) { return (reached += pixels) > count; }) -
           first;
}

} // namespace

GreyRange commonGreyRange(const ConstImageView& first, const ConstImageView& second)
{
    constexpr std::uint64_t outsideOneSide = 200; // one pixel in 200 is 0.5 %
    constexpr std::ptrdiff_t largest = 65535;
    std::vector<std::uint64_t> histogram(largest + 1);
    addToHistogram(first, histogram);
    addToHistogram(second, histogram);
    const std::uint64_t pixels =
        2 * static_cast<std::uint64_t>(first.width) * static_cast<std::uint64_t>(first.height);

    const std::ptrdiff_t black = stepsPast(histogram.begin(), histogram.end(), pixels / outsideOneSide);
    const std::ptrdiff_t white =
        largest - stepsPast(histogram.rbegin(), histogram.rend(), pixels / outsideOneSide);
    if (black < white)
        return {static_cast<std::int32_t>(black), static_cast<std::int32_t>(white)};
    // One value nearly everywhere: a grey in the middle, 0 black, full scale white.
    const auto value = static_cast<std::int32_t>(black);
    return {std::max(value - 1, 0), std::min(value + 1, saturationLimit(first.depth))};
}

QImage greyPicture(const ConstImageView& image, const GreyRange& range)
{
    QImage picture(image.width, image.height, QImage::Format_Grayscale8);
    if (picture.isNull())
        throw std::bad_alloc();
    const double scale = 255.0 / (range.white - range.black);
    for (std::int32_t y = 0; y < image.height; ++y) {
        std::uint8_t* line = picture.scanLine(y);
        for (std::int32_t x = 0; x < image.width; ++x) {
            const std::int32_t pixel = std::clamp(pixelAt(image, image.row(y), x), range.black, range.white);
            line[x] = static_cast<std::uint8_t>((pixel - range.black) * scale + 0.5);
        }
    }
    return picture;
}

} // namespace zor
