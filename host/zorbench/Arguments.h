#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zor {

/// What the program was started with. Names are absolute, because the working directory changes later.
struct Arguments
{
    std::vector<std::string> frames; ///< files that exist and are not empty
    std::string plugInFolder;        ///< empty: that of the installation
    /// Names of the interfaces that cameras are looked for on, with commas.
    std::string cameraInterfaces = "gige,usb";
    /// Set when the program ends at once: help, version or an error was printed.
    std::optional<int> exitCode;
};

/// Reads the command line. Help and version go to standard output, an error to standard error as one line.
/// Needs no application.
Arguments parseArguments(int argc, char** argv);

} // namespace zor
