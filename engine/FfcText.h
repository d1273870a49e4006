#pragma once

#include <cstdint>
#include <list>
#include <string>

namespace zor {

/// Lines 1 to 5 of a coefficient file, before the title.
extern const char* const FfcPreamble;

/// Lines 9 and 10 of a coefficient file, after the date.
extern const char* const FfcTableHeading;

/// The date of line 8: month without, day and year with a leading zero, "3/07/26". Latin digits whatever the
/// locale is.
std::string ffcDate(int year, int month, int day);

/// The two tables of a coefficient file, from the first column entry to the last row entry: "n,value" lines,
/// n from 1, the two lines that head the rows in between. Number and order of the lines come from the lists
/// alone. Every line ends in '\n'.
std::string ffcTables(const std::list<double>& columnGains, const std::list<double>& rowGains,
                      std::uint8_t fractionBits);

} // namespace zor
