#pragma once

#include <cmath>
#include <cstdint>
#include <random>

namespace zor {

/// The upper 53 bits of a random number as one from 0 up to but not including 1.
constexpr double unitInterval(std::uint64_t bits)
{
    constexpr double step = 1.0 / 9007199254740992.0; // 2^-53
    return static_cast<double>(bits >> 11) * step;
}

/// The largest mean for which counts are drawn one by one; above it the normal distribution takes their
/// place.
constexpr double LargestCountedMean = 50.0;

/// A Poisson count with the given mean above 0: as many arrivals as it takes for the product of uniform
/// numbers to fall to exp(-mean).
template <typename Uniform> double countArrivals(double mean, Uniform uniform)
{
    const double limit = std::exp(-mean);
    double count = 0.0;
    for (double product = uniform(); product > limit; product *= uniform())
        count += 1.0;
    return count;
}

/// Random numbers that depend on the seed alone: the generator's sequence is fixed by the language, and the
/// transforms are our own because those of the standard library differ from one library to the next.
class RandomStream
{
public:
    /// Streams of one seed are independent of each other.
    RandomStream(std::uint64_t seed, std::uint64_t stream);

    /// From 0 up to but not including 1, in steps of 2^-53.
    double uniform();

    /// Mean 0, standard deviation 1 (polar method).
    double normal();

    /// A count with the given mean: Poisson up to a mean of 50, above it the rounded normal distribution of
    /// the same mean and variance, never below 0. A mean that is not above 0 gives 0.
    double poisson(double mean);

private:
    std::mt19937_64 m_generator;
    double m_spare = 0.0;
    bool m_hasSpare = false;
};

} // namespace zor
