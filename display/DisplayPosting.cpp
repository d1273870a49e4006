// How events of DisplayAdapterQT reach its view.

#include "display/DisplayEvents.h"

#include <QCoreApplication>
#include <QWidget>

#include <chrono>
#include <thread>

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
