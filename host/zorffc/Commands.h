#pragma once

#include <CLI/CLI.hpp>

namespace zor {

/// Each adds one command, whose work runs at the end of the parsing and throws what ends it early:
/// CommandError, FrameError or another standard exception.

/// `compute`: from a frame to a coefficient file.
void addComputeCommand(CLI::App& app);

/// `report`: a picture of a frame before and after the correction.
void addReportCommand(CLI::App& app);

/// `convert`: a frame as a grey picture file.
void addConvertCommand(CLI::App& app);

/// `formats`: the table of the pixel formats.
void addFormatsCommand(CLI::App& app);

/// `simulate`: makes a flat frame.
void addSimulateCommand(CLI::App& app);

} // namespace zor
