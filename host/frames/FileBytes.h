#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zor {

/// Bytes of a regular file. Throws FrameError when there is no such file, it is none or it is empty.
std::uint64_t fileSize(const std::string& path);

/// The file's first bytes, at most `count`. Throws FrameError.
std::vector<std::uint8_t> readStart(const std::string& path, std::size_t count);

/// All of the file. Throws FrameError, also for a file too large to hold one frame.
std::vector<std::uint8_t> readBytes(const std::string& path);

} // namespace zor
