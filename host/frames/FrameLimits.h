#pragma once

#include <cstdint>
#include <string>

namespace zor {

/// Columns or rows that a frame has at most.
constexpr std::uint32_t MaxFrameSide = 65535;

/// Bytes that a frame takes at most: an image record counts them in 32 bits.
constexpr std::uint64_t MaxFrameBytes = 0xFFFFFFFF;

/// The one place where a size that a file or a user gives is judged, before anything is allocated for it.
/// Throws FrameError for a side of 0 or above MaxFrameSide, or a frame above MaxFrameBytes.
void checkFrameSize(const std::string& path, std::uint64_t width, std::uint64_t height,
                    std::uint64_t bytesPerLine);

/// How many bytes of samples a compressed file holds at most: `factor` for each of its own, and `freely`
/// more.
struct Inflation
{
    std::uint64_t factor;
    std::uint64_t freely = 0;
};

/// Deflate makes 258 bytes of 2 bits at most.
constexpr Inflation DeflateInflation = {1032};

/// Refuses a header that asks for more samples than the file can hold, before anything is decoded. Throws
/// FrameError.
void checkFileHolds(const std::string& path, std::uint64_t fileBytes, std::uint64_t sampleBytes,
                    const Inflation& inflation);

} // namespace zor
