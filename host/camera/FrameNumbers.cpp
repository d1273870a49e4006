#include "host/camera/FrameNumbers.h"

#include <algorithm>
#include <utility>

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
    const std::int64_t step = m_last ? stepBetween(*m_last, blockId) : 0;
    // It was counted as lost, or is not known to have been sent at all.
    if (step < 0)
        return m_next - std::min<std::uint64_t>(m_next, static_cast<std::uint64_t>(1 - step));
    // Incomplete frames are among those between; at a new beginning nobody knows how many there were besides.
    m_next += std::max(static_cast<std::uint64_t>(std::max<std::int64_t>(step, 1)),
                       std::exchange(m_incomplete, 0) + 1);
    m_last = blockId;
    return m_next - 1;
}

} // namespace zor
