#pragma once

#include "display/ParameterMap.h"
#include "platform/viewer/commands/CommandContext.h"

namespace zor::viewer {
/// The commands that show and hide rectangles. False is a refusal.

/// `objectID`, `rect.x`, `rect.y`, `rect.w`, `rect.h` in `cs` ("img" when absent); a rectangle of the same
/// `objectID` is replaced. `line.clr` (red in the low byte), `line.width` (device pixels) and `adjust` may be
/// absent.
bool addRectCommand(CommandContext context, ParameterMap& parameters);
/// The one named by `objectID`.
bool deleteOverlayCommand(CommandContext context, ParameterMap& parameters);
} // namespace zor::viewer
