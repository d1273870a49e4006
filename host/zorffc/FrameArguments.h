#pragma once

#include "host/frames/Frame.h"
#include "host/quality/MonoFrame.h"
#include "host/zorffc/Numbers.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace zor {

/// The arguments by which every command that reads a frame is told which and how.
struct FrameArguments
{
    std::string path;
    std::uint32_t depth = 0;           ///< 0: as the file says
    std::optional<std::string> format; ///< nothing: the file has a header of its own
    FrameSize size;
    std::optional<std::uint64_t> pitch;
    std::string packedOrder = "wire";
};

/// Adds FRAME and its options to a command. `arguments` must outlive the parsing.
void addFrameArguments(CLI::App& command, FrameArguments& arguments);

/// Reads the frame. Throws FrameError or CommandError.
Frame readFrame(const FrameArguments& arguments);

/// The frame that was read, in the form that gains are computed on. Throws CommandError that names the file.
MonoFrame convertFrame(const FrameArguments& arguments, const Frame& frame);

} // namespace zor
