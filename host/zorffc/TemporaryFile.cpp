#include "host/zorffc/TemporaryFile.h"

#include "host/zorffc/Numbers.h"

#include <cerrno>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zor {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view Prefix = ".zorffc-";
constexpr std::string_view Suffix = ".tmp";

std::string temporaryName(int number)
{
    return std::string(Prefix) + std::to_string(::getpid()) + "-" + std::to_string(number) +
           std::string(Suffix);
}

bool isTemporaryName(std::string_view name)
{
    if (name.size() < Prefix.size() + Suffix.size() || name.substr(0, Prefix.size()) != Prefix ||
        name.substr(name.size() - Suffix.size()) != Suffix)
        return false;
    name.remove_prefix(Prefix.size());
    name.remove_suffix(Suffix.size());
    const std::size_t dash = name.find('-');
    return dash != std::string_view::npos && parseWhole(name.substr(0, dash)) &&
           parseWhole(name.substr(dash + 1));
}

bool isTaken(const fs::path& path)
{
    return ::faccessat(AT_FDCWD, path.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
}

/// Whether the name is still that of the open file, and the file a regular one.
bool isNameOf(const fs::path& path, int descriptor)
{
    struct stat named
    {
    };
    struct stat open
    {
    };
    return ::lstat(path.c_str(), &named) == 0 && ::fstat(descriptor, &open) == 0 && S_ISREG(named.st_mode) &&
           named.st_dev == open.st_dev && named.st_ino == open.st_ino;
}

/// Removes a temporary file whose lock no running process holds. Where there are no locks it stays.
void sweep(const fs::path& path)
{
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return;
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && isNameOf(path, descriptor))
        ::unlink(path.c_str());
    ::close(descriptor);
}

void sweepFolder(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (isTemporaryName(entry->path().filename().native()))
            sweep(entry->path());
    }
}

/// The way by which a file without a name gets one.
std::string descriptorPath(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

void closeQuietly(int& descriptor)
{
    const int error = errno;
    ::close(std::exchange(descriptor, -1));
    errno = error;
}

} // namespace

TemporaryFile::TemporaryFile(const fs::path& folder)
    : m_folder(folder)
{
    sweepFolder(folder);
    if (!makeWithoutName())
        makeWithName();
}

TemporaryFile::~TemporaryFile()
{
    // The name goes before the lock, which keeps other runs from sweeping the file.
    if (!m_name.empty())
        ::unlink(m_name.c_str());
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool TemporaryFile::makeWithoutName()
{
    m_descriptor = ::open(m_folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (m_descriptor < 0)
        return false;
    if (::access(descriptorPath(m_descriptor).c_str(), F_OK) != 0) {
        closeQuietly(m_descriptor);
        return false;
    }
    ::flock(m_descriptor, LOCK_EX | LOCK_NB);
    return true;
}

bool TemporaryFile::makeWithName()
{
    return takeFreeName([this](const fs::path& name) {
        m_descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_descriptor < 0)
            return false;
        const bool isSwept = ::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        if (!isSwept && isNameOf(name, m_descriptor))
            return true;
        // Another run removed it before it was locked, as what a killed one had left.
        closeQuietly(m_descriptor);
        ::unlink(name.c_str());
        errno = EEXIST;
        return false;
    });
}

bool TemporaryFile::link()
{
    return takeFreeName([this](const fs::path& name) {
        return ::linkat(AT_FDCWD, descriptorPath(m_descriptor).c_str(), AT_FDCWD, name.c_str(),
                        AT_SYMLINK_FOLLOW) == 0;
    });
}

/// Tries one free name after the other until `make` succeeds or fails for another reason than that somebody
/// else has taken the name meanwhile. The name is guarded from its first moment on.
template <typename Make> bool TemporaryFile::takeFreeName(Make make)
{
    constexpr int attempts = 100;
    for (int number = 0; number < attempts; ++number) {
        const fs::path name = m_folder / temporaryName(number);
        if (isTaken(name))
            continue;
        m_guard.emplace(name);
        if (make(name)) {
            m_name = name;
            return true;
        }
        const int error = errno;
        m_guard.reset();
        errno = error;
        if (error != EEXIST)
            return false;
    }
    errno = EEXIST;
    return false;
}

bool TemporaryFile::replace(const fs::path& target)
{
    if (m_name.empty() && !link())
        return false;
    if (::rename(m_name.c_str(), target.c_str()) != 0)
        return false;
    m_name.clear();
    m_guard.reset();
    return true;
}

} // namespace zor
