#include "host/simulate/RandomStream.h"

#include "host/simulate/SpreadBits.h"

#include <algorithm>
#include <cmath>

namespace zor {

RandomStream::RandomStream(std::uint64_t seed, std::uint64_t stream)
    : m_generator(spreadBits(spreadBits(seed) + stream))
{
}

double RandomStream::uniform()
{
    return unitInterval(m_generator());
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
    if (!(mean > 0.0))
        return 0.0;
    if (mean > LargestCountedMean)
        return std::max(0.0, std::floor(mean + std::sqrt(mean) * normal() + 0.5));
    return countArrivals(mean, [this] { return uniform(); });
}

} // namespace zor
