#pragma once

class CFFCUtility;

namespace zor {

/// Lives on the stack of each operation of the dialog inside which others may run: the host in a
/// notification, anybody in an event loop of a refresh or a box.
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
