#pragma once

#include <QString>
#include <QtPlugin>

#include <cstddef>
#include <cstdint>

struct _ZorImage;
class ZBKInterfacePlugIn;

/// The host's notification function: the context that the host gave, one of the codes below, the plug-in that
/// calls. The result is ignored.
using ZBKHostCallback = int (*)(void* context, std::uint32_t code, ZBKInterfacePlugIn* plugIn);

/// The dialog was closed.
constexpr std::uint32_t ZBKEventDialogClosed = 0x4002;
/// The dialog is being shown, for the first time or after a close, and has computed nothing yet: a frame that
/// the host hands over inside this notification is the one that the dialog opens on.
constexpr std::uint32_t ZBKEventDialogOpened = 0x4003;

/// What a host tells of itself. Order and widths are binding; the meaning of the fields is the host's own.
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
class ZBKInterfacePlugIn
{
public:
    virtual ~ZBKInterfacePlugIn() {}

    /// Makes the plug-in ready and stores whom to notify; the callback may be null. Answers 0.
    virtual int Init(ZBKHostCallback callback, void* context) = 0;
    /// Gives up everything that Init made. Answers 0.
    virtual int Release() = 0;
    /// Shows or closes the plug-in's window. Answers 0, or 4 before Init.
    virtual int Show(bool visible) = 0;
    /// The display name.
    virtual QString Name() { return m_name; }
    /// Hands a frame over; it stays the host's. Nothing is computed before Update. Answers 0.
    virtual int SetImage(_ZorImage* image) = 0;
    virtual void SetHostInfo(ZBKHostInfo) {}
    /// Computes on the frame that is held. Answers 0.
    virtual int Update() = 0;
    /// Stores a result through `result` when there is one. Answers 0.
    virtual int GetResult(void** result) = 0;
    virtual bool HasResult() = 0;
    /// Drops the frame and what was computed from it.
    virtual void Reset() = 0;

protected:
    QString m_name;
};

#define ZBKInterfacePlugIn_iid "com.zorlabs.ZorBench.ZBKInterfacePlugIn/1.0"
Q_DECLARE_INTERFACE(ZBKInterfacePlugIn, ZBKInterfacePlugIn_iid)
