#pragma once

#include "display/ParameterMap.h"
#include "platform/viewer/commands/CommandContext.h"

#include <cstdint>

namespace zor::viewer {
/// Runs a command by its name: 1 for success, 0 for an unknown name, a missing or unreadable parameter, or a
/// viewer that cannot do it now. A refused command changes nothing.
std::int32_t runCommand(CommandContext context, const char* name, ParameterMap* parameters);
} // namespace zor::viewer
