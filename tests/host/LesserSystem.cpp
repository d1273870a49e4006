#include "tests/host/LesserSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

LesserSystem& lesserSystem()
{
    static LesserSystem system;
    return system;
}

namespace {

/// The system call's answer, or -1 with the error when it is not 0.
template <typename Call> auto answer(int error, Call call) -> decltype(call())
{
    if (error == 0)
        return call();
    errno = error;
    return -1;
}

void happen(std::function<void()>& event)
{
    if (const auto once = std::exchange(event, {}))
        once();
}

} // namespace

extern "C" {

int __real_open(const char* path, int flags, mode_t mode);
int __real_access(const char* path, int mode);
int __real_flock(int descriptor, int operation);
int __real_linkat(int oldFolder, const char* oldPath, int newFolder, const char* newPath, int flags);
int __real_rename(const char* oldPath, const char* newPath);
int __real_fsync(int descriptor);
ssize_t __real_write(int descriptor, const void* bytes, std::size_t count);

int __wrap_open(const char* path, int flags, ...)
{
    const bool unnamed = (flags & O_TMPFILE) == O_TMPFILE;
    mode_t mode = 0;
    if (unnamed || (flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    if (!unnamed && (flags & O_CREAT) != 0)
        happen(lesserSystem().beforeMake);
    const bool refused = unnamed && !lesserSystem().hasUnnamedFiles;
    return answer(refused ? EOPNOTSUPP : 0, [&] { return __real_open(path, flags, mode); });
}

int __wrap_access(const char* path, int mode)
{
    int error = std::strncmp(path, "/proc/", 6) == 0 && !lesserSystem().hasProc ? ENOENT : 0;
    if (mode == W_OK && !lesserSystem().mayWrite)
        error = EACCES;
    return answer(error, [&] { return __real_access(path, mode); });
}

int __wrap_flock(int descriptor, int operation)
{
    happen(lesserSystem().beforeLock);
    return answer(lesserSystem().lockError, [&] { return __real_flock(descriptor, operation); });
}

int __wrap_linkat(int oldFolder, const char* oldPath, int newFolder, const char* newPath, int flags)
{
    return answer(lesserSystem().linkError,
                  [&] { return __real_linkat(oldFolder, oldPath, newFolder, newPath, flags); });
}

int __wrap_rename(const char* oldPath, const char* newPath)
{
    happen(lesserSystem().beforeRename);
    return answer(lesserSystem().renameError, [&] { return __real_rename(oldPath, newPath); });
}

int __wrap_fsync(int descriptor)
{
    return answer(lesserSystem().syncError, [&] { return __real_fsync(descriptor); });
}

ssize_t __wrap_write(int descriptor, const void* bytes, std::size_t count)
{
    static bool interrupted = false;
    const std::size_t longest = lesserSystem().longestWrite;
    if (longest == 0)
        return __real_write(descriptor, bytes, count);
    interrupted = !interrupted;
    return answer(interrupted ? EINTR : 0,
                  [&] { return __real_write(descriptor, bytes, std::min(count, longest)); });
}
}
