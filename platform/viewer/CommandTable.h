#pragma once

#include "display/ParameterMap.h"

#include <cstdint>

namespace zorview {
class Viewer;
class ViewerMenu;
class ViewerSettings;

/// What a command may work on.
struct CommandContext
{
    Viewer& viewer;
    ViewerSettings& settings;
    ViewerMenu& menu;
};

/// Runs a command by its name: 1 for success, 0 for an unknown name, a missing or unreadable parameter, or a
/// viewer that cannot do it now. A refused command changes nothing.
std::int32_t runCommand(CommandContext context, const char* name, ParameterMap* parameters);
} // namespace zorview
