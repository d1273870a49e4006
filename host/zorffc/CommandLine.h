#pragma once

namespace zor {

/// How a command ends.
enum ExitCode
{
    ExitDone = 0,
    ExitBadUse = 2 ///< wrong use, bad input or output
};

/// Runs the command line; the result is the process's exit code. Errors go to standard error as one line.
int runCommandLine(int argc, char** argv);

} // namespace zor
