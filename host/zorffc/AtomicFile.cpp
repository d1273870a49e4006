#include "host/zorffc/AtomicFile.h"

#include "host/zorffc/CommandError.h"

#include <cerrno>
#include <cstring>

#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zor {

namespace fs = std::filesystem;

namespace {

/// The place that a path leads to through its symbolic links, whether or not something is there; still a link
/// when they lead in a circle.
fs::path behindLinks(fs::path path)
{
    constexpr int longestChain = 40;
    std::error_code error;
    for (int i = 0; i < longestChain && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            break;
        path = path.parent_path() / next;
    }
    return path;
}

/// In small or capital letters, after at least one other.
bool endsIn(const std::string& name, const std::string& ending)
{
    return name.size() > ending.size() &&
           ::strcasecmp(name.c_str() + name.size() - ending.size(), ending.c_str()) == 0;
}

} // namespace

AtomicFile::AtomicFile(const std::string& path)
    : m_name(path)
    , m_target(behindLinks(path))
{
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(m_target, error)))
        fail("is a link that leads to itself; remove it or give another file name");
    m_folder = m_target.has_parent_path() ? m_target.parent_path() : fs::path(".");

    struct stat existing
    {
    };
    const bool exists = ::stat(m_target.c_str(), &existing) == 0;
    if (exists && S_ISDIR(existing.st_mode))
        fail("is a folder; give a file name");
    if (exists && !S_ISREG(existing.st_mode))
        fail("is not a regular file; give another file name");
    if (exists && ::access(m_target.c_str(), W_OK) != 0)
        fail("may not be written; change its permissions or give another file name");

    const fs::file_status folder = fs::status(m_folder, error);
    if (!fs::status_known(folder))
        fail("cannot be written: the folder " + m_folder.string() + " cannot be reached (" + error.message() +
             "); choose another folder");
    if (!fs::is_directory(folder))
        fail("cannot be written: there is no folder " + m_folder.string() + "; make it first");
    if (exists)
        m_existing = existing;
}

void AtomicFile::open()
{
    m_file.emplace(m_folder);
    if (m_file->descriptor() < 0)
        fail("cannot be written: " + std::string(std::strerror(errno)) + "; choose another folder");
    if (!m_existing)
        return;
    // The new file takes the place of the old one, so it belongs to the same user and group, as far as this
    // process may give files away, and is as open to others as that was.
    constexpr auto unchanged = static_cast<uid_t>(-1);
    static_cast<void>(::fchown(m_file->descriptor(), unchanged, m_existing->st_gid));
    static_cast<void>(::fchown(m_file->descriptor(), m_existing->st_uid, unchanged));
    static_cast<void>(::fchmod(m_file->descriptor(), m_existing->st_mode & 07777));
}

void AtomicFile::write(std::string_view bytes)
{
    open();
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_file->descriptor(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            fail("cannot be written: " + std::string(std::strerror(errno)) +
                 "; make room or choose another folder");
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void AtomicFile::commit()
{
    // The content has to be on the disk before its name is, or a power cut could leave an empty target.
    // File systems that cannot sync answer EINVAL or ENOTSUP, and then there is nothing to wait for.
    if (::fsync(m_file->descriptor()) != 0 && errno != EINVAL && errno != ENOTSUP)
        fail("cannot be written: " + std::string(std::strerror(errno)) +
             "; make room or choose another folder");
    if (!m_file->replace(m_target))
        fail("cannot be replaced: " + std::string(std::strerror(errno)) + "; choose another file name");
}

void AtomicFile::fail(const std::string& problem) const
{
    throw CommandError(m_name + ": " + problem);
}

void refuseSameFile(const std::string& input, const std::string& output)
{
    std::error_code error;
    if (fs::equivalent(input, output, error) && !error)
        throw CommandError(output + ": is the file that is read; give the output another name");
}

std::string requireEnding(const std::string& output, const std::vector<std::string>& endings,
                          const std::string& option)
{
    std::string list;
    for (const std::string& ending : endings) {
        if (endsIn(output, ending)) {
            const fs::path target = behindLinks(output);
            if (std::error_code error; fs::is_regular_file(target, error) && !endsIn(target.string(), ending))
                throw CommandError(output + ": leads to " + target.string() +
                                   ", a file of another kind; give " + option + " another name");
            return ending;
        }
        list += (list.empty() ? "" : &ending == &endings.back() ? " or " : ", ") + ending;
    }
    throw CommandError((output.empty() ? option : output) + ": the name does not say the file's kind; give " +
                       option + " a name that ends in " + list);
}

} // namespace zor
