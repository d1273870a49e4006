// What becomes of a viewer's notifications: events for the view.

#include "display/DisplayEvents.h"
#include "display/ParameterText.h"

#include <cstring>

namespace {

void readPlaces(const ParameterMap& parameters, QPoint& imagePos, QPoint& windowPos)
{
    imagePos = QPoint(paramInt(&parameters, "img.x"), paramInt(&parameters, "img.y"));
    windowPos = QPoint(paramInt(&parameters, "win.x"), paramInt(&parameters, "win.y"));
}

/// The viewer's number of the left button.
bool isLeftButton(ParameterMap& parameters)
{
    return zor::paramIndexedInt(parameters, "left") == 1;
}

bool isText(const char* name, const char* text)
{
    return name && std::strcmp(name, text) == 0;
}

} // namespace

std::int64_t DisplayAdapterQT::DisplayNotification::notify(const char* name, ParameterMap* parameters)
{
    if (!parameters || !gate.load())
        return 0;
    const std::string code = (*parameters)["code"];

    // The mouse counts under any name.
    if (code == "mouse.down")
        return mouseDown(*parameters);
    if (code == "mouse.up")
        return mouseUp(*parameters);
    if (code == "mouse.move") {
        auto* event = new DisplayMouseEv(DisplayEvMouseMove);
        readPlaces(*parameters, event->imagePos, event->windowPos);
        adapter->postToView(event);
    } else if (isText(name, "notification.view") && code == "view.changed") {
        adapter->postToView(new QEvent(DisplayEvViewChanged));
    } else if (isText(name, "notification.image") && code == "processed") {
        DisplayImageProcessedEv event(paramInt(parameters, "result"));
        adapter->sendToView(event);
    }
    return 0;
}

std::int64_t DisplayAdapterQT::DisplayNotification::mouseDown(ParameterMap& parameters)
{
    if (!isLeftButton(parameters)) {
        adapter->postToView(new QEvent(DisplayEvContextMenu));
        return 0;
    }
    // A left press and its release are delivered at once, on the viewer's thread.
    DisplayMouseEv event(DisplayEvMouseDown);
    readPlaces(parameters, event.imagePos, event.windowPos);
    adapter->sendToView(event);
    return event.result;
}

std::int64_t DisplayAdapterQT::DisplayNotification::mouseUp(ParameterMap& parameters)
{
    if (!isLeftButton(parameters))
        return 0;
    DisplayMouseEv event(DisplayEvMouseUp);
    readPlaces(parameters, event.imagePos, event.windowPos);
    adapter->sendToView(event);
    return 0;
}
