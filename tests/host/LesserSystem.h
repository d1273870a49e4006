#pragma once

#include <cstddef>
#include <functional>

/// What the system calls of a program that is linked with their wrappers do. A fresh object is a system that
/// has everything.
struct LesserSystem
{
    bool hasUnnamedFiles = true;
    bool hasProc = true;
    bool mayWrite = true; ///< files that exist may be written: root may write them all
    int lockError = 0;    ///< errno of flock(), 0: it works
    int linkError = 0;
    int renameError = 0;
    int syncError = 0;
    std::size_t longestWrite = 0; ///< bytes that one write() takes, every other one is interrupted; 0: all
    std::function<void()> beforeMake; ///< of a file with a name
    std::function<void()> beforeLock;
    std::function<void()> beforeRename;
};

/// The one system of the process.
LesserSystem& lesserSystem();
