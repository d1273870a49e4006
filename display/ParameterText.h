#pragma once

#include "display/ParameterMap.h"

#include <cstdint>
#include <string>

/// The text formats of the command channel. Writers answer false and do nothing when the map or the key is
/// null. Readers give 0, null or the empty text then, as for an absent key, and never add a key.

/// Base-10 text, with a minus sign for negatives.
std::string textFromInt(std::int32_t value);

/// The value through a printf format for one double; null means "%f". The decimal point is a point in every
/// locale. At most 255 characters.
std::string textFromDouble(double value, const char* format = nullptr);

/// Decimal text of the packed colour: red in the low byte, then green, then blue.
std::string textFromColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

/// "%p" text of an address. Both ends live in one process; the text means nothing outside it.
std::string textFromPointer(const void* pointer);

bool paramSetInt(ParameterMap* map, const char* key, std::int32_t value);

/// See textFromDouble.
bool paramSetDouble(ParameterMap* map, const char* key, double value, const char* format = nullptr);

/// Copies the text; a null value stores the empty text.
bool paramSetText(ParameterMap* map, const char* key, const char* value);

/// The leading decimal integer of the value, 0 where there is none. Numbers beyond 32 bits saturate.
std::int32_t paramInt(const ParameterMap* map, const char* key);

std::string paramText(const ParameterMap* map, const char* key);

/// Reads what textFromPointer wrote.
void* paramPointer(const ParameterMap* map, const char* key);

namespace zor {

/// As paramInt, but by indexing: an absent key is added to the map with an empty value.
std::int32_t paramIndexedInt(ParameterMap& map, const char* key);

} // namespace zor
