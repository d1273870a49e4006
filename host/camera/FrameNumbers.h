#pragma once

#include <cstdint>
#include <optional>

namespace zor {

/// Numbers the frames of a camera from 0 without gaps of its own making, from the block identifiers that come
/// with them. GigE Vision 1 counts from 1 to 65535 and on from 1; later interfaces count in 64 bits.
class FrameNumbers
{
public:
    /// The number of the frame with this identifier: one above that of the last frame when none was lost
    /// between them, more by as many as were. A camera that begins to count anew lost none.
    std::uint64_t number(std::uint64_t blockId);

    /// The camera begins to count anew, at whatever identifier.
    void restart() { m_last.reset(); }

    /// Frames that were numbered and frames that were lost between them.
    std::uint64_t sent() const { return m_next; }

private:
    std::optional<std::uint64_t> m_last;
    std::uint64_t m_next = 0;
};

} // namespace zor
