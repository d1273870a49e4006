#include "platform/viewer/commands/OverlayCommands.h"

#include "platform/viewer/Viewer.h"
#include "platform/viewer/commands/CommandText.h"
#include "platform/viewer/commands/CoordinateSpace.h"

#include <cmath>
#include <cstdlib>

namespace zor::viewer {
namespace {
// Far beyond every image, and safe to add up.
constexpr int FarthestPlace = 1 << 28;
constexpr int WidestLine = 64;

/// An integer that may be absent but not unreadable.
std::optional<int> intOr(const ParameterMap& parameters, const char* key, int absent)
{
    return parameters.count(key) == 0 ? std::optional<int>(absent) : intOf(parameters, key);
}

std::optional<QRect> rectIn(const ParameterMap& parameters)
{
    const std::optional<int> x = intOf(parameters, "rect.x");
    const std::optional<int> y = intOf(parameters, "rect.y");
    const std::optional<int> width = intOf(parameters, "rect.w");
    const std::optional<int> height = intOf(parameters, "rect.h");
    if (!x || !y || !width || !height || *width <= 0 || *height <= 0)
        return std::nullopt;
    for (const int value : {*x, *y, *width, *height})
        if (value > FarthestPlace || value < -FarthestPlace)
            return std::nullopt;
    return QRect(*x, *y, *width, *height);
}

// The rectangle belongs to the image from here on: it moves with the picture, whatever space it came in.
std::optional<QRect> toImage(const Viewer& viewer, const QRect& rect, const std::string& space)
{
    if (space.empty() || space == "img")
        return rect;
    const std::optional<QPointF> first = imagePointOf(viewer, rect.topLeft(), space);
    const QPoint beyond = rect.topLeft() + QPoint(rect.width(), rect.height());
    const std::optional<QPointF> last = imagePointOf(viewer, beyond, space);
    if (!first || !last || std::abs(first->x()) > FarthestPlace || std::abs(first->y()) > FarthestPlace ||
        std::abs(last->x()) > FarthestPlace || std::abs(last->y()) > FarthestPlace)
        return std::nullopt;
    const QPoint corner(static_cast<int>(std::floor(first->x())), static_cast<int>(std::floor(first->y())));
    const QPoint end(static_cast<int>(std::floor(last->x())), static_cast<int>(std::floor(last->y())));
    return QRect(corner, QSize(std::max(1, end.x() - corner.x()), std::max(1, end.y() - corner.y())));
}

QColor unpackColour(int packed)
{
    return {packed & 0xFF, (packed >> 8) & 0xFF, (packed >> 16) & 0xFF};
}
} // namespace

bool addRectCommand(CommandContext context, ParameterMap& parameters)
{
    Overlay overlay;
    overlay.id = textOf(parameters, "objectID");
    const std::optional<QRect> given = rectIn(parameters);
    const std::optional<int> colour = intOr(parameters, "line.clr", 0x00FFFF);
    const std::optional<int> line = intOr(parameters, "line.width", 1);
    const std::optional<int> adjust = intOr(parameters, "adjust", 0);
    if (overlay.id.empty() || !given || !colour || !line || *line < 1 || *line > WidestLine || !adjust)
        return false;
    const std::optional<QRect> rect = toImage(context.viewer, *given, textOf(parameters, "cs"));
    if (!rect)
        return false;
    overlay.rect = *rect;
    overlay.colour = unpackColour(*colour);
    overlay.lineWidth = *line;
    overlay.isAdjustable = *adjust != 0;
    context.viewer.overlays().add(overlay);
    context.viewer.repaint();
    return true;
}

bool deleteOverlayCommand(CommandContext context, ParameterMap& parameters)
{
    if (!context.viewer.overlays().remove(textOf(parameters, "objectID")))
        return false;
    context.viewer.repaint();
    return true;
}
} // namespace zor::viewer
