#include "host/zorffc/Numbers.h"

#include "host/frames/FrameLimits.h"

#include <charconv>
#include <cmath>

namespace zor {

namespace {

template <typename Number> std::optional<Number> parseAll(std::string_view text)
{
    Number value{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<double> parseReal(std::string_view text)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    const std::optional<double> value = parseAll<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<std::uint64_t> parseWhole(std::string_view text)
{
    return parseAll<std::uint64_t>(text);
}

std::optional<std::int32_t> parseEntry(std::string_view text)
{
    return parseAll<std::int32_t>(text);
}

std::optional<FrameSize> parseSize(std::string_view text)
{
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos)
        return std::nullopt;
    const auto width = parseWhole(text.substr(0, cross));
    const auto height = parseWhole(text.substr(cross + 1));
    if (!width || !height || *width < 1 || *height < 1 || *width > MaxFrameSide || *height > MaxFrameSide)
        return std::nullopt;
    return FrameSize{static_cast<std::uint32_t>(*width), static_cast<std::uint32_t>(*height)};
}

} // namespace zor
