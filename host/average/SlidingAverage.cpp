#include "host/average/SlidingAverage.h"

#include <algorithm>
#include <string>
#include <utility>

namespace zor {

namespace {

void checkMemory(std::uint64_t frameBytes, std::uint32_t wanted)
{
    const std::uint32_t fitting = SlidingAverage::framesThatFit(frameBytes);
    if (wanted > fitting)
        throw std::length_error("the last " + std::to_string(wanted) +
                                " frames take more than 1 GiB, in which " + std::to_string(fitting) + " of " +
                                std::to_string(frameBytes) +
                                " bytes fit; average fewer frames, or take the average once");
}

} // namespace

std::uint32_t SlidingAverage::framesThatFit(std::uint64_t frameBytes)
{
    const std::uint64_t fitting = MostBytes / std::max<std::uint64_t>(frameBytes, 1);
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(fitting, MostAveragedFrames));
}

SlidingAverage::SlidingAverage(std::uint32_t wanted)
    : m_wanted(checkedFrameCount(wanted))
{
    // Nothing fails any more when a frame has been added.
    m_frames.reserve(m_wanted);
}

void SlidingAverage::add(std::shared_ptr<const Frame> frame)
{
    checkMemory(frame->pixels.size(), m_wanted);
    if (m_frames.size() < m_wanted) {
        m_sum.add(*frame);
        m_frames.push_back(std::move(frame));
        return;
    }
    m_sum.replace(*m_frames[m_oldest], *frame);
    m_frames[m_oldest] = std::move(frame);
    m_oldest = (m_oldest + 1) % m_wanted;
}

} // namespace zor
