#pragma once

#include <QFrame>

/// The bar in a gap of a grid. Turns mouse movement into signals and paints nothing of its own.
class CSplitterHandle : public QFrame
{
    Q_OBJECT

public:
    /// `gap` counts from 0, between column (or row) `gap` and `gap` + 1. `Qt::Vertical` is a bar that moves
    /// left and right, `Qt::Horizontal` one that moves up and down.
    CSplitterHandle(int gap, Qt::Orientation direction, QWidget* parent);

    /// The direction that the constructor got.
    Qt::Orientation barOrientation() const { return orientation; }

signals:
    void cursorInside();
    void handleCatched();
    /// `delta` is the way in pixels since the last move that the grid accepted.
    void handleMoved(int num, Qt::Orientation orientation, int delta);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    Qt::Orientation orientation;
    bool inside;
    bool caught;
    QPoint pressPos;
    int num;
};
