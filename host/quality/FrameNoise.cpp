#include "host/quality/FrameNoise.h"

#include "engine/Profiles.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace zor {

namespace {

/// Of one frame less the other.
struct Differences
{
    std::int64_t sum = 0;
    std::uint64_t squares = 0;
};

void add(Differences& differences, std::int32_t one, std::int32_t other)
{
    const std::int32_t difference = one - other;
    differences.sum += difference;
    differences.squares += std::uint32_t(difference) * std::uint32_t(difference);
}

Differences differencesOf(const ConstImageView& one, const ConstImageView& other)
{
    Differences differences;
    for (std::int32_t y = 0; y < one.height; ++y) {
        const std::uint8_t* row = one.row(y);
        const std::uint8_t* otherRow = other.row(y);
        if (one.depth == 8) {
            for (std::int32_t x = 0; x < one.width; ++x)
                add(differences, row[x], otherRow[x]);
        } else {
            for (std::int32_t x = 0; x < one.width; ++x)
                add(differences, loadCell(row, x), loadCell(otherRow, x));
        }
    }
    return differences;
}

} // namespace

FrameNoise frameNoise(const ConstImageView& one, const ConstImageView& other)
{
    if (one.width != other.width || one.height != other.height || one.depth != other.depth)
        throw std::invalid_argument("noise is measured on two frames of one size and depth");
    std::uint64_t sum = 0;
    for (std::int32_t y = 0; y < one.height; ++y)
        sum += rowSum(one, y) + rowSum(other, y);
    const Differences differences = differencesOf(one, other);

    // Deviations are taken from the whole part of the mean difference, in integers that wrap where the result
    // does not, so that a large difference of the means costs no digits of the noise.
    const std::int64_t count = std::int64_t{one.width} * one.height;
    const auto pixels = static_cast<double>(count);
    const std::int64_t whole = differences.sum / count;
    const auto wholeBits = static_cast<std::uint64_t>(whole);
    const std::uint64_t squares = differences.squares -
                                  2 * wholeBits * static_cast<std::uint64_t>(differences.sum) +
                                  wholeBits * wholeBits * static_cast<std::uint64_t>(count);
    const double fraction = static_cast<double>(differences.sum % count) / pixels;

    FrameNoise noise;
    noise.mean = static_cast<double>(sum) / (2 * pixels);
    noise.variance = (static_cast<double>(squares) / pixels - fraction * fraction) / 2;
    return noise;
}

NeededFrames neededFrames(const FrameNoise& noise, std::uint32_t width, std::uint32_t height, double accuracy,
                          std::uint32_t most)
{
    if (!(accuracy > 0.0))
        throw std::invalid_argument("the accuracy of gains is a share above 0");
    if (!(noise.mean > 0.0))
        return {NeededFrames::NoLight, 0};
    const double deviation = noise.mean * accuracy;
    const double needed = std::ceil(noise.variance / (deviation * deviation) / std::min(width, height));
    if (!(needed <= most))
        return {NeededFrames::TooMany, 0};
    return {NeededFrames::Count, std::max(1u, static_cast<std::uint32_t>(needed))};
}

} // namespace zor
