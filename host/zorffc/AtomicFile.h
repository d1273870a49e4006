#pragma once

#include "host/zorffc/TemporaryFile.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>

namespace zor {

/// A file that appears whole or not at all. The content goes into a temporary file in the target's folder,
/// commit() renames it over the target; without commit() the temporary file is gone, also when a signal ends
/// the process, and the target is as it was. A symbolic link stays and the file that it points to is
/// replaced. An existing target's permissions are kept, and its owner and group where the process may do so.
/// Everything throws CommandError.
class AtomicFile
{
public:
    /// Refuses a folder, a device, a target that may not be written, and a folder that does not exist. Writes
    /// nothing yet.
    explicit AtomicFile(const std::string& path);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Writes the whole content to the temporary file. To be called once, before commit().
    void write(std::string_view bytes);
    void commit();

private:
    void open();
    [[noreturn]] void fail(const std::string& problem) const;

    std::string m_name;                    ///< as the user wrote it, for messages
    std::filesystem::path m_target;        ///< with all links followed
    std::filesystem::path m_folder;        ///< of the target
    std::optional<struct stat> m_existing; ///< what the target is now, if anything
    std::optional<TemporaryFile> m_file;
};

/// Refuses an output that is the very file which the command reads.
void refuseSameFile(const std::string& input, const std::string& output);

/// The one of the endings (".png", ".tif") that the output's name has, in small or capital letters. Throws
/// CommandError when it has none of them, or is a link to a file that has another; the text names the
/// `option` by which the output is given.
std::string requireEnding(const std::string& output, const std::vector<std::string>& endings,
                          const std::string& option = "--output");

} // namespace zor
