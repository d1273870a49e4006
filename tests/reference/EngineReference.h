#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What the engine has to compute, once more: pixel by pixel, from the definitions alone, with no thought of
/// speed and no code of the engine.
namespace reference {

/// Bytes with a geometry. Pixels are one byte at depth 8, else two bytes, the low one first.
struct Image
{
    std::vector<std::uint8_t> bytes;
    int step;
    int width;
    int height;
    int depth;

    unsigned pixel(int x, int y) const;
};

struct Rule
{
    bool normalize;
    double value;
    bool pairs;
};

struct Gains
{
    std::vector<double> gains;
    std::vector<std::uint16_t> means;
};

std::uint16_t gainCode(double gain);
std::int32_t coefficient(double gain, int fractionBits);
std::string tables(const std::vector<double>& columns, const std::vector<double>& rows, int fractionBits);

/// Gains and means of the columns; of the rows.
Gains columnGains(const Image& image, const Rule& rule);
Gains rowGains(const Image& image, const Rule& rule);

int cellStep(int width);

/// The block of height + 1 rows of 16-bit cells that a frame is copied to; zero where no pixel goes.
void fillCells(const Image& frame, Image& cells);

/// One code a column, codes.size() of them; 1.0 after the last.
void columnPass(Image& cells, int frameStep, const std::vector<std::uint16_t>& codes);
void rowPass(const Image& source, Image& destination, const std::vector<std::uint16_t>& codes);

/// pixel x column x row over 2^(2 x fractionBits), from 0 to full scale.
unsigned corrected(unsigned pixel, std::int32_t column, std::int32_t row, int fractionBits, int depth);

/// product / 2^scale to nearest, ties to even, limited to 16 bits with sign.
std::int16_t scaledProduct(std::int16_t a, std::int16_t b, int scale);

/// Level k is lower + k x (upper - lower) / (count - 1), truncated.
std::vector<int> uniformLevels(float lower, float upper, int count);

/// How many values lie from one level up to the next.
std::vector<int> histogram(const std::vector<int>& values, const std::vector<int>& levels);

/// As many bins as a pixel of the depth has values: how often each occurs among the pixels, which are read as
/// signed numbers above depth 8. The last value is not counted.
std::vector<int> frameHistogram(const Image& image);

/// The axis limit that `peak` becomes: lowered when the largest bin is under 60 % of it, raised
/// when that is above it, then rounded up to the grain of its height above `floor`. The first and the last
/// bin don't count.
int histogramPeak(int peak, int floor, const std::vector<int>& bins);

struct Extremes
{
    int least;
    int greatest;
};

/// Of all pixels; `withSign` reads two bytes as a signed number.
Extremes extremes(const Image& image, bool withSign);

/// Both spans, widened to multiples of 20.
Extremes plotRange(const Extremes& first, const Extremes& second);

} // namespace reference
