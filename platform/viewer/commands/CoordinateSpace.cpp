#include "platform/viewer/commands/CoordinateSpace.h"

#include "platform/viewer/Viewer.h"

#include <algorithm>
#include <cmath>

namespace zor::viewer {
namespace {
QPoint floorPoint(const QPointF& point)
{
    const auto cut = [](double value) {
        return static_cast<int>(std::floor(std::clamp(value, -2147483648.0, 2147483647.0)));
    };
    return {cut(point.x()), cut(point.y())};
}
} // namespace

std::optional<QPointF> imagePointOf(const Viewer& viewer, const QPointF& point, const std::string& space)
{
    const ViewGeometry& geometry = viewer.scene().geometry;
    if (!geometry.hasImage())
        return std::nullopt;
    if (space == "img")
        return point + QPointF(0.5, 0.5);
    if (space == "base")
        return QPointF(point.x() * geometry.imageSize().width(), point.y() * geometry.imageSize().height());
    if (space == "win")
        return geometry.toImage(viewer.scene().inPane(viewer.deviceAt(viewer.view(), point)));
    return std::nullopt;
}

std::optional<QPoint> pointInSpace(const Viewer& viewer, const QPointF& image, const std::string& space)
{
    const ViewGeometry& geometry = viewer.scene().geometry;
    if (!geometry.hasImage())
        return std::nullopt;
    if (space == "img")
        return floorPoint(image);
    if (space == "base")
        return floorPoint(
            {image.x() / geometry.imageSize().width(), image.y() / geometry.imageSize().height()});
    if (space == "win")
        return viewer.windowAt(geometry.toDevice(image));
    return std::nullopt;
}
} // namespace zor::viewer
