#pragma once

#include "platform/viewer/CommandTable.h"

namespace zorview {
/// The commands of CommandTable.h that show and hide rectangles. False is a refusal.

/// `objectID`, `rect.x`, `rect.y`, `rect.w`, `rect.h` in `cs` ("img" when absent); a rectangle of the same
/// `objectID` is replaced. `line.clr` (red in the low byte), `line.width` (device pixels) and `adjust` may be
/// absent.
bool addRectCommand(CommandContext context, ParameterMap& parameters);
/// The one named by `objectID`.
bool deleteOverlayCommand(CommandContext context, ParameterMap& parameters);
} // namespace zorview
