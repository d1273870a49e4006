#pragma once

#include <cstddef>
#include <string>

namespace zor {

/// A number with so many significant digits, without zeros at their end, a decimal point in every locale;
/// very large and small ones with an exponent, "4.095e-06".
std::string significantText(double value, int digits);

/// A number with a fixed count of decimals, a decimal point in every locale, "inf", "-inf" or "nan".
std::string fixedText(double value, int decimals);

/// "1 column", "3 columns": a noun that takes an s.
std::string countText(std::ptrdiff_t count, const std::string& noun);

} // namespace zor
