#pragma once

#include <cstdint>
#include <list>
#include <string>

namespace zor {

/// Lines 1 to 5 of a coefficient file, in front of the title.
extern const char* const FfcPreamble;

/// Lines 9 and 10 of a coefficient file, behind the date.
extern const char* const FfcTableHeading;

/// The two tables of a coefficient file, from the first column entry to the last row entry: "n,value" lines,
/// n from 1, the two row heading lines in between. Number and order of the lines come from the lists alone.
/// Every line ends in '\n'.
std::string ffcTables(const std::list<double>& columnGains, const std::list<double>& rowGains,
                      std::uint8_t fractionBits);

} // namespace zor
