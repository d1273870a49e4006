#include "host/zorbench/RegionDrag.h"

#include "display/DisplayEvents.h"
#include "display/DisplayView.h"
#include "host/zorbench/FrameView.h"

#include <QGuiApplication>

#include <algorithm>

namespace zor {

namespace {

/// Both pixels are in it, whichever is the first.
QRect spanOf(const QPoint& one, const QPoint& other)
{
    return {QPoint(std::min(one.x(), other.x()), std::min(one.y(), other.y())),
            QPoint(std::max(one.x(), other.x()), std::max(one.y(), other.y()))};
}

} // namespace

RegionDrag::RegionDrag(FrameView& view)
{
    connect(&view.view(), &DisplayView::sigMouseMoved, this, &RegionDrag::take);
}

void RegionDrag::take(const QPoint& pixel, QEvent::Type type)
{
    if (type == DisplayEvMouseDown) {
        m_begin.reset();
        if (QGuiApplication::keyboardModifiers() & Qt::ShiftModifier)
            m_begin = pixel;
        return;
    }
    if (!m_begin)
        return;
    if (type == DisplayEvMouseUp) {
        const QPoint begin = *m_begin;
        m_begin.reset();
        if (pixel == begin) {
            emit clicked();
            return;
        }
        emit drawn(spanOf(begin, pixel));
        emit ended();
    } else if (!(QGuiApplication::mouseButtons() & Qt::LeftButton)) {
        // The release was lost, for example to a menu.
        m_begin.reset();
    } else if (pixel != *m_begin) {
        emit drawn(spanOf(*m_begin, pixel));
    }
}

} // namespace zor
