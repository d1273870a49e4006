#include "host/simulate/RandomStream.h"

#include <algorithm>
#include <cmath>

namespace zor {

namespace {

/// Spreads seeds that lie close together over all 64 bits (the finaliser of SplitMix64).
std::uint64_t spread(std::uint64_t value)
{
    value += 0x9E3779B97F4A7C15u;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9u;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBu;
    return value ^ (value >> 31);
}

} // namespace

RandomStream::RandomStream(std::uint64_t seed, std::uint64_t stream)
    : m_generator(spread(spread(seed) + stream))
{
}

double RandomStream::uniform()
{
    constexpr double step = 1.0 / 9007199254740992.0; // 2^-53
    return static_cast<double>(m_generator() >> 11) * step;
}

double RandomStream::normal()
{
    if (m_hasSpare) {
        m_hasSpare = false;
        return m_spare;
    }
    double x = 0.0;
    double y = 0.0;
    double square = 0.0;
    do {
        x = 2.0 * uniform() - 1.0;
        y = 2.0 * uniform() - 1.0;
        square = x * x + y * y;
    } while (square >= 1.0 || square == 0.0);
    const double scale = std::sqrt(-2.0 * std::log(square) / square);
    m_spare = y * scale;
    m_hasSpare = true;
    return x * scale;
}

double RandomStream::poisson(double mean)
{
    constexpr double largestCounted = 50.0;
    if (!(mean > 0.0))
        return 0.0;
    if (mean > largestCounted)
        return std::max(0.0, std::floor(mean + std::sqrt(mean) * normal() + 0.5));

    // Counts arrivals: as many as it takes for the product of uniform numbers to fall to exp(-mean).
    const double limit = std::exp(-mean);
    double count = 0.0;
    for (double product = uniform(); product > limit; product *= uniform())
        count += 1.0;
    return count;
}

} // namespace zor
