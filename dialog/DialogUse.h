#pragma once

class CFFCUtility;

/// Stands on the stack of each operation of the dialog inside which others may run: the host in a
/// notification, anybody in an event loop of a refresh or a box.
///
/// Its end carries out the requests that waited for the view lock, when this thread no longer holds it: then
/// the wait cursor of the operation is gone too.
class DialogUse
{
public:
    explicit DialogUse(CFFCUtility& used);
    ~DialogUse();
    DialogUse(const DialogUse&) = delete;
    DialogUse& operator=(const DialogUse&) = delete;

private:
    CFFCUtility& m_dialog;
};
