#include "host/zorffc/StandardStreams.h"

#include <cerrno>
#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace zor {

void holdStandardStreams()
{
    // A file that is opened gets the lowest free number, so going upwards fills exactly the gaps.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", O_RDONLY));
    }
}

Delivery writeOutput(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return errno == EPIPE ? Delivery::ReaderGone : Delivery::Failed;
    }
    return Delivery::Whole;
}

} // namespace zor
