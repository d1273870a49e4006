#pragma once

#include <QGraphicsView>

/// The widget that a viewer draws into.
class DisplayView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit DisplayView(QWidget* parent);

signals:
    /// The viewer shows another part of its image, or at another scale. The argument is the view itself.
    void sigViewChanged(DisplayView* view);
};
