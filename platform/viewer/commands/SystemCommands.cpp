#include "platform/viewer/commands/SystemCommands.h"

#include "platform/viewer/Viewer.h"
#include "platform/viewer/commands/CommandText.h"
#include "platform/viewer/commands/ViewerSettings.h"
#include "platform/viewer/paint/Canvas.h"
#include "platform/viewer/view/ViewerMenu.h"

#include <QMenu>

class ZorDisplayCommand;

namespace zor::viewer {
namespace {
constexpr int LeastTileEdge = 8;

bool setTileEdge(Viewer& viewer, std::optional<int> edge)
{
    if (!edge || *edge < LeastTileEdge || !viewer.canvas())
        return false;
    viewer.canvas()->setTileEdge(*edge);
    return true;
}
} // namespace

bool setParameterCommand(CommandContext context, ParameterMap& parameters)
{
    const std::string name = textOf(parameters, "name");
    if (name.empty() || parameters.count("value") == 0)
        return false;
    if (name == "image.notification.flags.set") {
        const std::optional<int> flags = intOf(parameters, "value");
        if (!flags || *flags < 0)
            return false;
        context.viewer.hub().setImageFlags(*flags);
    } else if (name == "canvas.tile.edge" && !setTileEdge(context.viewer, intOf(parameters, "value"))) {
        return false;
    }
    context.settings.setText(name.c_str(), textOf(parameters, "value").c_str());
    return true;
}

bool addNotificationCommand(CommandContext context, ParameterMap& parameters)
{
    auto* listener = static_cast<ZorDisplayCommand*>(pointerFromText(textOf(parameters, "proc")));
    if (!listener)
        return false;
    context.viewer.hub().add(listener);
    return true;
}

bool viewNotificationCommand(CommandContext context, ParameterMap& parameters)
{
    const std::optional<int> flags = intOf(parameters, "flags");
    if (!flags || *flags < 0)
        return false;
    context.viewer.hub().setViewFlags(*flags);
    return true;
}

bool createMenuCommand(CommandContext context, ParameterMap& parameters)
{
    QMenu* menu = context.menu.create();
    if (!menu)
        return false;
    parameters["qmenu"] = textFromAddress(menu);
    parameters["qmenuWidget"] = textFromAddress(context.viewer.view());
    return true;
}

bool execMenuCommand(CommandContext context, ParameterMap&)
{
    return context.menu.exec();
}

bool deleteMenuCommand(CommandContext context, ParameterMap& parameters)
{
    if (!context.menu.destroy())
        return false;
    for (const char* key : {"qmenu", "qmenuWidget"})
        if (const auto found = parameters.find(key); found != parameters.end())
            found->second.clear();
    return true;
}
} // namespace zor::viewer
