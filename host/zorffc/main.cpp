#include "host/zorffc/CommandLine.h"
#include "host/zorffc/StandardStreams.h"

#include <csignal>

int main(int argc, char** argv)
{
    zor::holdStandardStreams();
    // A reader that closes the pipe early and a limit on file sizes are failed writes like any other, not the
    // end of the process.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    return zor::runCommandLine(argc, argv);
}
