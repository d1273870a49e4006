#include "host/source/FramePace.h"

#include <algorithm>
#include <cstdint>

namespace zor {

namespace {

std::chrono::nanoseconds periodOf(double framesPerSecond)
{
    constexpr double nanosecondsPerSecond = 1e9;
    constexpr double longest = 365 * 86400.0 * nanosecondsPerSecond;
    return std::chrono::nanoseconds(
        static_cast<std::int64_t>(std::min(longest, nanosecondsPerSecond / framesPerSecond)));
}

} // namespace

FramePace::Time FramePace::due(double framesPerSecond) const
{
    return m_hasBegun ? m_last + periodOf(framesPerSecond) : m_last;
}

void FramePace::begin(Time now, double framesPerSecond)
{
    const Time planned = due(framesPerSecond);
    m_last = now - planned < periodOf(framesPerSecond) ? planned : now;
    m_hasBegun = true;
}

} // namespace zor
