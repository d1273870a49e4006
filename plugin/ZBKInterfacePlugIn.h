#pragma once

#include <QString>
#include <QtPlugin>

#include <cstddef>
#include <cstdint>

struct _ZorImage;
class ZBKInterfacePlugIn;

/// The host's notification function: the context that the host gave, one of the codes below, the plug-in that
/// calls. The result is ignored. It comes on the GUI thread, from within Show or an event of the window,
/// never after Release. Every operation of the plug-in may be called from within, but neither the plug-in
/// object nor its library may go.
using ZBKHostCallback = int (*)(void* context, std::uint32_t code, ZBKInterfacePlugIn* plugIn);

/// The dialog was closed.
constexpr std::uint32_t ZBKEventDialogClosed = 0x4002;
/// The dialog is being shown, for the first time or after a close, and has computed nothing yet: a frame that
/// the host hands over inside this notification is the one that the dialog opens on.
constexpr std::uint32_t ZBKEventDialogOpened = 0x4003;

/// What a host reports of itself. Order and widths are binding; the meaning of the fields is the host's own.
struct ZBKHostInfo
{
    std::uint32_t leadingWords[3] = {};
    std::uint8_t value = 0;
    std::uint32_t trailingWords[6] = {};
    QString text;
};

static_assert(offsetof(ZBKHostInfo, leadingWords) == 0 && offsetof(ZBKHostInfo, value) == 12);
static_assert(offsetof(ZBKHostInfo, trailingWords) == 16 && offsetof(ZBKHostInfo, text) == 40);

/// The interface between a host and a plug-in. A host calls by position, so the order of the virtual
/// operations is binding. The few bodies are inline: hosts and tests link without the plug-in.
///
/// Every operation belongs on the GUI thread while the application lives; Reset alone may come from another
/// thread. Every operation may be called at any time after the plug-in object was made: before Init and after
/// Release they do nothing, unless their comment says otherwise. SetImage, Update and Show run event loops of
/// their own, for message boxes and views, and so does the window when the operator uses it. What the host
/// calls from within such a loop is carried out too, as described below.
///
/// The plug-in object is the loader's, or the host's that deletes it: that releases. It must not be deleted,
/// nor the library unloaded, while an operation of the plug-in, an event of its window or a message box is on
/// the stack. A host that ends its application without Release loses the window with it.
class ZBKInterfacePlugIn
{
public:
    virtual ~ZBKInterfacePlugIn() {}

    /// Makes the plug-in ready and stores whom to notify; the callback may be null, and the context stays the
    /// host's until Release or the next Init. Needs the application. Again it replaces both and hides a
    /// window that is visible, without a notification. Answers 0.
    virtual int Init(ZBKHostCallback callback, void* context) = 0;
    /// Gives up everything that Init made: from now on nobody is notified, and the plug-in is as before Init.
    /// The window goes at once; called from within one of its operations, it goes when that has returned.
    /// Answers 0.
    virtual int Release() = 0;
    /// Shows or closes the plug-in's window. Notifies of both from within. A window that opens computes on
    /// the frame that is held and refreshes the views, as Update does. Answers 0, or 4 before Init.
    virtual int Show(bool visible) = 0;
    /// The display name, also before Init. The copy is the host's and may outlive the library.
    virtual QString Name() { return m_name; }
    /// Hands a frame over, which is copied: record and pixels stay the host's and are free to go on return.
    /// The frame before is dropped. Nothing is computed before Update. A null record, null pixels or a size
    /// of 0 is ignored, and so is any frame that comes in during a refresh of the views. Answers 0.
    virtual int SetImage(_ZorImage* image) = 0;
    /// Hands a copy of the host's record over.
    virtual void SetHostInfo(ZBKHostInfo) {}
    /// Computes on the frame that is held and refreshes the views. From within a refresh it is done after
    /// that, once, however often it was called. Answers 0.
    virtual int Update() = 0;
    /// Stores a result through `result`, which is not null, when there is one; else the slot stays as it is.
    /// Answers 0.
    virtual int GetResult(void** result) = 0;
    /// Whether there is a result.
    virtual bool HasResult() = 0;
    /// Drops the frame and what was computed from it; window and settings stay. From within a refresh it is
    /// done after that, and an Update that still waits is dropped with the frame. From another thread it
    /// waits for a refresh, but not for the computing before it: SetImage, Update, a Show that opens the
    /// window, and the operator's click on "Update". A host that cannot rule these out calls it on the GUI
    /// thread.
    virtual void Reset() = 0;

protected:
    QString m_name;
};

#define ZBKInterfacePlugIn_iid "com.zorlabs.ZorBench.ZBKInterfacePlugIn/1.0"
Q_DECLARE_INTERFACE(ZBKInterfacePlugIn, ZBKInterfacePlugIn_iid)
