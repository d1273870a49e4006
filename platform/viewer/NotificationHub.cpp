#include "platform/viewer/NotificationHub.h"

#include "display/ZorDisplayCommand.h"

#include <algorithm>

namespace zor::viewer {
void NotificationHub::add(ZorDisplayCommand* listener)
{
    if (std::find(m_listeners.begin(), m_listeners.end(), listener) == m_listeners.end())
        m_listeners.push_back(listener);
}

// Each listener gets a map of its own, which it may write into, and may register others meanwhile.
void NotificationHub::send(const char* name, const ParameterMap& parameters)
{
    const std::vector<ZorDisplayCommand*> listeners = m_listeners;
    const std::weak_ptr<const int> alive = life();
    for (ZorDisplayCommand* listener : listeners) {
        if (alive.expired())
            return;
        ParameterMap own = parameters;
        listener->notify(name, &own);
    }
}

void NotificationHub::viewChanged()
{
    if (m_viewFlags & ViewChanges)
        send("notification.view", {{"code", "view.changed"}});
}

void NotificationHub::processed(int result)
{
    if (m_imageFlags & Processed)
        send("notification.image", {{"code", "processed"}, {"result", std::to_string(result)}});
}

void NotificationHub::mouse(const char* code, const Pointer& pointer, ViewFlag flag)
{
    if (!(m_viewFlags & flag))
        return;
    ParameterMap parameters{{"code", code},
                            {"img.x", std::to_string(pointer.image.x())},
                            {"img.y", std::to_string(pointer.image.y())},
                            {"win.x", std::to_string(pointer.window.x())},
                            {"win.y", std::to_string(pointer.window.y())}};
    if (flag == MouseButtons)
        parameters["left"] = pointer.isLeft ? "1" : "0";
    send("notification.mouse", parameters);
}

void NotificationHub::mouseDown(const Pointer& pointer)
{
    mouse("mouse.down", pointer, MouseButtons);
}
void NotificationHub::mouseUp(const Pointer& pointer)
{
    mouse("mouse.up", pointer, MouseButtons);
}
void NotificationHub::mouseMove(const Pointer& pointer)
{
    mouse("mouse.move", pointer, MouseMoves);
}
} // namespace zor::viewer
