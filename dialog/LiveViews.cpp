#include "dialog/CFFCUtility.h"

namespace {

/// Changes of a view that come sooner after the last one, in milliseconds, are dropped.
constexpr int ViewThrottle = 50;

} // namespace

void CFFCUtility::ShowAll()
{
    const std::lock_guard<OwnedMutex> viewLock(m_viewLock);
}

void CFFCUtility::highLightSlot()
{
    // A click can come in while a refresh runs a nested event loop on this thread.
    if (m_viewLock.heldByThisThread())
        return;
    ShowAll();
}

void CFFCUtility::onViewChanged(DisplayView*)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    // The clock restarts before any lock is tried: a change that then finds a lock busy is lost as well.
    if (m_viewClock.elapsed() < ViewThrottle)
        return;
    m_viewClock.restart();
    QT_WARNING_POP
    const std::unique_lock<OwnedMutex> viewLock(m_viewLock, std::try_to_lock);
    if (!viewLock || !m_adapterUp || !m_adapterDown)
        return;
    const std::unique_lock<OwnedMutex> dataLock(m_dataLock, std::try_to_lock);
}
