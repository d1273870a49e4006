#include "dialog/DialogUse.h"

#include "dialog/CFFCUtility.h"

DialogUse::DialogUse(CFFCUtility& used)
    : m_dialog(used)
{
    ++m_dialog.m_uses;
}

DialogUse::~DialogUse()
{
    m_dialog.CarryOutRequests();
    --m_dialog.m_uses;
}
