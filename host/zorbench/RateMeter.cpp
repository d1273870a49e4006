#include "host/zorbench/RateMeter.h"

#include <algorithm>

namespace zor {

namespace {

constexpr std::chrono::seconds Window(1);

double seconds(std::chrono::steady_clock::duration time)
{
    return std::chrono::duration<double>(time).count();
}

} // namespace

void RateMeter::count(Time now)
{
    m_times.push_back(now);
    while (m_times.size() > 2 && m_times[1] <= now - Window)
        m_times.pop_front();
}

double RateMeter::perSecond(Time now) const
{
    if (m_times.size() < 2 || m_times.front() == m_times.back())
        return 0.0;
    const double rate = static_cast<double>(m_times.size() - 1) / seconds(m_times.back() - m_times.front());
    const auto silence = now - m_times.back();
    return silence > Window ? std::min(rate, 1.0 / seconds(silence)) : rate;
}

} // namespace zor
