// How events of DisplayAdapterQT reach its view, and how the adapter's own are taken out on the view's
// thread.

#include "display/DisplayEvents.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>

#include <chrono>
#include <thread>

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

bool DisplayAdapterQT::postToView(QEvent* event)
{
    if (!event)
        return false;
    if (!view) {
        delete event;
        return false;
    }
    QCoreApplication::postEvent(view, event, 0);
    return true;
}

bool DisplayAdapterQT::postToViewAndWait(QEvent* event)
{
    // Nothing to wait for: a wait that somebody else is in goes on.
    if (!event || !view)
        return postToView(event);
    done.exchange(false);
    postToView(event);
    // On the view's own thread this delivers the event, and the loop ends at its first test.
    QCoreApplication::processEvents();
    while (!done.load()) {
        std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(0));
    }
    return true;
}

bool DisplayAdapterQT::sendToView(QEvent& event)
{
    return view && QCoreApplication::sendEvent(view, &event);
}
