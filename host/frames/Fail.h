#pragma once

#include "host/frames/Frame.h"

namespace zor {

/// Throws the FrameError "PATH: what".
[[noreturn]] inline void failFrame(const std::string& path, const std::string& what)
{
    throw FrameError(path + ": " + what);
}

} // namespace zor
