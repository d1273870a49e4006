#include "host/zorffc/StandardStreams.h"

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

} // namespace zor
