#include "dialog/DialogUse.h"

#include "dialog/CFFCUtility.h"

namespace zor {

DialogUse::DialogUse(CFFCUtility& used, Deletion when)
    : m_dialog(used)
    , m_deletion(when)
{
    ++m_dialog.m_uses;
}

DialogUse::~DialogUse()
{
    m_dialog.CarryOutRequests();
    if (--m_dialog.m_uses != 0)
        return;
    if (m_deletion == Deletion::AtOnce)
        delete &m_dialog;
    else
        m_dialog.deleteLater();
}

} // namespace zor
