#include "host/camera/FrameNumbers.h"

#include <algorithm>

namespace zor {

namespace {

constexpr std::int64_t Largest16 = 65535; // no block has the identifier 0 there

/// A frame that comes after a later one is behind it by no more.
constexpr std::int64_t LatestBy = 32;

/// How many identifiers the second is after the first: less than 0 when it comes late, 0 when the camera
/// began to count anew.
std::int64_t stepBetween(std::uint64_t first, std::uint64_t second)
{
    auto step = static_cast<std::int64_t>(second - first);
    if (first <= Largest16 && second <= Largest16) {
        if (step < -Largest16 / 2)
            step += Largest16;
        else if (step > Largest16 / 2)
            step -= Largest16;
    }
    return step >= -LatestBy ? step : 0;
}

} // namespace

std::uint64_t FrameNumbers::number(std::uint64_t blockId)
{
    std::int64_t step = m_last ? stepBetween(*m_last, blockId) : 0;
    if (step == 0) {
        restart();
        step = 1;
    }
    ++m_complete;
    if (step < 0) {
        // It was counted as lost, or came before the first.
        const std::uint64_t back = static_cast<std::uint64_t>(-step);
        return m_before + (back < m_span ? m_span - 1 - back : 0);
    }
    m_span += static_cast<std::uint64_t>(step);
    m_last = blockId;
    return sent() - 1;
}

void FrameNumbers::restart()
{
    m_before = sent();
    m_last.reset();
    m_span = 0;
    m_complete = 0;
    m_incomplete = 0;
}

std::uint64_t FrameNumbers::sent() const
{
    return m_before + std::max(m_span, m_complete + m_incomplete);
}

} // namespace zor
