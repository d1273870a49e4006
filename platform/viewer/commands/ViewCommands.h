#pragma once

#include "display/ParameterMap.h"
#include "platform/viewer/commands/CommandContext.h"

namespace zor::viewer {
/// The commands that ask or set where the view looks. False is a refusal.

bool rebuildCommand(CommandContext context, ParameterMap& parameters);
bool zoomInCommand(CommandContext context, ParameterMap& parameters);
bool zoomOutCommand(CommandContext context, ParameterMap& parameters);
/// `mode` 1 whole image, 2 its width, 3 its height.
bool fitCommand(CommandContext context, ParameterMap& parameters);
/// `pos.x`, `pos.y` in `cs`: "base" (also when absent), "img" or "win".
bool viewAtCommand(CommandContext context, ParameterMap& parameters);
/// `scale` above 0, cut to the limits.
bool viewScaleCommand(CommandContext context, ParameterMap& parameters);
/// Rewrites `pos.x` and `pos.y` from `cs.src` to `cs.dst`; `result` says whether the point is on the image.
bool translateCommand(CommandContext context, ParameterMap& parameters);
/// Returns the visible rectangle in `pos.x`, `pos.y`, `dim.w`, `dim.h`.
bool viewImageCommand(CommandContext context, ParameterMap& parameters);
} // namespace zor::viewer
