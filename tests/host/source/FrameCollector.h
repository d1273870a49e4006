#pragma once

#include "host/source/FrameSource.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// Keeps what a source delivers, and waits for it. Waits end after a minute, in vain.
class FrameCollector
{
public:
    /// Calls `onFrame` and `onError` first, on the source's thread.
    zor::FrameSource::Handlers handlers(
        std::function<void(const zor::SourceFrame&)> onFrame = [](const zor::SourceFrame&) {},
        std::function<void(const zor::SourceError&)> onError = [](const zor::SourceError&) {})
    {
        const auto token = std::make_shared<Token>(*this);
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_alive;
        return {[this, token, onFrame](const zor::SourceFrame& frame) {
                    onFrame(frame);
                    const std::lock_guard<std::mutex> adding(m_mutex);
                    m_frames.push_back(frame);
                    m_changed.notify_all();
                },
                [this, token, onError](const zor::SourceError& error) {
                    onError(error);
                    const std::lock_guard<std::mutex> adding(m_mutex);
                    m_errors.push_back(error);
                    m_changed.notify_all();
                }};
    }

    bool waitForFrames(std::size_t count)
    {
        return waitFor([&] { return m_frames.size() >= count; });
    }
    bool waitForError()
    {
        return waitFor([&] { return !m_errors.empty(); });
    }
    /// Until no handlers are left: then none is called any more.
    bool waitForTheEnd()
    {
        return waitFor([&] { return m_alive == 0; });
    }
    bool hasEnded() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_alive == 0;
    }

    std::vector<zor::SourceFrame> frames() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_frames;
    }
    std::vector<zor::SourceError> errors() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_errors;
    }

private:
    /// Part of the handlers: goes when they do.
    struct Token
    {
        explicit Token(FrameCollector& of)
            : collector(of)
        {
        }
        ~Token()
        {
            const std::lock_guard<std::mutex> lock(collector.m_mutex);
            --collector.m_alive;
            collector.m_changed.notify_all();
        }
        FrameCollector& collector;
    };

    template <typename Condition> bool waitFor(Condition condition)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::minutes(1), condition);
    }

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<zor::SourceFrame> m_frames;
    std::vector<zor::SourceError> m_errors;
    int m_alive = 0;
};
