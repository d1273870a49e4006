#pragma once

#include <cstdint>
#include <optional>

namespace zor {

/// Numbers the frames of a camera from 0 without gaps of its own making, from the block identifiers that come
/// with them. GigE Vision 1 counts from 1 to 65535 and on from 1; later interfaces count in 64 bits.
class FrameNumbers
{
public:
    /// The number of the complete frame with this identifier: one above that of the last frame when none was
    /// lost between them, more by as many as were lost or incomplete. One that comes late gets the number
    /// that was left out for it. A camera that begins to count anew lost none.
    std::uint64_t number(std::uint64_t blockId);

    /// A frame came of which parts are missing. Its identifier says nothing, and it may be reported after
    /// complete ones that were sent later.
    void addIncomplete() { ++m_incomplete; }

    /// The camera begins to count anew, at whatever identifier.
    void restart();

    /// Complete and incomplete frames, and those that were lost between them.
    std::uint64_t sent() const;

private:
    std::uint64_t m_before = 0; ///< frames from before the first complete one that it counts from
    // The rest is since then.
    std::optional<std::uint64_t> m_last; ///< identifier of the last complete frame
    std::uint64_t m_span = 0;            ///< identifiers from the first complete frame to the last
    std::uint64_t m_complete = 0;
    std::uint64_t m_incomplete = 0;
};

} // namespace zor
