#pragma once

#include <string_view>

namespace zor {

/// Puts something in the place of standard input, output and error where the process was started without
/// them, so that no file which is opened later gets one of their numbers. Nothing can be written to the
/// replacement: an output that leads nowhere stays a failed write. To be called before any file is opened.
void holdStandardStreams();

/// How far a text came on standard output.
enum class Delivery
{
    Whole,
    ReaderGone, ///< whoever read it has seen enough, as `head` has
    Failed
};

/// Writes a text to standard output. SIGPIPE has to be ignored.
Delivery writeOutput(std::string_view text);

} // namespace zor
