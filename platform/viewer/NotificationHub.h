#pragma once

#include "display/ParameterMap.h"

#include <QPoint>

#include <memory>
#include <vector>

class ZorDisplayCommand;

namespace zor::viewer {
/// Sends the viewer's notifications to everybody who registered, on the GUI thread.
class NotificationHub
{
public:
    enum ViewFlag
    {
        ViewChanges = 1,
        MouseButtons = 2,
        MouseMoves = 4
    };
    enum ImageFlag
    {
        Processed = 1
    };

    /// Expired when the hub is gone: a listener may have deleted the viewer in a notification, after which
    /// its sender must not touch anything any more.
    std::weak_ptr<const int> life() const { return m_life; }

    /// A second registration of the same address changes nothing.
    void add(ZorDisplayCommand* listener);

    /// Which notifications of the view are sent; before the first call those of the mouse alone.
    void setViewFlags(int flags) { m_viewFlags = flags; }
    void setImageFlags(int flags) { m_imageFlags = flags; }

    void viewChanged();
    void processed(int result);

    struct Pointer
    {
        bool isLeft;   ///< of the button
        QPoint image;  ///< image pixel below the pointer, also beyond the image's edges
        QPoint window; ///< pixel of the view widget
    };
    void mouseDown(const Pointer& pointer);
    void mouseUp(const Pointer& pointer);
    void mouseMove(const Pointer& pointer);

private:
    void mouse(const char* code, const Pointer& pointer, ViewFlag flag);
    void send(const char* name, const ParameterMap& parameters);

    std::vector<ZorDisplayCommand*> m_listeners;
    std::shared_ptr<const int> m_life = std::make_shared<const int>(0);
    int m_viewFlags = MouseButtons | MouseMoves;
    int m_imageFlags = 0;
};
} // namespace zor::viewer
