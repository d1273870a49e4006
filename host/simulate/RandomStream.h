#pragma once

#include <cstdint>
#include <random>

namespace zor {

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
