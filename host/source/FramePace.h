#pragma once

#include <chrono>

namespace zor {

/// When the frames of a stream are due. A frame that begins late by less than a period does not delay the
/// others, so that the rate is kept on average; one that is late by a period or more begins the count anew,
/// so that what was missed is not made up for.
class FramePace
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// The first frame is due at `start`.
    explicit FramePace(Time start)
        : m_last(start)
    {
    }

    /// The time from which on the next frame may begin, at a rate above 0. A period is at most a year.
    Time due(double framesPerSecond) const;

    /// A frame begins, at or after the time that it was due.
    void begin(Time now, double framesPerSecond);

private:
    Time m_last; ///< when the last frame was due, or when it began
    bool m_hasBegun = false;
};

} // namespace zor
