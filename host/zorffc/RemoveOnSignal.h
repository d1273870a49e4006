#pragma once

#include <string>

namespace zor {

/// Removes a file when the process is asked to end (SIGINT, SIGTERM, SIGHUP) while this object lives; the
/// process then ends by that signal. A signal that is ignored stays so. One object at a time; a path of 4096
/// bytes or more is left to its owner.
class RemoveOnSignal
{
public:
    explicit RemoveOnSignal(const std::string& path);
    RemoveOnSignal(const RemoveOnSignal&) = delete;
    RemoveOnSignal& operator=(const RemoveOnSignal&) = delete;
    ~RemoveOnSignal();
};

} // namespace zor
