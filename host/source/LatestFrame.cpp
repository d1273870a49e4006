#include "host/source/LatestFrame.h"

#include <utility>

namespace zor {

bool LatestFrame::put(SourceFrame frame)
{
    // A dropped frame is freed after the lock is given back: that takes time.
    std::optional<SourceFrame> dropped(std::move(frame));
    const std::lock_guard<std::mutex> lock(m_mutex);
    dropped.swap(m_waiting);
    ++m_counts.received;
    if (!dropped) {
        m_counts.waiting = 1;
        return true;
    }
    ++m_counts.dropped;
    return false;
}

std::optional<SourceFrame> LatestFrame::take()
{
    std::optional<SourceFrame> taken;
    const std::lock_guard<std::mutex> lock(m_mutex);
    taken.swap(m_waiting);
    m_counts.taken += m_counts.waiting;
    m_counts.waiting = 0;
    return taken;
}

LatestFrame::Counts LatestFrame::counts() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_counts;
}

} // namespace zor
