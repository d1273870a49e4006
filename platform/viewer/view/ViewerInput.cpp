#include "platform/viewer/view/ViewerInput.h"

#include "platform/viewer/Viewer.h"
#include "platform/viewer/commands/CoordinateSpace.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>
#include <memory>
#include <utility>

namespace zor::viewer {
namespace {
// A unit is an eighth of a degree; most wheels turn by 15 degrees, 120 units, a notch. Four notches double
// the scale.
constexpr double WheelUnitsPerDoubling = 480.0;
constexpr double ArrowShare = 0.1; ///< of the view that an arrow key moves by
constexpr double GripReach = 4.0;  ///< widget pixels around an overlay's border

Qt::CursorShape cursorFor(int part)
{
    switch (part) {
    case OverlayDrag::Border:
        return Qt::SizeAllCursor;
    case OverlayDrag::Left | OverlayDrag::Top:
    case OverlayDrag::Right | OverlayDrag::Bottom:
        return Qt::SizeFDiagCursor;
    default:
        return Qt::SizeBDiagCursor;
    }
}
} // namespace

ViewerInput::ViewerInput(Viewer& viewer)
    : m_viewer(viewer)
{
    for (QWidget* widget : {viewer.view(), viewer.surface()}) {
        if (!widget->hasMouseTracking())
            m_untracked.emplace_back(widget);
        widget->setMouseTracking(true);
        widget->removeEventFilter(this);
        widget->installEventFilter(this);
    }
}

ViewerInput::~ViewerInput()
{
    giveCursorBack();
    for (const QPointer<QWidget>& widget : m_untracked)
        if (widget)
            widget->setMouseTracking(false);
}

bool ViewerInput::eventFilter(QObject* object, QEvent* event)
{
    auto* receiver = qobject_cast<QWidget*>(object);
    if (!receiver || !m_viewer.canvas())
        return false;
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::ScreenChangeInternal:
        m_viewer.resized();
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return mouse(receiver, static_cast<QMouseEvent*>(event));
    case QEvent::Wheel:
        return wheel(receiver, static_cast<QWheelEvent*>(event));
    case QEvent::KeyPress:
        return key(static_cast<QKeyEvent*>(event));
    default:
        return false;
    }
}

// A mouse event that nobody takes on the surface comes again for the view.
bool ViewerInput::isSecondSight(const QMouseEvent* event)
{
    const bool isSame = m_seenTime != 0 && event->timestamp() == m_seenTime && event->type() == m_seenType;
    m_seenTime = event->timestamp();
    m_seenType = event->type();
    return isSame;
}

bool ViewerInput::mouse(QWidget* receiver, QMouseEvent* event)
{
    if (receiver == m_viewer.view() && receiver != m_viewer.surface() && isSecondSight(event))
        return false;
    if (receiver == m_viewer.surface())
        isSecondSight(event);
    const QPointF device = m_viewer.deviceUnder(receiver, event->localPos());
    // What lies below the pointer is reported as it was seen at the click; a double click moves the picture.
    NotificationHub::Pointer pointer = pointerOf(receiver, event, device);
    const std::weak_ptr<const int> alive = m_viewer.hub().life();
    bool isTaken = false;
    switch (event->type()) {
    case QEvent::MouseMove:
        isTaken = move(event, device);
        if (!alive.expired())
            pointer = pointerOf(receiver, event, device);
        break;
    case QEvent::MouseButtonRelease:
        isTaken = release(event);
        break;
    default:
        isTaken = press(event, device);
    }
    // Last, since a listener may do anything.
    if (!alive.expired())
        notify(event->type(), pointer);
    return isTaken;
}

double ViewerInput::reach() const
{
    return GripReach * m_viewer.pixelRatio();
}

bool ViewerInput::press(QMouseEvent* event, const QPointF& device)
{
    if (event->button() != Qt::LeftButton || (event->modifiers() & Qt::ShiftModifier))
        return false;
    m_dragPane = m_viewer.scene().paneAt(device);
    const QPointF point = m_viewer.scene().inPane(device, m_dragPane);
    if (event->type() == QEvent::MouseButtonDblClick) {
        m_viewer.navigator().toggleFit(point);
        return true;
    }
    if (!m_overlayDrag.start(m_viewer.overlays(), m_viewer.scene().geometry, point, reach())) {
        m_isPanning = true;
        m_last = device;
    }
    return true;
}

