#include "host/quality/NumberText.h"

#include <charconv>
#include <cmath>

namespace zor {

std::string significantText(double value, int digits)
{
    char buffer[64];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
    return std::string(buffer, result.ptr);
}

std::string fixedText(double value, int decimals)
{
    if (std::isnan(value))
        return "nan";
    // The longest double has 309 digits before the point.
    char buffer[400];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    return std::string(buffer, result.ptr);
}

std::string countText(std::ptrdiff_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace zor
