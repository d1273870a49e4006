#pragma once

#include "host/frames/Frame.h"
#include "host/quality/MonoFrame.h"
#include "host/zorffc/Numbers.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace zor {

/// The arguments that say which frame a command reads, and how.
struct FrameArguments
{
    std::string path;
    std::uint32_t depth = 0;           ///< 0: as the file says
    bool hasDepthOption = false;       ///< the command has `--depth` for the frame
    std::optional<std::string> format; ///< nothing: the file has a header of its own
    FrameSize size;
    std::optional<std::uint64_t> pitch;
    std::string packedOrder = "wire";
    std::optional<std::string> whiteIsZero; ///< "stored" or "inverted"
};

/// Adds FRAME, the options of a raw dump and `--white-is-zero` to a command, and gives `--format`.
/// `arguments` must outlive the parsing.
CLI::Option* addDumpArguments(CLI::App& command, FrameArguments& arguments);

/// The same and `--depth`, which overrides the depth that a file with a header states.
void addFrameArguments(CLI::App& command, FrameArguments& arguments);

/// Reads the frame. Throws FrameError or CommandError.
Frame readFrame(const FrameArguments& arguments);

/// The frame that was read, in the form that gains are computed on: of the depth that is asked for, or of
/// that which belongs to the frame's own. Throws CommandError that names the file.
MonoFrame convertFrame(const FrameArguments& arguments, const Frame& frame,
                       std::optional<std::uint32_t> depth = {});

} // namespace zor
