#include "splitter/CGridSplitter.h"

#include "splitter/CCrossSplitterHandle.h"
#include "splitter/CSplitterHandle.h"

CGridSplitter::CGridSplitter(QWidget* parent)
    : QFrame(parent)
    , handleSize(5)
    , rowCount(0)
    , columnCount(0)
{
}

CGridSplitter::~CGridSplitter()
{
    deletePanes();
    deleteHandles();
}

void CGridSplitter::deletePanes()
{
    for (const Pane& pane : qAsConst(panes))
        delete pane.widget;
    panes.clear();
    cells.clear();
}

void CGridSplitter::deleteHandles()
{
    qDeleteAll(handles);
    handles.clear();
    for (const Crossing& crossing : qAsConst(crossings))
        delete crossing.handle;
    crossings.clear();
}

void CGridSplitter::addHandle(int num, Qt::Orientation orientation)
{
    auto* handle = new CSplitterHandle(num, orientation, this);
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    // A later handle of the same number comes first in values(num).
    handles.insertMulti(num, handle);
    QT_WARNING_POP
    connect(handle, SIGNAL(handleMoved(int, Qt::Orientation, int)), this,
            SLOT(moveSplitter(int, Qt::Orientation, int)));
}

int CGridSplitter::setWidgets(QList<QWidget*> widgets, int rows, int columns)
{
    if (widgets.isEmpty())
        return -2;
    if (widgets.size() != rows * columns)
        return -1;

    deletePanes();
    deleteHandles();

    // The order of creation is the stacking order: a cross handle lies above the two bars that it overlaps.
    for (int i = 0; i < columns - 1; ++i)
        addHandle(i, Qt::Vertical);
    for (int i = 0; i < rows - 1; ++i)
        addHandle(i, Qt::Horizontal);
    for (int r = 0; r < rows - 1; ++r) {
        for (int c = 0; c < columns - 1; ++c) {
            const int key = r * columns + c;
            auto* handle = new CCrossSplitterHandle(key, this);
            crossings.insert(key, {c, r, handle});
            connect(handle, "2handleMoved(int,int, int)", this, "1moveCrossSplitter(int,int,int)");
        }
    }

    int key = 0;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c, ++key) {
            QWidget* widget = widgets.at(r * columns + c);
            panes.insert(key, {c, r, widget});
            cells.append({c, r});
            widget->setParent(this);
        }
    }
    rowCount += rows;
    columnCount += columns;

    snapToGrid();
    return 0;
}

QList<CSplitterHandle*> CGridSplitter::handlesOfGap(int gap) const
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return handles.values(gap);
    QT_WARNING_POP
}

CSplitterHandle* CGridSplitter::handleAt(int gap, int place, Qt::Orientation orientation) const
{
    CSplitterHandle* handle = handlesOfGap(gap).value(place, nullptr);
    return handle && handle->barOrientation() == orientation ? handle : nullptr;
}

void CGridSplitter::snapToGrid()
{
    if (cells.isEmpty())
        return;

    const int w = geometry().width();
    const int h = geometry().height();
    const int s = handleSize;
    const int lastColumn = cells.last().first;
    const int lastRow = cells.last().second;
    const int paneW = (w - lastColumn * s) / (lastColumn + 1);
    const int paneH = (h - lastRow * s) / (lastRow + 1);

    for (const Pane& pane : qAsConst(panes))
        pane.widget->setGeometry((s + paneW) * pane.column, (s + paneH) * pane.row, paneW, paneH);
    for (int i = 0; i < lastColumn; ++i) {
        if (CSplitterHandle* handle = handleAt(i, 1, Qt::Vertical))
            handle->setGeometry((s + paneW) * i + paneW, 0, s, h);
    }
    for (int i = 0; i < lastRow; ++i) {
        if (CSplitterHandle* handle = handleAt(i, 0, Qt::Horizontal))
            handle->setGeometry(0, (s + paneH) * i + paneH, w, s);
    }
    for (const Crossing& crossing : qAsConst(crossings)) {
        crossing.handle->setGeometry((s + paneW) * crossing.column + paneW,
                                     (s + paneH) * crossing.row + paneH, s, s);
    }
}

bool CGridSplitter::moveHandles(int index, Qt::Orientation orientation, int delta)
{
    const bool vertical = orientation == Qt::Vertical;
    if (!vertical && orientation != Qt::Horizontal)
        return false;
    const int limit = (vertical ? width() : height()) - handleSize - 1;
    const QList<CSplitterHandle*> bars = handlesOfGap(index);
    for (CSplitterHandle* handle : bars) {
        if (handle->barOrientation() != orientation)
            continue;
        const int place = (vertical ? handle->x() : handle->y()) + delta;
        if (place >= limit || place <= 1)
            return false;
        handle->move(vertical ? place : 0, vertical ? 0 : place);
    }
    return true;
}

void CGridSplitter::moveSplitter(int index, Qt::Orientation orientation, int delta)
{
    if (!moveHandles(index, orientation, delta))
        return;

    const bool vertical = orientation == Qt::Vertical;
    const QPoint way = vertical ? QPoint(delta, 0) : QPoint(0, delta);
    for (const Crossing& crossing : qAsConst(crossings)) {
        if ((vertical ? crossing.column : crossing.row) == index)
            crossing.handle->move(crossing.handle->pos() + way);
    }
    for (const Pane& pane : qAsConst(panes)) {
        QWidget* widget = pane.widget;
        const int place = vertical ? pane.column : pane.row;
        if (place == index)
            widget->resize(widget->width() + way.x(), widget->height() + way.y());
        else if (place == index + 1)
            widget->setGeometry(widget->x() + way.x(), widget->y() + way.y(), widget->width() - way.x(),
                                widget->height() - way.y());
    }
}

void CGridSplitter::moveCrossSplitter(int num, int dx, int dy)
{
    const auto crossing = crossings.constFind(num);
    if (crossing == crossings.constEnd())
        return;
    const int column = crossing->column;
    const int row = crossing->row;
    moveSplitter(column, Qt::Vertical, dx);
    moveSplitter(row, Qt::Horizontal, dy);
}

// Mouse events on the gaps end here and do not reach the dialog.
void CGridSplitter::mousePressEvent(QMouseEvent*) {}
void CGridSplitter::mouseReleaseEvent(QMouseEvent*) {}
void CGridSplitter::mouseMoveEvent(QMouseEvent*) {}

void CGridSplitter::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    snapToGrid();
}
