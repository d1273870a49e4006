#pragma once

#include "platform/viewer/view/Overlays.h"
#include "platform/viewer/view/ViewGeometry.h"

namespace zor::viewer {
/// A drag on an adjustable overlay: its border moves it, its corners size it.
class OverlayDrag
{
public:
    enum Part
    {
        Nothing = 0,
        Left = 1,
        Right = 2,
        Top = 4,
        Bottom = 8,
        Border = 16
    };

    /// What lies under a device point, the topmost adjustable overlay first: Border, or the two sides of a
    /// corner together, or Nothing. `reach` is how near counts, in device pixels.
    static int partAt(const Overlays& overlays, const ViewGeometry& geometry, const QPointF& device,
                      double reach, std::string* id);

    /// Takes hold of what lies there; false when there is nothing.
    bool start(const Overlays& overlays, const ViewGeometry& geometry, const QPointF& device, double reach);
    bool isActive() const { return m_part != Nothing; }
    /// Moves or sizes the overlay, which stays on the image and at least one pixel wide and high.
    void moveTo(Overlays& overlays, const ViewGeometry& geometry, const QPointF& device) const;
    void stop() { m_part = Nothing; }

private:
    int m_part = Nothing;
    std::string m_id;
    QRect m_rect;    ///< at the start
    QPointF m_image; ///< where the drag began, image pixels
};
} // namespace zor::viewer
