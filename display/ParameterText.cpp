#include "display/ParameterText.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale.h>

namespace {

constexpr std::size_t IntTextSize = 16;
constexpr std::size_t TextSize = 256;

/// Numbers in the "C" locale for this thread alone, whatever the host has set for the process.
class PointNumbers
{
public:
    PointNumbers()
        : previous(uselocale(numbers()))
    {
    }
    ~PointNumbers() { uselocale(previous); }
    PointNumbers(const PointNumbers&) = delete;
    PointNumbers& operator=(const PointNumbers&) = delete;

private:
    static locale_t numbers()
    {
        static const locale_t plain = newlocale(LC_NUMERIC_MASK, "C", nullptr);
        return plain;
    }

    locale_t previous;
};

std::int32_t leadingInt(const std::string& text)
{
    const long long value = std::strtoll(text.c_str(), nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long long>(value, std::numeric_limits<std::int32_t>::min(),
                                                           std::numeric_limits<std::int32_t>::max()));
}

const std::string* valueOf(const ParameterMap* map, const char* key)
{
    if (!map || !key)
        return nullptr;
    const auto entry = map->find(key);
    return entry == map->end() ? nullptr : &entry->second;
}

} // namespace

std::string textFromInt(std::int32_t value)
{
    char text[IntTextSize] = {};
    std::snprintf(text, sizeof text, "%d", static_cast<int>(value));
    return text;
}

std::string textFromDouble(double value, const char* format)
{
    const PointNumbers numbers;
    char text[TextSize] = {};
    std::snprintf(text, sizeof text, format ? format : "%f", value);
    return text;
}

std::string textFromColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    char text[TextSize] = {};
    std::snprintf(text, sizeof text, "%d", red | green << 8 | blue << 16);
    return text;
}

std::string textFromPointer(const void* pointer)
{
    char text[TextSize] = {};
    std::snprintf(text, sizeof text, "%p", pointer);
    return text;
}

bool paramSetInt(ParameterMap* map, const char* key, std::int32_t value)
{
    return paramSetText(map, key, textFromInt(value).c_str());
}

bool paramSetDouble(ParameterMap* map, const char* key, double value, const char* format)
{
    return paramSetText(map, key, textFromDouble(value, format).c_str());
}

bool paramSetText(ParameterMap* map, const char* key, const char* value)
{
    if (!map || !key)
        return false;
    (*map)[key] = value ? value : "";
    return true;
}

std::int32_t paramInt(const ParameterMap* map, const char* key)
{
    const std::string* value = valueOf(map, key);
    return value ? leadingInt(*value) : 0;
}

std::string paramText(const ParameterMap* map, const char* key)
{
    const std::string* value = valueOf(map, key);
    return value ? *value : std::string();
}

void* paramPointer(const ParameterMap* map, const char* key)
{
    void* pointer = nullptr;
    std::sscanf(paramText(map, key).c_str(), "%p", &pointer);
    return pointer;
}

std::int32_t zor::paramIndexedInt(ParameterMap& map, const char* key)
{
    return leadingInt(map[key]);
}
