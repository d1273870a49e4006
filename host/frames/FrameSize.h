#pragma once

#include <cstdint>
#include <string>

namespace zor {

/// Pixels or lines that a frame has at most.
constexpr std::uint32_t MaxFrameSide = 65535;

/// Bytes that a frame takes at most: an image record counts them in 32 bits.
constexpr std::uint64_t MaxFrameBytes = 0xFFFFFFFF;

/// The one place where a size that a file or a user tells is judged, before anything is allocated for it.
/// Throws FrameError for a side of 0 or above MaxFrameSide, or a frame above MaxFrameBytes.
void checkFrameSize(const std::string& path, std::uint64_t width, std::uint64_t height,
                    std::uint64_t bytesPerLine);

} // namespace zor
