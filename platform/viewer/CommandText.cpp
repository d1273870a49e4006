#include "platform/viewer/CommandText.h"

#include <QByteArray>

#include <cmath>
#include <cstdio>

namespace zorview {
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
    void* address = nullptr;
    return std::sscanf(text.c_str(), "%p", &address) == 1 ? address : nullptr;
}

std::string textFromAddress(const void* address)
{
    char text[64] = {};
    std::snprintf(text, sizeof text, "%p", address);
    return text;
}
} // namespace zorview
