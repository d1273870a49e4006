#pragma once

#include "host/average/FrameSum.h"

namespace zor {

/// The mean of so many frames, taken once.
class AverageOfFrames
{
public:
    /// Of 1 to MostAveragedFrames frames; throws std::invalid_argument for another number.
    explicit AverageOfFrames(std::uint32_t wanted);

    /// Throws as FrameSum::add(), and std::logic_error when it is done.
    void add(const Frame& frame);

    std::uint32_t taken() const { return m_sum.count(); }
    std::uint32_t wanted() const { return m_wanted; }
    bool isDone() const { return taken() == m_wanted; }

    /// See FrameSum::mean(). Throws std::logic_error before it is done.
    Frame result() const;

private:
    std::uint32_t m_wanted;
    FrameSum m_sum;
};

} // namespace zor
