#pragma once

#include "display/ParameterMap.h"

#include <optional>
#include <string>

namespace zor::viewer {
/// Strict readers of a command's parameters: the whole text must be the value, and none adds a key. A command
/// that gets nothing from them refuses instead of guessing.

/// The text; empty when the key is absent.
std::string textOf(const ParameterMap& map, const char* key);

/// A decimal 32-bit integer.
std::optional<int> intOf(const ParameterMap& map, const char* key);

/// A finite real number with a decimal point.
std::optional<double> realOf(const ParameterMap& map, const char* key);

/// What printf's "%p" wrote: "0x" and hexadecimal digits, and nothing else; null when it can't be read.
void* pointerFromText(const std::string& text);

std::string textFromAddress(const void* address);
} // namespace zor::viewer
