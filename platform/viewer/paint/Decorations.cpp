#include "platform/viewer/paint/Decorations.h"

#include "platform/viewer/paint/SampleText.h"
#include "platform/viewer/paint/Scene.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace zor::viewer {
namespace {
const QColor GridOnDark(255, 255, 255, 110);
const QColor GridOnBright(0, 0, 0, 110);

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

// Each pixel draws its left and its upper line, in a colour that stands out on the pixel's own; the last ones
// draw their right or lower line too.
void paintGrid(QPainter& painter, const Scene& scene, int pane, const QRect& pixels)
{
    const MipLevels& mips = scene.picture(pane).mipLevels();
    const Tone tone = scene.tone(pane);
    const auto across = [&](int x) { return edgeOf(scene.geometry.toDevice(QPointF(x, 0.0)).x()); };
    const auto down = [&](int y) { return edgeOf(scene.geometry.toDevice(QPointF(0.0, y)).y()); };
    for (int y = pixels.top(); y <= pixels.bottom(); ++y)
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            const QColor& colour = isBright(tone, mips, x, y) ? GridOnBright : GridOnDark;
            const QRect area(QPoint(across(x), down(y)), QPoint(across(x + 1) - 1, down(y + 1) - 1));
            painter.fillRect(area.x(), area.y(), area.width(), 1, colour);
            painter.fillRect(area.x(), area.y() + 1, 1, area.height() - 1, colour);
            if (x == pixels.right())
                painter.fillRect(area.right() + 1, area.y(), 1, area.height(), colour);
            if (y == pixels.bottom())
                painter.fillRect(area.x(), area.bottom() + 1, area.width(), 1, colour);
        }
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
                paintGrid(painter, scene, pane, pixels);
            }
        }
        for (const Overlay& overlay : scene.overlays.all())
            paintOverlay(painter, geometry, overlay);
        painter.restore();
    }
}
} // namespace zor::viewer
