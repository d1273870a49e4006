#pragma once

#include "display/ParameterMap.h"
#include "platform/viewer/commands/CommandContext.h"

namespace zor::viewer {
/// The commands that set up the viewer and run its menu. False is a refusal.

/// `name`, `value`: "image.notification.flags.set" takes the image flags, "canvas.tile.edge" the edge of the
/// GPU canvas's tiles; any other name is kept among the settings.
bool setParameterCommand(CommandContext context, ParameterMap& parameters);
/// `proc`: the address of a ZorDisplayCommand.
bool addNotificationCommand(CommandContext context, ParameterMap& parameters);
/// `flags`: 1 view changes, 2 mouse buttons, 4 mouse moves.
bool viewNotificationCommand(CommandContext context, ParameterMap& parameters);

/// Returns `qmenu` and `qmenuWidget`; the menu is made at the first call. False without a widget.
bool createMenuCommand(CommandContext context, ParameterMap& parameters);
/// Returns when the menu has closed; what was chosen is done after that, by the event loop. False without a
/// menu and, at once, while it is open.
bool execMenuCommand(CommandContext context, ParameterMap& parameters);
/// Empties `qmenu` and `qmenuWidget` where the map holds them. False without a menu.
bool deleteMenuCommand(CommandContext context, ParameterMap& parameters);
} // namespace zor::viewer
