#include "host/simulate/NormalTable.h"

#include <cmath>

namespace zor {

namespace {

/// The share of a normal distribution that is above `x`.
double shareAbove(double x)
{
    return 0.5 * std::erfc(x / std::sqrt(2.0));
}

double density(double x)
{
    const double circle = 2.0 * std::acos(-1.0);
    return std::exp(-x * x / 2.0) / std::sqrt(circle);
}

/// The place above which `share` of the distribution is, from a place between 0 and there. Newton's steps
/// never pass the place: right of 0 the distribution function bends down.
double placeOf(double share, double start)
{
    constexpr double smallestStep = 1e-12;
    double place = start;
    for (double step = 1.0; step > smallestStep; place += step)
        step = (shareAbove(place) - share) / density(place);
    return place;
}

} // namespace

const NormalTable& NormalTable::instance()
{
    static const NormalTable table;
    return table;
}

/// Each value is the middle of an equal share of the distribution. What the middles leave out at the tails is
/// made up for, so that the deviation is 1.
NormalTable::NormalTable()
{
    constexpr std::size_t half = Size / 2;
    std::array<double, half> places{};
    double place = 0.0;
    double squares = 0.0;
    for (std::size_t i = 0; i < half; ++i) {
        const double share = (static_cast<double>(half - i) - 0.5) / Size;
        place = placeOf(share, place);
        places[i] = place;
        squares += place * place;
    }
    const double deviation = std::sqrt(squares / half);
    for (std::size_t i = 0; i < half; ++i) {
        m_values[half + i] = static_cast<float>(places[i] / deviation);
        m_values[half - 1 - i] = -m_values[half + i];
    }
}

} // namespace zor
