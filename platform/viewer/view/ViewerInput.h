#pragma once

#include "platform/viewer/NotificationHub.h"
#include "platform/viewer/view/OverlayDrag.h"

#include <QCursor>
#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QWidget>

#include <optional>
#include <vector>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace zor::viewer {
class Viewer;

/// Mouse and keys of one viewer, by event filters on its view and surface. What the viewer has no use for
/// goes on to the host: Escape, Enter, unknown keys, and drags with Shift held.
class ViewerInput : public QObject
{
public:
    explicit ViewerInput(Viewer& viewer);
    /// Gives the widgets back as they were, with the host's cursor and mouse tracking.
    ~ViewerInput() override;

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool mouse(QWidget* receiver, QMouseEvent* event);
    bool press(QMouseEvent* event, const QPointF& device);
    bool move(QMouseEvent* event, const QPointF& device);
    bool release(QMouseEvent* event);
    bool wheel(QWidget* receiver, QWheelEvent* event);
    bool key(QKeyEvent* event);
    bool isSecondSight(const QMouseEvent* event);
    NotificationHub::Pointer pointerOf(const QWidget* receiver, const QMouseEvent* event,
                                       const QPointF& device) const;
    void notify(QEvent::Type type, const NotificationHub::Pointer& pointer);
    void endDrag();
    void showCursor(const QPointF& device);
    void giveCursorBack();
    double reach() const;

    Viewer& m_viewer;
    OverlayDrag m_overlayDrag;
    int m_dragPane = 0; ///< of the overlay drag, also while the pointer is over the other one
    bool m_isPanning = false;
    QPointF m_last;                             ///< where the pan is, device pixels
    bool m_hasCursor = false;                   ///< an overlay's cursor is set on the surface
    std::optional<QCursor> m_hostCursor;        ///< what it took the place of
    std::vector<QPointer<QWidget>> m_untracked; ///< widgets whose mouse tracking was off
    ulong m_seenTime = 0;                       ///< of the last mouse event that went on to the host
    int m_seenType = 0;
};
} // namespace zor::viewer
