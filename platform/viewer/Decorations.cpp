#include "platform/viewer/Decorations.h"

#include "platform/viewer/SampleText.h"
#include "platform/viewer/Scene.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace zorview {
namespace {
// Seen on black and on white.
const QColor GridColour(128, 128, 128, 140);

QRect visiblePixels(const ViewGeometry& geometry)
{
    const QSize view = geometry.viewSize();
    const QPointF from = geometry.toImage(QPointF(0.0, 0.0));
    const QPointF to = geometry.toImage(QPointF(view.width(), view.height()));
    const QRect all(QPoint(static_cast<int>(std::floor(from.x())), static_cast<int>(std::floor(from.y()))),
                    QPoint(static_cast<int>(std::floor(to.x())), static_cast<int>(std::floor(to.y()))));
    return all.intersected(QRect(QPoint(0, 0), geometry.imageSize()));
}

// The first device pixel of an image pixel: the first whose centre lies on it.
int edgeOf(double device)
{
    constexpr double Farthest = 1e6;
    return static_cast<int>(std::ceil(std::clamp(device, -Farthest, Farthest) - 0.5));
}

void paintGrid(QPainter& painter, const ViewGeometry& geometry, const QRect& pixels)
{
    const QPointF from = geometry.toDevice(pixels.topLeft());
    const QPointF to = geometry.toDevice(pixels.bottomRight() + QPoint(1, 1));
    const int left = edgeOf(from.x());
    const int top = edgeOf(from.y());
    const int width = edgeOf(to.x()) - left + 1;
    const int height = edgeOf(to.y()) - top + 1;
    for (int x = pixels.left(); x <= pixels.right() + 1; ++x)
        painter.fillRect(edgeOf(geometry.toDevice(QPointF(x, 0.0)).x()), top, 1, height, GridColour);
    for (int y = pixels.top(); y <= pixels.bottom() + 1; ++y)
        painter.fillRect(left, edgeOf(geometry.toDevice(QPointF(0.0, y)).y()), width, 1, GridColour);
}

// The border runs just outside the rectangle's own pixels, so that it hides none of them from the inside.
void paintOverlay(QPainter& painter, const ViewGeometry& geometry, const Overlay& overlay)
{
    const QPointF from = geometry.toDevice(overlay.rect.topLeft());
    const QPointF to = geometry.toDevice(overlay.rect.bottomRight() + QPoint(1, 1));
    const QRect inner(QPoint(edgeOf(from.x()), edgeOf(from.y())),
                      QPoint(edgeOf(to.x()) - 1, edgeOf(to.y()) - 1));
    const int line = overlay.lineWidth;
    const QRect outer = inner.adjusted(-line, -line, line, line);
    painter.fillRect(outer.x(), outer.y(), outer.width(), line, overlay.colour);
    painter.fillRect(outer.x(), inner.bottom() + 1, outer.width(), line, overlay.colour);
    painter.fillRect(outer.x(), inner.y(), line, inner.height(), overlay.colour);
    painter.fillRect(inner.right() + 1, inner.y(), line, inner.height(), overlay.colour);
}
} // namespace

bool hasDecorations(const Scene& scene)
{
    return scene.geometry.hasImage() &&
           (scene.geometry.scale() >= GridScale || !scene.overlays.all().empty());
}

void paintDecorations(QPainter& painter, const Scene& scene)
{
    const ViewGeometry& geometry = scene.geometry;
    if (!geometry.hasImage())
        return;
    for (int pane = 0; pane < scene.paneCount(); ++pane) {
        const QRect rect = scene.paneRect(pane);
        painter.save();
        painter.setClipRect(rect);
        painter.translate(rect.topLeft());
        if (geometry.scale() >= GridScale) {
            const QRect shown = QRect(QPoint(0, 0), scene.picture(pane).size());
            const QRect pixels = visiblePixels(geometry).intersected(shown);
            if (!pixels.isEmpty()) {
                paintSampleValues(painter, scene, pane, pixels);
                paintGrid(painter, geometry, pixels);
            }
        }
        for (const Overlay& overlay : scene.overlays.all())
            paintOverlay(painter, geometry, overlay);
        painter.restore();
    }
}
} // namespace zorview
