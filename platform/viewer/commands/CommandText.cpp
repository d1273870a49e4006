#include "platform/viewer/commands/CommandText.h"

#include <QByteArray>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace zor::viewer {
std::string textOf(const ParameterMap& map, const char* key)
{
    const auto found = map.find(key);
    return found == map.end() ? std::string() : found->second;
}

std::optional<int> intOf(const ParameterMap& map, const char* key)
{
    bool ok = false;
    const int value = QByteArray::fromStdString(textOf(map, key)).toInt(&ok);
    return ok ? std::optional<int>(value) : std::nullopt;
}

// QByteArray reads numbers in the C locale whatever the program's locale is.
std::optional<double> realOf(const ParameterMap& map, const char* key)
{
    bool ok = false;
    const double value = QByteArray::fromStdString(textOf(map, key)).toDouble(&ok);
    return ok && std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

void* pointerFromText(const std::string& text)
{
    constexpr std::size_t Prefix = 2;
    constexpr std::size_t MostDigits = 2 * sizeof(std::uintptr_t);
    if (text.compare(0, Prefix, "0x") != 0 || text.size() == Prefix || text.size() > Prefix + MostDigits)
        return nullptr;
    std::uintptr_t address = 0;
    const char* end = text.data() + text.size();
    const std::from_chars_result read = std::from_chars(text.data() + Prefix, end, address, 16);
    return read.ec == std::errc() && read.ptr == end ? reinterpret_cast<void*>(address) : nullptr;
}

std::string textFromAddress(const void* address)
{
    char text[64] = {};
    std::snprintf(text, sizeof text, "%p", address);
    return text;
}
} // namespace zor::viewer
