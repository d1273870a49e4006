#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The pixel formats from their definitions, one bit at a time, with no thought of speed and no code of the
/// product.
namespace reference {

/// The top byte of a code.
enum Family : std::uint32_t
{
    Mono = 1,
    Rgb = 2,
    Bayer = 3,
    TrueSense = 4,
    Yuv = 5
};

struct PixelFormat
{
    std::string name;
    std::uint32_t code;
    Family family;
    std::uint32_t heldBits;        ///< bits of a sample's value
    std::uint32_t storedBits;      ///< bits to collect; above `heldBits` where a word is wider than the value
    std::uint32_t pixelBits;       ///< bits of memory that a pixel takes
    std::uint32_t samplesPerPixel; ///< samples that lie in these bits
    bool inPairs;                  ///< two pixels in three bytes instead of in sequence
    /// What the samples are, row by row, over and over: R, G, B, A, Y, U, V, or W for a panchromatic site.
    std::vector<std::string> cell;

    char component(std::uint32_t x, std::uint32_t y, std::uint32_t sample = 0) const;

    /// Where a sample's bit lies in its row, counted from the lowest bit of the row's first byte.
    std::uint64_t bitPlace(std::uint64_t x, std::uint32_t sample, std::uint32_t bit) const;

    /// Bytes that hold the row's pixels.
    std::uint32_t rowBytes(std::uint32_t width) const { return (width * pixelBits + 7) / 8; }

    /// The sample's value, limited to the format's full scale.
    std::uint32_t value(const std::uint8_t* row, std::uint64_t x, std::uint32_t sample = 0) const;
};

/// All 133 in the order of their rows; the twelve mono ones come first.
const std::vector<PixelFormat>& pixelFormats();
constexpr int MonoFormatCount = 12;

/// A value of `from` bits as one of `to` bits: its bits from the top down, begun again when they are used up.
std::uint32_t depthChanged(std::uint32_t value, std::uint32_t from, std::uint32_t to);

} // namespace reference
