#pragma once

class CFFCUtility;

namespace zor {

/// Made on the stack by each operation of the dialog during which other code may run: the host in a
/// notification, anybody in the event loop of a refresh or a box.
///
/// Its end carries out the requests that waited for the view lock, when this thread no longer holds it: then
/// the wait cursor of the operation is gone too. The end of the last use deletes a dialog that its owner has
/// discarded meanwhile.
class DialogUse
{
public:
    enum class Deletion
    {
        Later, ///< from the event loop: functions of Qt may still be at work on the dialog
        AtOnce
    };

    explicit DialogUse(CFFCUtility& used, Deletion when = Deletion::Later);
    ~DialogUse();
    DialogUse(const DialogUse&) = delete;
    DialogUse& operator=(const DialogUse&) = delete;

private:
    CFFCUtility& m_dialog;
    const Deletion m_deletion;
};

} // namespace zor
