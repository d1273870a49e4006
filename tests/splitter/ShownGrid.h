#pragma once

#include "splitter/CCrossSplitterHandle.h"
#include "splitter/CGridSplitter.h"
#include "splitter/CSplitterHandle.h"

#include <QTest>

/// A shown 2 x 2 grid and its parts.
struct ShownGrid
{
    explicit ShownGrid(int width = 100, int height = 80)
        : grid(nullptr)
    {
        for (int i = 0; i < 4; ++i)
            panes << new QWidget;
        result = grid.setWidgets(panes, 2, 2);
        grid.resize(width, height);
        grid.show();
        for (auto* handle : grid.findChildren<CSplitterHandle*>())
            (handle->barOrientation() == Qt::Vertical ? vertical : horizontal) = handle;
        cross = grid.findChild<CCrossSplitterHandle*>();
    }

    QList<QRect> paneRects() const
    {
        QList<QRect> rects;
        for (QWidget* pane : panes)
            rects << pane->geometry();
        return rects;
    }

    CGridSplitter grid;
    QList<QWidget*> panes;
    CSplitterHandle* vertical = nullptr;
    CSplitterHandle* horizontal = nullptr;
    CCrossSplitterHandle* cross = nullptr;
    int result = -3;
};

/// Drags a handle from its middle by a way in pixels, as a mouse does.
inline void drag(QWidget* handle, QPoint way)
{
    QEvent enter(QEvent::Enter);
    QCoreApplication::sendEvent(handle, &enter);
    const QPoint start = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, start + way, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, {}, start);
}
