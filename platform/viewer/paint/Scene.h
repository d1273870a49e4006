#pragma once

#include "platform/viewer/picture/Picture.h"
#include "platform/viewer/picture/Tone.h"
#include "platform/viewer/view/Overlays.h"
#include "platform/viewer/view/ViewGeometry.h"

namespace zor::viewer {
/// Everything that a canvas paints, and nothing about how. One picture fills the view; a pair is side by side
/// in two panes of the same size, scale and centre; where their sizes differ, both begin in the upper left
/// corner of an area of the larger sides, which counts as the image.
class Scene
{
public:
    ViewGeometry geometry; ///< of one pane
    Picture first;
    Picture second; ///< empty unless a pair is shown
    Overlays overlays;
    bool coloration = false;

    /// Device pixels of the whole view.
    void setDeviceSize(const QSize& size);
    /// After a change of the pictures: one pane or two, and the image's size.
    void arrange();

    int paneCount() const { return second.isEmpty() ? 1 : 2; }
    const Picture& picture(int pane) const { return pane == 0 ? first : second; }
    /// In device pixels of the view.
    QRect paneRect(int pane) const;
    /// The pane that a point of the view lies in.
    int paneAt(const QPointF& device) const;
    /// A point of the view relative to a pane, or to the one that it lies in.
    QPointF inPane(const QPointF& device, int pane) const;
    QPointF inPane(const QPointF& device) const { return inPane(device, paneAt(device)); }
    Tone tone(int pane) const { return makeTone(picture(pane).mipLevels().shape(), coloration); }

private:
    QSize m_device = QSize(1, 1);
};
} // namespace zor::viewer
