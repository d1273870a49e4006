#pragma once

#include "host/zorffc/RemoveOnSignal.h"

#include <filesystem>
#include <optional>

namespace zor {

/// A file in the making. Where the file system has files without a name it has none until replace(), so that
/// nothing is left of it however the process ends. Else, and between the two steps of replace(), it is called
/// ".zorffc-PROCESS-NUMBER.tmp" and is locked; it is removed when this object goes or a signal asks the
/// process to end, and what a killed process leaves is swept by the next run, which finds the lock free.
class TemporaryFile
{
public:
    /// Sweeps the folder and makes the file there. Without success descriptor() is -1 and errno says why.
    explicit TemporaryFile(const std::filesystem::path& folder);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    int descriptor() const { return m_descriptor; }

    /// Puts the file in the place of whatever has the target's name; both are in one folder. Without success
    /// the target is as it was, and errno says why.
    bool replace(const std::filesystem::path& target);

private:
    bool makeWithoutName();
    bool makeWithName();
    bool link();
    template <typename Make> bool takeFreeName(Make make);

    std::filesystem::path m_folder;
    std::filesystem::path m_name; ///< empty: the file has none
    std::optional<RemoveOnSignal> m_guard;
    int m_descriptor = -1;
};

} // namespace zor
