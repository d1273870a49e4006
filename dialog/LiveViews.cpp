#include "dialog/CFFCUtility.h"

#include "dialog/DialogUse.h"
#include "dialog/LocalRecord.h"
#include "dialog/Message.h"
#include "dialog/WaitCursor.h"
#include "display/DisplayAdapter.h"
#include "display/DisplaySettings.h"
#include "display/ParameterText.h"
#include "engine/Allocation.h"
#include "engine/pix/PixConvert.h"
#include "image/HighLightProcessor.h"

#include <QCheckBox>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

/// For so many milliseconds after a change of a view that is taken up, further ones are dropped.
constexpr int ViewThrottle = 50;

/// A scale that is not above this one moves no other view.
constexpr double SmallestScale = 1e-5;

void showIn(DisplayAdapter* adapter, _ZorImage& record)
{
    adapter->prepareImage(&record, false);
    adapter->displayImage(&record);
    zorRelease(record.data);
    record.data = nullptr;
}

/// The viewer that gets its address owns it. Without a viewer it is lost: deliberate, see docs/decisions.md.
HighLightProcessor* newHighLight()
{
    return new HighLightProcessor;
}

} // namespace

void CFFCUtility::ShowAll()
{
    const zor::DialogUse use(*this);
    // It ends after the lock.
    zor::WaitCursor cursor;
    if (!m_image || !m_flatY)
        return;
    const std::lock_guard<zor::OwnedMutex> viewLock(m_viewLock);
    // Before the first show the wait cursor stays: deliberate, see docs/decisions.md.
    if (!m_adapterUp || !m_adapterDown) {
        cursor.leaveSet();
        return;
    }
    // While the lock was another thread's, that one may have dropped the frame.
    const std::uint16_t* corrected = ui.chBShowY->isChecked() ? m_flatY : m_flatX;
    if (!m_image || !m_flatY || !corrected)
        return;

    _ZorImage upper =
        zor::localRecord(m_width, m_height, m_step, static_cast<std::uint32_t>(m_imageBytes), m_pixelFormat);
    upper.data = static_cast<std::uint8_t*>(zorAllocate(upper.imageSize));
    if (!upper.data) {
        cursor.restore();
        zor::showNotEnoughMemory();
        return;
    }
    std::memcpy(upper.data, m_image, upper.imageSize);

    _ZorImage lower = upper;
    // The narrowing writes all pixels of the host's size, also when the converter delivered less.
    lower.data =
        static_cast<std::uint8_t*>(zorAllocate(zor::coveringBytes(lower, lower.width, lower.height)));
    if (!lower.data) {
        // The upper block is lost here: deliberate, see docs/decisions.md.
        cursor.restore();
        zor::showNotEnoughMemory();
        return;
    }
    FillLowerImage(lower, corrected);

    showIn(m_adapterUp, upper);
    showIn(m_adapterDown, lower);
    if (m_columnLine && m_rowLine && m_flatColumnLine && m_flatRowLine)
        RefreshPlots();
}

void CFFCUtility::FillLowerImage(_ZorImage& lower, const std::uint16_t* corrected)
{
    if (lower.depth == 8) {
        // The step of m_flatY whichever buffer is shown: both have the same.
        zor::pixNarrow16uTo8u(corrected, m_flatYStep, lower.data, static_cast<std::int32_t>(lower.pitch),
                              {m_width, m_height});
        return;
    }
    // One block whatever the frame's step is. Where the frame is longer than the cells the rest is black.
    const std::size_t cells = static_cast<std::size_t>(m_flatYStep) * static_cast<std::size_t>(m_height);
    const std::size_t copied = std::min<std::size_t>(cells, lower.imageSize);
    std::memcpy(lower.data, corrected, copied);
    std::memset(lower.data + copied, 0, lower.imageSize - copied);
}

void CFFCUtility::highLightSlot()
{
    const bool on = ui.chBHighlights->isChecked();
    using Request = zor::DeferredRequests::Request;
    if (!Deferred(on ? Request::HighlightsOn : Request::HighlightsOff))
        SetHighlights(on);
}

void CFFCUtility::SetHighlights(bool on)
{
    const zor::DialogUse use(*this);
    const auto viewerSettings = [this] { return m_adapterUp ? m_adapterUp->viewerSettings() : nullptr; };
    if (on) {
        // The one before is forgotten, not deleted: a processor belongs to its viewer.
        m_highLight = newHighLight();
        const ZorImgProcessor* processor = m_highLight;
        const std::string address = textFromPointer(processor);
        if (DisplaySettings* settings = viewerSettings())
            settings->setText("processor", address.c_str());
        if (DisplaySettings* settings = viewerSettings())
            settings->run("processing.proc.add");
    } else if (DisplaySettings* settings = viewerSettings()) {
        settings->run("processing.proc.del");
    }
    ShowAll();
}

void CFFCUtility::onViewChanged(DisplayView* view)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    // The clock restarts before any lock is tried: a change that then finds a lock busy is lost as well.
    if (m_viewClock.elapsed() < ViewThrottle)
        return;
    m_viewClock.restart();
    QT_WARNING_POP
    const zor::DialogUse use(*this);
    const std::unique_lock<zor::OwnedMutex> viewLock(m_viewLock, std::try_to_lock);
    if (!viewLock || !m_adapterUp || !m_adapterDown)
        return;
    const std::unique_lock<zor::OwnedMutex> dataLock(m_dataLock, std::try_to_lock);
    if (!dataLock)
        return;

    const bool fromUpper = view == ui.gVUp;
    DisplayAdapter* source = fromUpper ? m_adapterUp : m_adapterDown;
    DisplayAdapter* target = fromUpper ? m_adapterDown : m_adapterUp;

    // A view that can't give its rectangle sends the other one to the top left corner.
    QRect shown(0, 0, 0, 0);
    source->viewImageRect(&shown);
    const _ZorImage* image = source->stageImage(0);
    if (!image || image->width == 0 || image->height == 0)
        return;
    DisplaySettings* settings = source->viewerSettings();
    double scale = 0.0;
    if (!settings || !settings->getDouble("display.view.scale", &scale) || !(scale > SmallestScale))
        return;
    target->viewScale(scale);
    target->viewAt((shown.x() + shown.width() * 0.5) / image->width,
                   (shown.y() + shown.height() * 0.5) / image->height);
}
