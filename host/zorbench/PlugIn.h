#pragma once

#include "host/frames/Frame.h"
#include "plugin/ZBKInterfacePlugIn.h"

#include <QObject>

#include <memory>

namespace zor {

/// One plug-in at work, driven through its interface alone. Its window opens on the current frame and follows
/// it while it is open.
///
/// The plug-in runs event loops of its own, for views and boxes, so that any operation may come in while
/// another one is on the stack.
class PlugIn : public QObject
{
    Q_OBJECT

public:
    /// Makes the plug-in ready. Its object stays the loader's.
    explicit PlugIn(ZBKInterfacePlugIn& plugIn, QObject* parent = nullptr);
    /// Releases it. Must not run while an operation is on the stack.
    ~PlugIn() override;

    QString name() const;
    /// Its window was opened and has not been closed since.
    bool isOpen() const { return m_isOpen; }

    /// Opens the window on the current frame. One that is open goes over to it and is shown again where it
    /// was hidden without being closed.
    void open();
    /// The current frame, which an open window goes over to.
    void setFrame(std::shared_ptr<const Frame> frame);
    /// The current frame, while an open window stays on the one that it has.
    void offerFrame(std::shared_ptr<const Frame> frame);
    /// Brings an open window to the current frame.
    void catchUp();
    /// Gives up the window, whatever it is doing. Nothing more can be done with the plug-in afterwards.
    void release();

signals:
    void openChanged(bool isOpen);

private:
    static int notified(void* context, std::uint32_t code, ZBKInterfacePlugIn* plugIn);
    void setOpen(bool isOpen);
    /// Gives the current frame to the plug-in, which computes nothing yet.
    void handOver();
    /// Does what is due, unless an operation is on the stack, which does it then.
    void follow();

    ZBKInterfacePlugIn& m_plugIn;
    std::shared_ptr<const Frame> m_frame;
    bool m_isOpen = false;
    bool m_isReleased = false;
    bool m_isBehind = false; ///< the plug-in has not been given the current frame
    bool m_isDue = false;    ///< an open window is to go over to it
    bool m_isCalling = false;
};

} // namespace zor
