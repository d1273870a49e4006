#include "platform/viewer/commands/CommandTable.h"

#include "platform/viewer/commands/OverlayCommands.h"
#include "platform/viewer/commands/SystemCommands.h"
#include "platform/viewer/commands/ViewCommands.h"

#include <map>
#include <string>

namespace zor::viewer {
namespace {
using Handler = bool (*)(CommandContext, ParameterMap&);

const std::map<std::string, Handler>& handlers()
{
    static const std::map<std::string, Handler> table = {
        {"cmd.parameter.set", setParameterCommand},
        {"cmd.system.notification.add", addNotificationCommand},
        {"cmd.display.view.nofication", viewNotificationCommand},
        {"cmd.image.rebuild", rebuildCommand},
        {"cmd.display.view.zoom.in", zoomInCommand},
        {"cmd.display.view.zoom.out", zoomOutCommand},
        {"cmd.display.view.fit", fitCommand},
        {"cmd.display.view.at", viewAtCommand},
        {"cmd.display.view.scale", viewScaleCommand},
        {"cmd.display.view.translate", translateCommand},
        {"cmd.display.view.image", viewImageCommand},
        {"cmd.display.overlay.rect.add", addRectCommand},
        {"cmd.display.overlay.del", deleteOverlayCommand},
        {"cmd.system.menu.create", createMenuCommand},
        {"cmd.system.menu.exec", execMenuCommand},
        {"cmd.system.menu.delete", deleteMenuCommand},
    };
    return table;
}
} // namespace

// A command without a map is one with an empty map: those that need parameters find none, and what is
// returned goes nowhere.
std::int32_t runCommand(CommandContext context, const char* name, ParameterMap* parameters)
{
    if (!name)
        return 0;
    const auto found = handlers().find(name);
    if (found == handlers().end())
        return 0;
    ParameterMap none;
    return found->second(context, parameters ? *parameters : none) ? 1 : 0;
}
} // namespace zor::viewer
