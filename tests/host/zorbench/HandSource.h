#pragma once

#include "host/source/FrameSource.h"

#include <system_error>
#include <thread>

/// A source whose frames and errors come when the test says so, on a thread of their own that has ended when
/// the call returns.
class HandSource : public zor::FrameSource
{
public:
    std::string name() const override { return "Hand"; }

    void start(Handlers handlers) override
    {
        if (hasNoThread)
            throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
        m_handlers = std::move(handlers);
        m_isRunning = true;
    }

    void stop() override
    {
        m_handlers = {};
        m_isRunning = false;
    }

    bool isRunning() const { return m_isRunning; }

    void send(std::uint64_t number,
              const std::shared_ptr<const zor::Frame>& frame = std::make_shared<const zor::Frame>())
    {
        // They may stop the source.
        std::thread([handlers = m_handlers, number, &frame] { handlers.frame({frame, number, 0}); }).join();
    }

    void fail(const char* text, bool hasEnded)
    {
        std::thread([handlers = m_handlers, text, hasEnded] { handlers.error({text, hasEnded}); }).join();
    }

    bool hasNoThread = false;

private:
    Handlers m_handlers;
    bool m_isRunning = false;
};
