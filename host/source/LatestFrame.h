#pragma once

#include "host/source/FrameSource.h"

#include <cstdint>
#include <mutex>
#include <optional>

namespace zor {

/// Hands frames from a source's thread to one that shows them: it holds the newest frame until that is taken,
/// and nothing else. A frame that is replaced while it waits is dropped. All functions may be called on any
/// thread.
class LatestFrame
{
public:
    /// Since the start. received = taken + dropped + waiting, in every answer.
    struct Counts
    {
        std::uint64_t received = 0;
        std::uint64_t taken = 0;
        std::uint64_t dropped = 0;
        std::uint64_t waiting = 0; ///< 0 or 1
    };

    /// True when none was waiting: the taker is to be woken, once for each true.
    bool put(SourceFrame frame);

    /// The frame that waits; nothing when there is none.
    std::optional<SourceFrame> take();

    Counts counts() const;

private:
    mutable std::mutex m_mutex;
    std::optional<SourceFrame> m_waiting;
    Counts m_counts;
};

} // namespace zor
