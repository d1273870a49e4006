#pragma once

namespace zor::viewer {
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
} // namespace zor::viewer
