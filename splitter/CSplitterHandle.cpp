#include "splitter/CSplitterHandle.h"

#include <QMouseEvent>

CSplitterHandle::CSplitterHandle(int gap, Qt::Orientation direction, QWidget* parent)
    : QFrame(parent)
    , orientation(direction)
    , inside(false)
    , caught(false)
    , num(gap)
{
    // The cursor and `inside` depend on events without a pressed button.
    setAttribute(Qt::WA_MouseTracking);
}

void CSplitterHandle::mousePressEvent(QMouseEvent* event)
{
    if (!inside)
        return;
    caught = true;
    pressPos = event->pos();
    emit handleCatched();
}

void CSplitterHandle::mouseReleaseEvent(QMouseEvent*)
{
    // A release outside leaves the bar caught: it goes on following until the next release over it.
    if (inside)
        caught = false;
}

void CSplitterHandle::mouseMoveEvent(QMouseEvent* event)
{
    if (!caught)
        return;
    // The place of the press stays: the grid moves the bar under the cursor, so each position is already the
    // step since the last accepted move.
    const QPoint way = event->pos() - pressPos;
    emit handleMoved(num, orientation, orientation == Qt::Vertical ? way.x() : way.y());
}

void CSplitterHandle::enterEvent(QEvent*)
{
    inside = true;
    setCursor(orientation == Qt::Vertical ? Qt::SplitHCursor : Qt::SplitVCursor);
    emit cursorInside();
}

void CSplitterHandle::leaveEvent(QEvent*)
{
    inside = false;
}
