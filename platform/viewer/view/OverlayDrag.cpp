#include "platform/viewer/view/OverlayDrag.h"

#include <algorithm>
#include <cmath>

namespace zor::viewer {
namespace {
int partOf(const QRectF& border, const QPointF& device, double reach)
{
    const QRectF inside = border.adjusted(reach, reach, -reach, -reach);
    if (!border.adjusted(-reach, -reach, reach, reach).contains(device) ||
        (inside.isValid() && inside.contains(device)))
        return OverlayDrag::Nothing;
    // Corners reach less far inwards on a small rectangle, so that there is room to take its border.
    const auto inwards = [reach](double length) { return std::clamp(length * 0.5 - reach, 0.0, reach); };
    const double across = inwards(border.width());
    const double down = inwards(border.height());
    const int side = device.x() > border.right() - across  ? OverlayDrag::Right
                     : device.x() < border.left() + across ? OverlayDrag::Left
                                                           : OverlayDrag::Nothing;
    const int level = device.y() > border.bottom() - down ? OverlayDrag::Bottom
                      : device.y() < border.top() + down  ? OverlayDrag::Top
                                                          : OverlayDrag::Nothing;
    return side != 0 && level != 0 ? side | level : OverlayDrag::Border;
}

// One axis: where a span of `length` that should begin at `begin` ends up on an image of `limit` pixels.
int keptOn(int begin, int length, int limit)
{
    return std::max(0, std::min(begin, limit - length));
}
} // namespace

int OverlayDrag::partAt(const Overlays& overlays, const ViewGeometry& geometry, const QPointF& device,
                        double reach, std::string* id)
{
    for (auto overlay = overlays.all().rbegin(); overlay != overlays.all().rend(); ++overlay) {
        if (!overlay->isAdjustable)
            continue;
        const QRectF border(geometry.toDevice(overlay->rect.topLeft()),
                            geometry.toDevice(overlay->rect.bottomRight() + QPoint(1, 1)));
        if (const int part = partOf(border, device, reach); part != Nothing) {
            *id = overlay->id;
            return part;
        }
    }
    return Nothing;
}

bool OverlayDrag::start(const Overlays& overlays, const ViewGeometry& geometry, const QPointF& device,
                        double reach)
{
    m_part = partAt(overlays, geometry, device, reach, &m_id);
    if (!isActive())
        return false;
    const auto& all = overlays.all();
    m_rect = std::find_if(all.begin(), all.end(), [&](const Overlay& o) { return o.id == m_id; })->rect;
    m_image = geometry.toImage(device);
    return true;
}

void OverlayDrag::moveTo(Overlays& overlays, const ViewGeometry& geometry, const QPointF& device) const
{
    Overlay* overlay = overlays.find(m_id);
    if (!overlay)
        return;
    const QPointF moved = geometry.toImage(device) - m_image;
    const int dx = static_cast<int>(std::lround(moved.x()));
    const int dy = static_cast<int>(std::lround(moved.y()));
    const QSize image = geometry.imageSize();
    QRect rect = m_rect;
    if (m_part == Border)
        rect.moveTo(keptOn(rect.x() + dx, rect.width(), image.width()),
                    keptOn(rect.y() + dy, rect.height(), image.height()));
    if (m_part & Left)
        rect.setLeft(std::clamp(rect.left() + dx, std::min(0, rect.left()), rect.right()));
    if (m_part & Right)
        rect.setRight(std::clamp(rect.right() + dx, rect.left(), std::max(image.width() - 1, rect.left())));
    if (m_part & Top)
        rect.setTop(std::clamp(rect.top() + dy, std::min(0, rect.top()), rect.bottom()));
    if (m_part & Bottom)
        rect.setBottom(std::clamp(rect.bottom() + dy, rect.top(), std::max(image.height() - 1, rect.top())));
    overlay->rect = rect;
}
} // namespace zor::viewer
