#pragma once

#include "host/frames/Frame.h"
#include "host/quality/MonoFrame.h"
#include "host/quality/NonUniformity.h"

#include <cstdint>
#include <list>
#include <string>
#include <vector>

namespace zor {

/// Lines of a command's summary, each with its line end.

/// Size and format: what the file held, where its depth comes from and what it was brought to.
std::string frameSummary(const Frame& frame, const MonoFrame& mono);

/// "1.0000 to 1.3021"; entries that are no number are counted and not ranged.
std::string gainRange(const std::list<double>& gains);

/// The range of the gains that the entries of a file's table hold, which are those that a camera
/// applies.
std::string fileGainRange(const std::vector<std::int32_t>& table, std::uint32_t fractionBits);

/// A small table of both figures before and after the correction.
std::string nonUniformitySummary(const NonUniformity& before, const NonUniformity& after);

/// A percentage with four decimals, or "nan" without one.
std::string percentText(double percent);

/// Writes a summary to standard output and sees it through; throws CommandError when that fails.
void printSummary(const std::string& text);

/// Writes a line "zorffc: warning: FILE: ..." for each warning to standard error.
void printWarnings(const std::string& file, const std::vector<std::string>& warnings);

} // namespace zor
