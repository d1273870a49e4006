#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zor {

/// A finite number with a decimal point, whatever the locale; nothing for any other text.
std::optional<double> parseReal(std::string_view text);

/// A whole number in decimal digits; nothing for any other text or one that does not fit.
std::optional<std::uint64_t> parseWhole(std::string_view text);

/// A signed 32-bit number in decimal digits; nothing for any other text or one that does not fit.
std::optional<std::int32_t> parseEntry(std::string_view text);

/// Width and height in pixels.
struct FrameSize
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// "1392x1040": both sides from 1 to MaxFrameSide; nothing for any other text.
std::optional<FrameSize> parseSize(std::string_view text);

} // namespace zor