bool ViewerInput::move(QMouseEvent* event, const QPointF& device)
{
    if (!(event->buttons() & Qt::LeftButton)) {
        endDrag();
        showCursor(device);
        return false;
    }
    if (m_overlayDrag.isActive()) {
        m_overlayDrag.moveTo(m_viewer.overlays(), m_viewer.scene().geometry,
                             m_viewer.scene().inPane(device, m_dragPane));
        m_viewer.repaint();
        return true;
    }
    if (!m_isPanning)
        return false;
    const QPointF from = std::exchange(m_last, device);
    // Last, since a listener may delete the viewer.
    m_viewer.navigator().pan(device - from);
    return true;
}

bool ViewerInput::release(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return false;
    const bool wasDragging = m_isPanning || m_overlayDrag.isActive();
    endDrag();
    return wasDragging;
}

// Also called when the release was lost, for example to a menu.
void ViewerInput::endDrag()
{
    m_isPanning = false;
    m_overlayDrag.stop();
}

NotificationHub::Pointer ViewerInput::pointerOf(const QWidget* receiver, const QMouseEvent* event,
                                                const QPointF& device) const
{
    const QPointF place = event->localPos();
    const QPoint pixel(static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y())));
    const QPointF image = m_viewer.scene().geometry.toImage(m_viewer.scene().inPane(device));
    NotificationHub::Pointer pointer;
    pointer.isLeft = event->button() == Qt::LeftButton;
    pointer.image = pointInSpace(m_viewer, image, "img").value_or(QPoint(-1, -1));
    pointer.window = receiver == m_viewer.view() ? pixel : receiver->mapTo(m_viewer.view(), pixel);
    return pointer;
}

void ViewerInput::notify(QEvent::Type type, const NotificationHub::Pointer& pointer)
{
    if (type == QEvent::MouseMove)
        m_viewer.hub().mouseMove(pointer);
    else if (type == QEvent::MouseButtonRelease)
        m_viewer.hub().mouseUp(pointer);
    else
        m_viewer.hub().mouseDown(pointer);
}

void ViewerInput::showCursor(const QPointF& device)
{
    std::string id;
    const int part = OverlayDrag::partAt(m_viewer.scene().overlays, m_viewer.scene().geometry,
                                         m_viewer.scene().inPane(device), reach(), &id);
    if (part == OverlayDrag::Nothing) {
        giveCursorBack();
        return;
    }
    QWidget* surface = m_viewer.surface();
    if (!m_hasCursor && surface->testAttribute(Qt::WA_SetCursor))
        m_hostCursor = surface->cursor();
    surface->setCursor(cursorFor(part));
    m_hasCursor = true;
}

void ViewerInput::giveCursorBack()
{
    QWidget* surface = m_viewer.surface();
    if (m_hasCursor && surface) {
        if (m_hostCursor)
            surface->setCursor(*m_hostCursor);
        else
            surface->unsetCursor();
    }
    m_hasCursor = false;
    m_hostCursor.reset();
}

bool ViewerInput::wheel(QWidget* receiver, QWheelEvent* event)
{
    const int turned = event->angleDelta().y();
    if (turned == 0)
        return false;
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    const QPointF place = event->posF(); // Qt 5.9 lacks its newer name, position().
    QT_WARNING_POP
    const QPointF device = m_viewer.deviceUnder(receiver, place);
    return m_viewer.navigator().zoom(std::exp2(turned / WheelUnitsPerDoubling),
                                     m_viewer.scene().inPane(device));
}

bool ViewerInput::key(QKeyEvent* event)
{
    if (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier))
        return false;
    Navigator& navigator = m_viewer.navigator();
    const QSize view = m_viewer.scene().geometry.viewSize();
    const double across = std::round(view.width() * ArrowShare);
    const double down = std::round(view.height() * ArrowShare);
    switch (event->key()) {
    case Qt::Key_Plus:
        return navigator.zoom(Navigator::ZoomStep);
    case Qt::Key_Minus:
        return navigator.zoom(1.0 / Navigator::ZoomStep);
    case Qt::Key_0:
    case Qt::Key_F:
        return navigator.fit(ViewGeometry::FitWhole);
    case Qt::Key_1:
        return navigator.oneToOne();
    case Qt::Key_Left:
        return navigator.pan({across, 0.0});
    case Qt::Key_Right:
        return navigator.pan({-across, 0.0});
    case Qt::Key_Up:
        return navigator.pan({0.0, down});
    case Qt::Key_Down:
        return navigator.pan({0.0, -down});
    default:
        return false;
    }
}
} // namespace zor::viewer
