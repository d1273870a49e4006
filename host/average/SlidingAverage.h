#pragma once

#include "host/average/FrameSum.h"

#include <cstddef>
#include <memory>

namespace zor {

/// The mean of the last frames of a stream. Holds these frames.
class SlidingAverage
{
public:
    /// Bytes of pixels that the frames which are held take at most.
    static constexpr std::uint64_t MostBytes = std::uint64_t{1} << 30;

    /// How many frames with so many bytes of pixels an average has at most; 0 for a frame above MostBytes.
    static std::uint32_t framesThatFit(std::uint64_t frameBytes);

    /// Over 1 to MostAveragedFrames frames; throws std::invalid_argument for another number.
    explicit SlidingAverage(std::uint32_t wanted);

    /// Adds a frame, never null, in place of the oldest one when all that are wanted are there. Throws as
    /// FrameSum::add(), and std::length_error for a frame of which fewer fit than are wanted. The average is
    /// then what it was.
    void add(std::shared_ptr<const Frame> frame);

    /// How many frames the mean is of: those seen, at most those wanted.
    std::uint32_t count() const { return m_sum.count(); }
    std::uint32_t wanted() const { return m_wanted; }

    /// See FrameSum::mean(). Throws std::logic_error before the first frame.
    Frame mean() const { return m_sum.mean(); }

private:
    std::uint32_t m_wanted;
    FrameSum m_sum;
    std::vector<std::shared_ptr<const Frame>> m_frames;
    std::size_t m_oldest = 0; ///< when all that are wanted are there
};

} // namespace zor
