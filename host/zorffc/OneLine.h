#pragma once

#include <string>

namespace zor {

/// The text with a blank in place of each control character, which file names may hold: line breaks, the
/// other codes below 32, DEL, and U+0080 to U+009F, which terminals obey too. Bytes that are no UTF-8 become
/// U+FFFD.
std::string oneLine(const std::string& text);

} // namespace zor
