// How the adapter's own events are taken out on the view's thread, and who handles them.

#include "display/DisplayEvents.h"

#include <QPointer>
#include <QWidget>

bool DisplayAdapterQT::eventFilter(QObject* object, QEvent* event)
{
    return event && object == view && routeEvent(event);
}

bool DisplayAdapterQT::routeEvent(QEvent* event)
{
    static const int own[] = {DisplayEvStart, DisplayEvContextMenu, DisplayEvReserved, 0};
    for (const int* type = own; *type != 0; ++type) {
        if (event->type() == *type)
            return handleDisplayEvent(event);
    }
    return false;
}

bool DisplayAdapterQT::handleDisplayEvent(QEvent* event)
{
    bool handled = false;
    const QPointer<DisplayAdapterQT> living(this);
    if (event && event->type() == DisplayEvStart) {
        startViewer();
        handled = true;
    } else if (event && event->type() == DisplayEvContextMenu) {
        showContextMenu();
        handled = true;
    }
    // Whatever came here ends the wait, also an event that is not handled, or none at all. An open menu may
    // have ended the adapter.
    if (living)
        done.exchange(true);
    return handled;
}
