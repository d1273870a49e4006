#include "host/average/KeptFrame.h"

#include <utility>

namespace zor {

void KeptFrame::keep(std::shared_ptr<const Frame> frame, const CaptureSettings& settings)
{
    m_frame = std::move(frame);
    m_settings = settings;
}

void KeptFrame::drop()
{
    m_frame.reset();
}

std::string KeptFrame::follow(const CaptureSettings& settings)
{
    if (!m_frame || settings == m_settings)
        return {};
    drop();
    return firstDifference(settings, m_settings);
}

} // namespace zor
