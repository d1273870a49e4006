#pragma once

#include "host/zorffc/Numbers.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zor {

/// Options whose numbers read the same in every locale. Each stores into its target and refuses what does not
/// fit with a text that says what does. The targets must outlive the parsing.

/// A finite number between two whole ones, both included.
CLI::Option* addReal(CLI::App& app, const std::string& name, double& target, std::int64_t least,
                     std::int64_t most, const std::string& help);

/// A finite number above 0, "V" in the help.
CLI::Option* addFactor(CLI::App& app, const std::string& name, double& target, const std::string& help);

CLI::Option* addWhole(CLI::App& app, const std::string& name, std::optional<std::uint64_t>& target,
                      const std::string& help);

/// An option without a value: "--mean=false" is refused.
CLI::Option* addFlag(CLI::App& app, const std::string& name, bool& target, const std::string& help);

CLI::Option* addChoice(CLI::App& app, const std::string& name, std::uint32_t& target,
                       const std::vector<std::uint32_t>& choices, const std::string& help);

CLI::Option* addSize(CLI::App& app, const std::string& name, FrameSize& target, const std::string& help);

/// `--packed-order wire|record`: where a `Packed` format has the even pixel's low bits. `help` is what comes
/// before the two words' meaning.
CLI::Option* addPackedOrder(CLI::App& app, std::string& target, const std::string& help);

/// `--precision 8|12`: fraction bits of a coefficient file.
CLI::Option* addPrecision(CLI::App& app, std::uint32_t& target);

} // namespace zor
