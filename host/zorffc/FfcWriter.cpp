#include "host/zorffc/FfcFile.h"

#include "engine/FfcText.h"
#include "host/zorffc/CommandError.h"

#include <ctime>

namespace zor {

namespace {

/// Of Unicode's two ranges; the text is UTF-8, which writes the upper one with the byte C2 before it.
bool holdsControlCharacter(const std::string& text)
{
    unsigned char before = 0;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F || (before == 0xC2 && code >= 0x80 && code < 0xA0))
            return true;
        before = code;
    }
    return false;
}

} // namespace

std::string ffcFileText(const std::string& title, const std::string& camera, const std::string& date,
                        const std::list<double>& columnGains, const std::list<double>& rowGains,
                        std::uint8_t fractionBits)
{
    return FfcPreamble + title + ",\n" + camera + ",\n" + "date " + date + ",\n" + FfcTableHeading +
           ffcTables(columnGains, rowGains, fractionBits);
}

std::string currentFfcDate()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return ffcDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}

void checkHeaderText(const std::string& option, const std::string& text)
{
    if (text.empty())
        throw CommandError(option + ": the text is empty; the file's header needs one");
    if (holdsControlCharacter(text))
        throw CommandError(option +
                           ": the text holds a line break or another control character; give one plain line");
    if (text.rfind("--", 0) == 0 || text[0] == ':')
        throw CommandError(option +
                           ": the text begins with \"--\" or \":\", which begin a comment or a section "
                           "in the file; begin it otherwise");
}

} // namespace zor
