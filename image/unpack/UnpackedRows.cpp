#include "image/unpack/UnpackedRows.h"

#include <algorithm>
#include <cstring>

namespace zor::unpack {

namespace {

/// A row may start at an odd address, hence no pointer to words.
template <unsigned Depth>
void limitedWords(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    constexpr std::uint16_t FullScale = (1U << Depth) - 1;
    std::memcpy(destination, source, count * sizeof(std::uint16_t));
    for (std::size_t i = 0; i < count; ++i)
        destination[i] = std::min(destination[i], FullScale);
}

} // namespace

void bytes(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        destination[i] = source[i];
}

void words10(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    limitedWords<10>(source, destination, count);
}

void words12(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    limitedWords<12>(source, destination, count);
}

void words14(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    limitedWords<14>(source, destination, count);
}

void words16(const std::uint8_t* source, std::uint16_t* destination, std::size_t count)
{
    std::memcpy(destination, source, count * sizeof(std::uint16_t));
}

void wordsOfThree10(const std::uint8_t* source, std::uint16_t* destination, std::size_t pixels)
{
    for (std::size_t i = 0; i < pixels; ++i) {
        std::uint32_t word;
        std::memcpy(&word, source + 4 * i, sizeof(word));
        destination[3 * i] = word & 0x3FF;
        destination[3 * i + 1] = word >> 10 & 0x3FF;
        destination[3 * i + 2] = word >> 20 & 0x3FF;
    }
}

} // namespace zor::unpack
