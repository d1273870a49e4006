#pragma once

#include "host/average/KeptFrame.h"
#include "host/average/SlidingAverage.h"

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace zor {

/// What is done with the frames of a stream before anybody sees them: they are averaged over the last ones
/// and freed of what the sensor shows in the dark, in this order. All functions may be called on any thread.
///
/// A change of size, format, exposure or gain begins the average anew and drops the dark frame; a notice says
/// so.
class FrameConditioner
{
public:
    /// How a frame was taken; called on the thread of condition().
    using Settings = std::function<CaptureSettings(const Frame&)>;

    explicit FrameConditioner(Settings settings);

    /// Each frame becomes the average of the last so many, from 1 to MostAveragedFrames; 1 leaves frames as
    /// they are. Throws std::invalid_argument for another number. The average begins anew.
    void setAveraged(std::uint32_t frames);

    /// The next frame is the first of an average.
    void restart();
    bool isAveraging() const;

    /// What is subtracted while setSubtractsDark() is on.
    void setDark(std::shared_ptr<const Frame> dark, const CaptureSettings& settings);
    void setSubtractsDark(bool on);
    bool hasDark() const;

    /// The frame that takes the place of this one, never null. When there is no memory for it, it is the same
    /// frame, and a notice says so.
    std::shared_ptr<const Frame> condition(std::shared_ptr<const Frame> frame);

    void dropDark();

    /// A frame that is an average already, freed of the dark where both were taken alike. Drops nothing.
    std::shared_ptr<const Frame> withoutDark(std::shared_ptr<const Frame> frame);

    /// How many frames the last one is the average of.
    std::uint32_t averaged() const;

    /// What was dropped or cannot be done, a sentence each, since this was asked the last time.
    std::vector<std::string> takeNotices();

private:
    void follow(const CaptureSettings& settings);
    void beginAverage();
    std::shared_ptr<const Frame> averageWith(std::shared_ptr<const Frame> frame,
                                             const CaptureSettings& settings);
    std::shared_ptr<const Frame> subtract(std::shared_ptr<const Frame> frame) const;

    const Settings m_settings;
    mutable std::mutex m_mutex; ///< guards the rest
    std::uint32_t m_wanted = 1;
    std::optional<SlidingAverage> m_average;
    std::optional<CaptureSettings> m_averaged; ///< what the frames of the average were taken with
    KeptFrame m_dark;
    bool m_subtractsDark = false;
    std::vector<std::string> m_notices;
};

} // namespace zor
