#pragma once

#include "host/average/CaptureSettings.h"

#include <memory>

namespace zor {

/// A frame that is used for as long as frames are taken with the settings that it was taken with: an average,
/// or a dark frame.
class KeptFrame
{
public:
    /// In place of the one that was kept.
    void keep(std::shared_ptr<const Frame> frame, const CaptureSettings& settings);

    void drop();

    /// Null when none is kept.
    const std::shared_ptr<const Frame>& frame() const { return m_frame; }

    /// What the frame was taken with; of the last one when none is kept any more.
    const CaptureSettings& settings() const { return m_settings; }

    /// From now on frames are taken with these settings. Drops a frame that was taken with others and answers
    /// what firstDifference() says; otherwise nothing changes and the answer is empty.
    std::string follow(const CaptureSettings& settings);

private:
    std::shared_ptr<const Frame> m_frame;
    CaptureSettings m_settings;
};

} // namespace zor
