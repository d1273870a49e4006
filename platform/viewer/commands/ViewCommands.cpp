#include "platform/viewer/commands/ViewCommands.h"

#include "platform/viewer/Viewer.h"
#include "platform/viewer/commands/CommandText.h"
#include "platform/viewer/commands/CoordinateSpace.h"

namespace zor::viewer {
namespace {
void putPoint(ParameterMap& parameters, const QPoint& point)
{
    parameters["pos.x"] = std::to_string(point.x());
    parameters["pos.y"] = std::to_string(point.y());
}
} // namespace

bool rebuildCommand(CommandContext context, ParameterMap&)
{
    return context.viewer.rebuild();
}

bool zoomInCommand(CommandContext context, ParameterMap&)
{
    return context.viewer.navigator().zoom(Navigator::ZoomStep);
}

bool zoomOutCommand(CommandContext context, ParameterMap&)
{
    return context.viewer.navigator().zoom(1.0 / Navigator::ZoomStep);
}

bool fitCommand(CommandContext context, ParameterMap& parameters)
{
    return context.viewer.navigator().fit(intOf(parameters, "mode").value_or(ViewGeometry::NoFit));
}

// A place in pixels is the pixel's middle.
bool viewAtCommand(CommandContext context, ParameterMap& parameters)
{
    const std::optional<double> x = realOf(parameters, "pos.x");
    const std::optional<double> y = realOf(parameters, "pos.y");
    if (!x || !y)
        return false;
    const std::string space = textOf(parameters, "cs");
    const std::optional<QPointF> centre =
        imagePointOf(context.viewer, QPointF(*x, *y), space.empty() ? "base" : space);
    return centre && context.viewer.navigator().setCentre(*centre);
}

bool viewScaleCommand(CommandContext context, ParameterMap& parameters)
{
    return context.viewer.navigator().setScale(realOf(parameters, "scale").value_or(0.0));
}

bool translateCommand(CommandContext context, ParameterMap& parameters)
{
    const std::optional<int> x = intOf(parameters, "pos.x");
    const std::optional<int> y = intOf(parameters, "pos.y");
    if (!x || !y)
        return false;
    const std::optional<QPointF> image =
        imagePointOf(context.viewer, QPointF(*x, *y), textOf(parameters, "cs.src"));
    if (!image)
        return false;
    const std::optional<QPoint> point = pointInSpace(context.viewer, *image, textOf(parameters, "cs.dst"));
    if (!point)
        return false;
    putPoint(parameters, *point);
    const QSize size = context.viewer.scene().geometry.imageSize();
    const bool isOnImage =
        image->x() >= 0.0 && image->y() >= 0.0 && image->x() < size.width() && image->y() < size.height();
    parameters["result"] = isOnImage ? "1" : "0";
    return true;
}

bool viewImageCommand(CommandContext context, ParameterMap& parameters)
{
    const ViewGeometry& geometry = context.viewer.scene().geometry;
    if (!geometry.hasImage())
        return false;
    const QRect rect = geometry.visibleRect();
    putPoint(parameters, rect.topLeft());
    parameters["dim.w"] = std::to_string(rect.width());
    parameters["dim.h"] = std::to_string(rect.height());
    return true;
}
} // namespace zor::viewer
