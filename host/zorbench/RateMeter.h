#pragma once

#include <chrono>
#include <deque>

namespace zor {

/// How often something happens, over about the last second.
class RateMeter
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// It happens, not before the last time.
    void count(Time now);

    /// Times a second; 0 before the second time. Where nothing happens for more than a second it sinks.
    double perSecond(Time now) const;

private:
    std::deque<Time> m_times; ///< one before the last second, and those within it
};

} // namespace zor
