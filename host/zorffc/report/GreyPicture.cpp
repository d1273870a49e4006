#include "host/zorffc/report/GreyPicture.h"

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

/// How the pixels along one side of an image lie below those of a picture of it.
class Raster
{
public:
    Raster(std::int32_t pixels, std::int32_t places)
        : m_pixels(pixels)
        , m_places(places)
    {
    }

    /// The weights below each place together.
    std::uint64_t whole() const { return shrinks() ? static_cast<std::uint64_t>(m_pixels) : 1; }

    /// Calls `take(pixel, weight)` for each pixel below a place. The side counts pixels times places units,
    /// so that every edge is a whole number.
    template <typename Take> void forEachBelow(std::int32_t place, Take take) const
    {
        if (!shrinks()) {
            take(static_cast<std::int32_t>((2 * std::int64_t{place} + 1) * m_pixels / (2 * m_places)), 1);
            return;
        }
        const std::int64_t begin = std::int64_t{place} * m_pixels;
        const std::int64_t end = begin + m_pixels;
        for (std::int64_t pixel = begin / m_places; pixel * m_places < end; ++pixel) {
            const std::int64_t from = std::max(begin, pixel * m_places);
            const std::int64_t to = std::min(end, (pixel + 1) * m_places);
            take(static_cast<std::int32_t>(pixel), static_cast<std::uint64_t>(to - from));
        }
    }

private:
    bool shrinks() const { return m_places < m_pixels; }

    std::int32_t m_pixels;
    std::int32_t m_places;
};

/// Adds a row to the sums of the columns: each pixel's height above black, up to white.
void addRow(std::vector<std::uint64_t>& sums, const ConstImageView& image, std::int32_t row,
            const GreyRange& range, std::uint64_t weight)
{
    const std::uint8_t* pixels = image.row(row);
    for (std::int32_t x = 0; x < image.width; ++x) {
        const std::int32_t pixel = std::clamp(pixelAt(image, pixels, x), range.black, range.white);
        sums[static_cast<std::size_t>(x)] += weight * static_cast<std::uint64_t>(pixel - range.black);
    }
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

QImage greyPicture(const ConstImageView& image, const GreyRange& range, const QSize& size)
{
    QImage picture(size, QImage::Format_Grayscale8);
    if (picture.isNull())
        throw std::bad_alloc();
    const Raster columns(image.width, size.width());
    const Raster rows(image.height, size.height());
    // White everywhere below one pixel of the picture, at most 65535 times 65535 squared.
    const std::uint64_t white =
        static_cast<std::uint64_t>(range.white - range.black) * columns.whole() * rows.whole();
    std::vector<std::uint64_t> sums(static_cast<std::size_t>(image.width));
    for (int y = 0; y < size.height(); ++y) {
        std::fill(sums.begin(), sums.end(), 0);
        rows.forEachBelow(
            y, [&](std::int32_t row, std::uint64_t weight) { addRow(sums, image, row, range, weight); });
        std::uint8_t* line = picture.scanLine(y);
        for (int x = 0; x < size.width(); ++x) {
            std::uint64_t sum = 0;
            columns.forEachBelow(x, [&](std::int32_t column, std::uint64_t weight) {
                sum += weight * sums[static_cast<std::size_t>(column)];
            });
            line[x] = static_cast<std::uint8_t>((2 * 255 * sum + white) / (2 * white));
        }
    }
    return picture;
}

} // namespace zor
