#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zor {

/// The samples of a picture file as it stores them, before their depth is settled.
struct StoredSamples
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t channels = 1;        ///< 1: grey; 3: red, green and blue of each pixel side by side
    std::vector<std::uint16_t> values; ///< row after row without padding
    std::uint32_t storedBits = 16;     ///< 8 or 16, that a sample takes in the file

    /// Significant bits that the file states.
    struct StatedDepth
    {
        std::uint32_t bits = 0;
        std::string source; ///< the entry they come from, as a person reads it: "maxval 4095"
    };
    std::optional<StatedDepth> stated;
};

/// Appends stored samples of one byte, or of two in the machine's order.
void appendSamples(std::vector<std::uint16_t>& values, const std::uint8_t* source, std::size_t count,
                   std::size_t sampleBytes);

} // namespace zor
