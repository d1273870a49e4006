#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

#include <vector>

/// Sends a widget a mouse event at a place of its own; moves are made with the button held.
inline void sendMouse(QWidget& widget, QEvent::Type type, QPoint place,
                      Qt::MouseButton button = Qt::LeftButton)
{
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, place, type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

/// A parent that notes the mouse events which its children let through.
class MouseNotes : public QWidget
{
public:
    std::vector<QEvent::Type> seen;

protected:
    bool event(QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::MouseButtonRelease:
            seen.push_back(event->type());
            break;
        default:
            break;
        }
        return QWidget::event(event);
    }
};

constexpr QEvent::Type MouseTypes[] = {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick,
                                       QEvent::MouseMove, QEvent::MouseButtonRelease};
