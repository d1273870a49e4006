#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <vector>

namespace zor {

/// The whole text of a coefficient file. `date` is what currentFfcDate() gives, `fractionBits` 8 or 12.
std::string ffcFileText(const std::string& title, const std::string& camera, const std::string& date,
                        const std::list<double>& columnGains, const std::list<double>& rowGains,
                        std::uint8_t fractionBits);

/// Today in local time, as ffcDate() writes it.
std::string currentFfcDate();

/// A header text must be a single line that is not empty and that no reader takes for a comment or a section.
/// Throws CommandError that names `option`.
void checkHeaderText(const std::string& option, const std::string& text);

/// What a coefficient file holds.
struct FfcFile
{
    std::string title;
    std::string camera;
    std::string date; ///< without the word "date"
    std::vector<std::int32_t> columns;
    std::vector<std::int32_t> rows;
};

/// Reads the text of a coefficient file. Lines that begin with two dashes and empty lines are skipped. Every
/// line ends in a line feed, with or without a carriage return before it. Throws CommandError with `name` and
/// the line's number.
FfcFile parseFfcText(const std::string& name, const std::string& text);

/// Reads a coefficient file. Throws CommandError or FrameError, the latter when there is no regular file.
FfcFile readFfcFile(const std::string& path);

} // namespace zor
