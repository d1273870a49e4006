#include "engine/FfcText.h"

#include "engine/Coefficient.h"

#include <cstddef>

namespace zor {
namespace {

std::string twoDigits(int number)
{
    return std::to_string(number / 10) + std::to_string(number % 10);
}

const char* const RowHeading = ":FFC_Y start,\n"
                               "-- Row(Y),HEX Value\n";

void appendTable(std::string& text, const std::list<double>& gains, std::uint8_t fractionBits)
{
    std::size_t number = 0;
    for (const double gain : gains) {
        text += std::to_string(++number);
        text += ',';
        text += std::to_string(EncodeCoefficient(gain, fractionBits));
        text += '\n';
    }
}

} // namespace

const char* const FfcPreamble = "-- Flat Field Correction input file example,\n"
                                "-- lines beginning with two dashes are comments,\n"
                                "-- and are ignored by parser,\n"
                                ":Header,\n"
                                "-- this is the text that will get displayed with a 'gfh' command,\n";

const char* const FfcTableHeading = ":Table,\n"
                                    "-- Column(X),HEX Value\n";

std::string ffcDate(int year, int month, int day)
{
    return std::to_string(month) + '/' + twoDigits(day) + '/' + twoDigits(year % 100);
}

std::string ffcTables(const std::list<double>& columnGains, const std::list<double>& rowGains,
                      std::uint8_t fractionBits)
{
    std::string text;
    appendTable(text, columnGains, fractionBits);
    text += RowHeading;
    appendTable(text, rowGains, fractionBits);
    return text;
}

} // namespace zor
