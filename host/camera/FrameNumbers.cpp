#include "host/camera/FrameNumbers.h"

namespace zor {

namespace {

/// How many identifiers the second is after the first; 1 when the camera began to count anew.
std::uint64_t stepBetween(std::uint64_t first, std::uint64_t second)
{
    constexpr std::uint64_t largest16 = 65535; // no block has the identifier 0 there
    constexpr std::uint64_t half = largest16 / 2;
    if (second > first)
        return second - first;
    const std::uint64_t wrapped = second + largest16 - first;
    return first <= largest16 && wrapped <= half ? wrapped : 1;
}

} // namespace

std::uint64_t FrameNumbers::number(std::uint64_t blockId)
{
    m_next += m_last ? stepBetween(*m_last, blockId) : 1;
    m_last = blockId;
    return m_next - 1;
}

} // namespace zor
