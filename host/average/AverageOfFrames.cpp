#include "host/average/AverageOfFrames.h"

#include <string>

namespace zor {

AverageOfFrames::AverageOfFrames(std::uint32_t wanted)
    : m_wanted(checkedFrameCount(wanted))
{
}

void AverageOfFrames::add(const Frame& frame)
{
    if (isDone())
        throw std::logic_error("the average has all its frames; begin a new one");
    m_sum.add(frame);
}

Frame AverageOfFrames::result() const
{
    if (!isDone())
        throw std::logic_error("the average has " + std::to_string(taken()) + " of " +
                               std::to_string(m_wanted) + " frames; add the others first");
    return m_sum.mean();
}

} // namespace zor
