#pragma once

#include <QFrame>

/// The square where a column gap meets a row gap; dragging it moves both.
class CCrossSplitterHandle : public QFrame
{
    Q_OBJECT

public:
    /// `crossing` is the number of the crossing in its grid.
    CCrossSplitterHandle(int crossing, QWidget* parent);

signals:
    void cursorInside();
    void handleCatched();
    /// `dx` and `dy` are the way in pixels since the last move that the grid accepted.
    void handleMoved(int num, int dx, int dy);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    bool inside;
    bool caught;
    QPoint pressPos;
    int num;
};
