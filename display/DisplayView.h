#pragma once

#include <QEvent>
#include <QGraphicsView>
#include <QPoint>

class DisplayView;
class QToolButton;

/// Registered at the first question for it: a signal and a slot take the type.
template <> struct QMetaTypeId<DisplayView*>
{
    enum
    {
        Defined = 1
    };
    static int qt_metatype_id();
};

/// The widget that a viewer draws into. It turns the display adapter's events into signals.
class DisplayView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit DisplayView(QWidget* parent = nullptr);

signals:
    /// A left press, any move, a left release: the place in image pixels and the type, one of
    /// DisplayEvMouseDown, DisplayEvMouseMove, DisplayEvMouseUp. A press or a release may come on the
    /// viewer's thread.
    void sigMouseMoved(QPoint cp, QEvent::Type tp);

    /// The hex dump is to be shown, or hidden.
    void sigHexDump();

    /// The hex dump is to be moved to this place in image pixels.
    void sigHexDumpHere(QPoint cp);

    /// The button that leaves full screen was clicked.
    void sigKeyEscape();

    /// Zoom or position of this view changed.
    void sigViewChanged(DisplayView* view);

protected:
    bool event(QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    /// Seen in full screen only.
    QToolButton* escapeButton;
};
