#pragma once

#include "host/zorffc/RemoveOnSignal.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace zor {

/// A file that appears whole or not at all. The content goes into a temporary file in the target's folder,
/// commit() renames it over the target; without commit() the temporary file is removed, also when a signal
/// ends the process, and the target is as it was. A symbolic link stays and the file that it points to is
/// replaced; an existing target's permissions are kept. Everything throws CommandError.
class AtomicFile
{
public:
    /// Refuses a folder, a device, a target that may not be written, and a folder that does not exist. Writes
    /// nothing yet.
    explicit AtomicFile(const std::string& path);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    /// Writes the whole content to the temporary file. To be called once, before commit().
    void write(std::string_view bytes);
    void commit();

private:
    void open();
    [[noreturn]] void fail(const std::string& problem) const;

    std::string m_name;             ///< as the user wrote it, for messages
    std::filesystem::path m_target; ///< behind all links
    std::filesystem::path m_folder; ///< of the target
    std::filesystem::path m_temporary;
    std::optional<RemoveOnSignal> m_guard;
    std::optional<mode_t> m_permissions; ///< of an existing target
    int m_descriptor = -1;
};

/// Refuses an output that is the very file which the command reads.
void refuseSameFile(const std::string& input, const std::string& output);

/// The one of the endings (".png", ".tif") that the output's name has, in small or capital letters. Throws
/// CommandError when it has none of them; the text names the `option` by which the output is given.
std::string requireEnding(const std::string& output, const std::vector<std::string>& endings,
                          const std::string& option = "--output");

} // namespace zor
