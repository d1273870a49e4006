#include "dialog/CFFCUtility.h"
#include "dialog/DialogUse.h"
#include "display/DisplayAdapterQT.h"
#include "splitter/CGridSplitter.h"

#include <QCloseEvent>
#include <QResizeEvent>
#include <QShowEvent>

#include <mutex>

namespace {

/// Below this height of the dialog, in pixels, and no wider than the strip, its areas stay where they are.
constexpr int SmallestArrangedHeight = 30;

} // namespace

void CFFCUtility::resizeEvent(QResizeEvent* event)
{
    if (event) {
        const int width = event->size().width();
        const int height = event->size().height();
        const int stripHeight = ui.wSettings->height();
        if (width > ui.wSettings->width() || height > SmallestArrangedHeight) {
            m_grid->resize(width, height - stripHeight);
            ui.wSettings->move(0, height - stripHeight);
            ui.wSettings->resize(width, stripHeight);
        }
    }
    QDialog::resizeEvent(event);
}

void CFFCUtility::closeEvent(QCloseEvent* event)
{
    const zor::DialogUse use(*this);
    if (m_hostCallback)
        m_hostCallback(m_hostContext, ZBKEventDialogClosed, m_plugIn);
    m_shown = false;
    event->accept();
}

void CFFCUtility::showEvent(QShowEvent* event)
{
    const zor::DialogUse use(*this);
    // A show from within a refresh finds the adapters made.
    if (!m_viewLock.heldByThisThread()) {
        const std::lock_guard<zor::OwnedMutex> viewLock(m_viewLock);
        constexpr std::uint32_t Features =
            DisplayFeatureImageEvents | DisplayFeatureViewEvents | DisplayFeatureInspect;
        if (!m_adapterUp)
            m_adapterUp = new DisplayAdapterQT(ui.gVUp, false, Features);
        if (!m_adapterDown)
            m_adapterDown = new DisplayAdapterQT(ui.gVDown, false, Features);
    }
    if (!m_shown) {
        // The host may hand a frame over inside the notification; Update then computes and shows it.
        if (m_hostCallback)
            m_hostCallback(m_hostContext, ZBKEventDialogOpened, m_plugIn);
        Update();
        m_shown = true;
    }
    event->accept();
}
