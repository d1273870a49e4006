#include "tests/reference/EngineReference.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <sstream>

namespace reference {
namespace {

__extension__ using Wide = __int128;

std::int32_t truncated(double value)
{
    if (std::isnan(value) || std::trunc(value) > 2147483647.0 || std::trunc(value) < -2147483648.0)
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

std::uint16_t lowWord(std::int64_t value)
{
    return static_cast<std::uint16_t>(((value % 65536) + 65536) % 65536);
}

int asSigned(unsigned word)
{
    return word >= 32768 ? static_cast<int>(word) - 65536 : static_cast<int>(word);
}

std::int64_t fullScale(int depth)
{
    return static_cast<std::int64_t>(std::pow(2.0, depth)) - 1;
}

unsigned word(const std::vector<std::uint8_t>& bytes, std::size_t at)
{
    return bytes.at(at) + 256u * bytes.at(at + 1);
}

void setWord(std::vector<std::uint8_t>& bytes, std::size_t at, unsigned value)
{
    bytes.at(at) = static_cast<std::uint8_t>(value % 256);
    bytes.at(at + 1) = static_cast<std::uint8_t>(value / 256);
}

/// cell x code / 256, toward minus infinity, as 16 bits read with their sign.
int multiplied(int cell, int code)
{
    return asSigned(lowWord(static_cast<std::int64_t>(std::floor(static_cast<double>(cell) * code / 256.0))));
}

/// `fraction` as that many bits, all of them set from 1 on, none for a NaN or below 0.
std::uint32_t fractionBitsOf(double fraction, int bits)
{
    const double scale = std::pow(2.0, bits);
    if (!(fraction > 0.0))
        return 0;
    return static_cast<std::uint32_t>(fraction >= 1.0 ? scale - 1 : std::floor(fraction * scale));
}

Gains fromMeans(std::vector<double> means, const Rule& rule)
{
    Gains result;
    double sum = 0.0;
    for (const double mean : means) {
        result.means.push_back(lowWord(truncated(mean)));
        sum += mean;
    }
    const double overall = sum / static_cast<double>(means.size());
    if (rule.pairs) {
        for (std::size_t i = 1; i < means.size(); i += 2)
            means[i - 1] = means[i] = (means[i - 1] + means[i]) * 0.5;
    }
    double peak = 0.0;
    for (const double mean : means)
        peak = mean > peak ? mean : peak;
    for (const double mean : means)
        result.gains.push_back((rule.normalize ? peak * rule.value : overall) / mean);
    return result;
}

} // namespace

unsigned Image::pixel(int x, int y) const
{
    const std::size_t row = static_cast<std::size_t>(y) * static_cast<std::size_t>(step);
    return depth == 8 ? bytes.at(row + static_cast<std::size_t>(x))
                      : word(bytes, row + 2 * static_cast<std::size_t>(x));
}

std::uint16_t gainCode(double gain)
{
    const double magnitude = gain < 0.0 ? -gain : gain;
    const std::int32_t integer = truncated(std::floor(magnitude));
    const double rest = magnitude - asSigned(lowWord(integer));
    return static_cast<std::uint16_t>(lowWord(integer) % 16 * 256 + fractionBitsOf(rest, 8));
}

std::int32_t coefficient(double gain, int fractionBits)
{
    if (fractionBits > 31)
        return 0;
    const std::int32_t integer = truncated(gain);
    const double rest = (gain < 0.0 ? -gain : gain) - integer;
    const auto whole = static_cast<std::uint64_t>(std::int64_t{integer}) << fractionBits;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(whole + fractionBitsOf(rest, fractionBits)));
}

std::string tables(const std::vector<double>& columns, const std::vector<double>& rows, int fractionBits)
{
    std::ostringstream text;
    for (std::size_t i = 0; i < columns.size(); ++i)
        text << i + 1 << "," << coefficient(columns[i], fractionBits) << "\n";
    text << ":FFC_Y start,\n-- Row(Y),HEX Value\n";
    for (std::size_t i = 0; i < rows.size(); ++i)
        text << i + 1 << "," << coefficient(rows[i], fractionBits) << "\n";
    return text.str();
}

Gains columnGains(const Image& image, const Rule& rule)
{
    std::vector<double> means;
    for (int x = 0; x < image.width; ++x) {
        double sum = 0.0;
        for (int y = 0; y < image.height; ++y)
            sum += image.pixel(x, y);
        means.push_back(sum / image.height);
    }
    return fromMeans(means, rule);
}

Gains rowGains(const Image& image, const Rule& rule)
{
    std::vector<double> means;
    for (int y = 0; y < image.height; ++y) {
        double sum = 0.0;
        for (int x = 0; x < image.width; ++x)
            sum += image.pixel(x, y);
        means.push_back(sum / image.width);
    }
    return fromMeans(means, rule);
}

int cellStep(int width)
{
    int bytes = width * 2;
    while (bytes % 4 != 0)
        ++bytes;
    return bytes;
}

void fillCells(const Image& frame, Image& cells)
{
    std::fill(cells.bytes.begin(), cells.bytes.end(), std::uint8_t{0});
    if (frame.depth < 8 || frame.depth > 16)
        return;
    if (frame.depth != 8) {
        const std::size_t rows =
            static_cast<std::size_t>(frame.height) * static_cast<std::size_t>(cells.step);
        for (std::size_t i = 0; i < rows && i < frame.bytes.size(); ++i)
            cells.bytes.at(i) = frame.bytes.at(i);
        return;
    }
    for (int x = 0; x < frame.width; ++x) {
        for (int y = 0; y < frame.height; ++y)
            setWord(cells.bytes, static_cast<std::size_t>(y * cells.step + 2 * x), frame.pixel(x, y));
    }
}

void columnPass(Image& cells, int frameStep, const std::vector<std::uint16_t>& codes)
{
    if (cells.depth == 8) {
        for (int x = 0; x < cells.width; ++x) {
            for (int y = 0; y < cells.height; ++y) {
                const auto at = static_cast<std::size_t>(y * cells.step + 2 * x);
                const auto cell = static_cast<std::int16_t>(asSigned(word(cells.bytes, at)));
                const auto code = static_cast<std::int16_t>(codes.at(static_cast<std::size_t>(x)));
                setWord(cells.bytes, at, lowWord(scaledProduct(cell, code, 8)));
            }
        }
        return;
    }
    std::size_t at = 0;
    for (int y = 0; y < cells.height; ++y) {
        for (std::size_t index = 0; index < static_cast<std::size_t>(frameStep / 2); ++index, at += 2) {
            if (at + 2 > cells.bytes.size())
                return;
            const int cell = asSigned(word(cells.bytes, at));
            if (cell == fullScale(cells.depth))
                continue;
            const int result = multiplied(cell, index < codes.size() ? codes[index] : 256);
            const bool above = result > fullScale(cells.depth);
            setWord(cells.bytes, at, lowWord(above ? fullScale(cells.depth) : result));
        }
    }
}

void rowPass(const Image& source, Image& destination, const std::vector<std::uint16_t>& codes)
{
    for (int x = 0; x < source.width; ++x) {
        for (int y = 0; y < source.height; ++y) {
            const std::int64_t limit = fullScale(source.depth);
            const int cell =
                asSigned(word(source.bytes, static_cast<std::size_t>(y * (source.step / 2) * 2 + 2 * x)));
            const int result = multiplied(cell, codes.at(static_cast<std::size_t>(y)));
            const std::int64_t limited = result > asSigned(lowWord(limit)) ? limit : result;
            setWord(destination.bytes, static_cast<std::size_t>(y * (destination.step / 2) * 2 + 2 * x),
                    lowWord(cell == limit ? cell : limited));
        }
    }
}

unsigned corrected(unsigned pixel, std::int32_t column, std::int32_t row, int fractionBits, int depth)
{
    const Wide product = static_cast<Wide>(pixel) * column * row;
    if (product < 0)
        return 0;
    const Wide value = product / (static_cast<Wide>(1) << (2 * fractionBits));
    return static_cast<unsigned>(value > fullScale(depth) ? fullScale(depth) : value);
}

std::int16_t scaledProduct(std::int16_t a, std::int16_t b, int scale)
{
    // A product of 31 bits over a power of two is exact, and the rounding mode in force is to nearest, ties
    // to even.
    const double value = std::nearbyint(static_cast<double>(a) * b / std::pow(2.0, scale));
    return static_cast<std::int16_t>(value > 32767.0 ? 32767.0 : value < -32768.0 ? -32768.0 : value);
}

std::vector<int> uniformLevels(float lower, float upper, int count)
{
    std::vector<int> levels;
    for (int k = 0; k < count; ++k) {
        const double exact = lower + k * ((static_cast<double>(upper) - lower) / (count - 1));
        levels.push_back(truncated(k == count - 1 ? static_cast<double>(upper) : exact));
    }
    return levels;
}

std::vector<int> histogram(const std::vector<int>& values, const std::vector<int>& levels)
{
    std::vector<int> bins(levels.size() - 1, 0);
    for (const int value : values) {
        for (std::size_t k = 0; k + 1 < levels.size(); ++k) {
            if (levels[k] <= value && value < levels[k + 1])
                ++bins[k];
        }
    }
    return bins;
}

std::vector<int> frameHistogram(const Image& image)
{
    std::vector<int> bins(static_cast<std::size_t>(fullScale(image.depth) + 1), 0);
    for (int x = 0; x < image.width; ++x) {
        for (int y = 0; y < image.height; ++y) {
            const unsigned pixel = image.pixel(x, y);
            if (pixel < fullScale(image.depth) && pixel < 32768)
                ++bins[pixel];
        }
    }
    return bins;
}

int histogramPeak(int peak, int floor, const std::vector<int>& bins)
{
    const int largest = *std::max_element(bins.begin() + 1, bins.end() - 1);
    if (largest <= peak && largest >= peak * 0.6)
        return peak;
    const int span = largest - floor;
    const int grain = span > 10000 ? 10000 : span > 1000 ? 500 : span > 100 ? 100 : 20;
    return largest == 0 ? 0 : (largest / grain + 1) * grain;
}

Extremes extremes(const Image& image, bool withSign)
{
    std::vector<int> values;
    for (int x = 0; x < image.width; ++x) {
        for (int y = 0; y < image.height; ++y)
            values.push_back(withSign ? asSigned(image.pixel(x, y)) : static_cast<int>(image.pixel(x, y)));
    }
    std::sort(values.begin(), values.end());
    return {values.front(), values.back()};
}

Extremes plotRange(const Extremes& first, const Extremes& second)
{
    int least = std::min(first.least, second.least);
    int greatest = std::max(first.greatest, second.greatest);
    while (least % 20 != 0)
        --least;
    while (greatest % 20 != 0)
        ++greatest;
    return {least, greatest};
}

} // namespace reference
