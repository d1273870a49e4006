#include "dialog/CFFCUtility.h"
#include "dialog/DialogUse.h"
#include "display/DisplayAdapterQT.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QThread>

#include <mutex>

bool CFFCUtility::Deferred(zor::DeferredRequests::Request request)
{
    if (!m_viewLock.heldByThisThread())
        return false;
    m_requests.add(request);
    return true;
}

void CFFCUtility::ViewLockReleased()
{
    if (m_uses == 1)
        CarryOutRequests();
}

void CFFCUtility::CarryOutRequests()
{
    // Another thread that gives the lock back leaves the requests to the thread that they came in on.
    if (QThread::currentThread() != thread() || m_viewLock.heldByThisThread())
        return;
    using Request = zor::DeferredRequests::Request;
    m_requests.carryOut([this](Request request) {
        if (request == Request::Reset)
            ResetData(false);
        else if (request == Request::Update)
            Update();
        else
            SetHighlights(request == Request::HighlightsOn);
    });
}

void CFFCUtility::ResetData(bool destroyAdapters)
{
    if (!destroyAdapters && Deferred(zor::DeferredRequests::Request::Reset))
        return;
    const zor::DialogUse use(*this);
    const std::lock_guard<zor::OwnedMutex> viewLock(m_viewLock);
    const std::lock_guard<zor::OwnedMutex> dataLock(m_dataLock);
    if (destroyAdapters) {
        delete m_adapterUp;
        m_adapterUp = nullptr;
        delete m_adapterDown;
        m_adapterDown = nullptr;
    }
    ResetFrame();
}

void CFFCUtility::Update()
{
    if (Deferred(zor::DeferredRequests::Request::Update))
        return;
    const zor::DialogUse use(*this);
    if (!m_image)
        return;
    m_normalize = ui.chBNormFFC->isChecked() ? 1 : 0;
    m_normalizeValue = ui.lENormFFC->text().toDouble();
    if (RunCorrection())
        ShowAll();
}
