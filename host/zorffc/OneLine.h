#pragma once

#include <string>

namespace zor {

/// The text with blanks in place of line breaks and other control characters, which file names may hold.
inline std::string oneLine(std::string text)
{
    for (char& character : text)
        if (static_cast<unsigned char>(character) < 0x20)
            character = ' ';
    return text;
}

} // namespace zor
