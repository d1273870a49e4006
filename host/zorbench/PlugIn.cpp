#include "host/zorbench/PlugIn.h"

#include <utility>

namespace zor {

PlugIn::PlugIn(ZBKInterfacePlugIn& plugIn, QObject* parent)
    : QObject(parent)
    , m_plugIn(plugIn)
{
    m_plugIn.Init(notified, this);
}

PlugIn::~PlugIn()
{
    release();
}

QString PlugIn::name() const
{
    return m_plugIn.Name();
}

void PlugIn::open()
{
    if (m_isReleased || m_isCalling)
        return;
    m_isDue = m_isBehind;
    m_isCalling = true;
    m_plugIn.Show(true);
    m_isCalling = false;
    follow();
}

void PlugIn::setFrame(std::shared_ptr<const Frame> frame)
{
    offerFrame(std::move(frame));
    catchUp();
}

void PlugIn::offerFrame(std::shared_ptr<const Frame> frame)
{
    m_frame = std::move(frame);
    m_isBehind = true;
}

void PlugIn::catchUp()
{
    m_isDue = m_isBehind;
    follow();
}

void PlugIn::release()
{
    if (std::exchange(m_isReleased, true))
        return;
    // Nobody is notified of the end of an open window.
    m_plugIn.Release();
    setOpen(false);
}

int PlugIn::notified(void* context, std::uint32_t code, ZBKInterfacePlugIn*)
{
    auto* self = static_cast<PlugIn*>(context);
    if (code == ZBKEventDialogOpened) {
        // The window computes and shows what it has when this returns.
        self->handOver();
        self->setOpen(true);
    } else if (code == ZBKEventDialogClosed) {
        self->setOpen(false);
    }
    return 0;
}

void PlugIn::setOpen(bool isOpen)
{
    if (std::exchange(m_isOpen, isOpen) != isOpen)
        emit openChanged(isOpen);
}

void PlugIn::handOver()
{
    m_isBehind = false;
    m_isDue = false;
    if (!m_frame)
        return;
    _ZorImage record = m_frame->record();
    m_plugIn.SetImage(&record);
}

void PlugIn::follow()
{
    if (m_isCalling)
        return;
    m_isCalling = true;
    while (m_isDue && m_isOpen) {
        const std::shared_ptr<const Frame> frame = m_frame;
        handOver();
        m_plugIn.Update();
    }
    m_isCalling = false;
}

} // namespace zor
