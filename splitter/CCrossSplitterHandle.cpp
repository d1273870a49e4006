#include "splitter/CCrossSplitterHandle.h"

#include <QMouseEvent>

CCrossSplitterHandle::CCrossSplitterHandle(int crossing, QWidget* parent)
    : QFrame(parent)
    , inside(false)
    , caught(false)
    , num(crossing)
{
    setAttribute(Qt::WA_MouseTracking);
}

void CCrossSplitterHandle::mousePressEvent(QMouseEvent* event)
{
    if (!inside)
        return;
    caught = true;
    // Listeners hear of the catch before the place is stored; a bar does it the other way round.
    emit handleCatched();
    pressPos = event->pos();
}

void CCrossSplitterHandle::mouseReleaseEvent(QMouseEvent*)
{
    caught = false;
}

void CCrossSplitterHandle::mouseMoveEvent(QMouseEvent* event)
{
    if (!caught)
        return;
    const QPoint way = event->pos() - pressPos;
    emit handleMoved(num, way.x(), way.y());
}

void CCrossSplitterHandle::enterEvent(QEvent*)
{
    inside = true;
    setCursor(Qt::SizeAllCursor);
    emit cursorInside();
}

void CCrossSplitterHandle::leaveEvent(QEvent*)
{
    inside = false;
}
