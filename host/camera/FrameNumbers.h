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

    /// A frame came of which parts are missing. Its identifier says nothing.
    void addIncomplete() { ++m_incomplete; }

    /// The camera begins to count anew, at whatever identifier.
    void restart() { m_last.reset(); }

    /// Frames that were numbered, and those that were incomplete or lost between them.
    std::uint64_t sent() const { return m_next + m_incomplete; }

private:
    std::optional<std::uint64_t> m_last;
    std::uint64_t m_next = 0;
    std::uint64_t m_incomplete = 0; ///< since the last complete one
};

} // namespace zor
