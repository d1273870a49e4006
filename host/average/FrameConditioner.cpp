#include "host/average/FrameConditioner.h"

#include "host/average/DarkFrame.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace zor {

FrameConditioner::FrameConditioner(Settings settings)
    : m_settings(std::move(settings))
{
}

void FrameConditioner::setAveraged(std::uint32_t frames)
{
    checkedFrameCount(frames);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_wanted = frames;
    beginAverage();
}

void FrameConditioner::restart()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    beginAverage();
}

bool FrameConditioner::isAveraging() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_wanted > 1;
}

void FrameConditioner::setDark(std::shared_ptr<const Frame> dark, const CaptureSettings& settings)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_dark.keep(std::move(dark), settings);
}

void FrameConditioner::dropDark()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_dark.drop();
}

void FrameConditioner::setSubtractsDark(bool on)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_subtractsDark = on;
}

bool FrameConditioner::hasDark() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_dark.frame() != nullptr;
}

std::shared_ptr<const Frame> FrameConditioner::condition(std::shared_ptr<const Frame> frame)
{
    const CaptureSettings settings = m_settings(*frame);
    const std::lock_guard<std::mutex> lock(m_mutex);
    follow(settings);
    try {
        return subtract(averageWith(frame, settings));
    } catch (const std::length_error& tooMany) {
        m_notices.push_back(std::string("Frames are no longer averaged: ") + tooMany.what() + '.');
    } catch (const std::bad_alloc&) {
        m_notices.emplace_back("Frames are no longer averaged: there is no memory; average fewer frames.");
    }
    m_wanted = 1;
    beginAverage();
    return frame;
}

std::shared_ptr<const Frame> FrameConditioner::withoutDark(std::shared_ptr<const Frame> frame)
{
    const CaptureSettings settings = m_settings(*frame);
    const std::lock_guard<std::mutex> lock(m_mutex);
    return settings == m_dark.settings() ? subtract(std::move(frame)) : frame;
}

std::uint32_t FrameConditioner::averaged() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_average ? m_average->count() : 1;
}

std::vector<std::string> FrameConditioner::takeNotices()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_notices, {});
}

void FrameConditioner::follow(const CaptureSettings& settings)
{
    if (m_average && m_averaged && *m_averaged != settings) {
        m_notices.push_back("The average begins anew: " + firstDifference(settings, *m_averaged) + '.');
        beginAverage();
    }
    const std::string change = m_dark.follow(settings);
    if (!change.empty())
        m_notices.push_back("The dark frame was dropped: " + change + "; take another one.");
}

void FrameConditioner::beginAverage()
{
    m_averaged.reset();
    m_average.reset();
    if (m_wanted > 1)
        m_average.emplace(m_wanted);
}

std::shared_ptr<const Frame> FrameConditioner::averageWith(std::shared_ptr<const Frame> frame,
                                                           const CaptureSettings& settings)
{
    if (!m_average)
        return frame;
    m_averaged = settings;
    m_average->add(std::move(frame));
    return std::make_shared<const Frame>(m_average->mean());
}

std::shared_ptr<const Frame> FrameConditioner::subtract(std::shared_ptr<const Frame> frame) const
{
    if (!m_subtractsDark || !m_dark.frame())
        return frame;
    return std::make_shared<const Frame>(subtractDark(*frame, *m_dark.frame()));
}

} // namespace zor
