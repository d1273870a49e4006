#pragma once

#include "host/frames/Frame.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace zor {

/// A frame as a source delivers it.
struct SourceFrame
{
    /// Never null. Who holds the pointer owns the frame together with the other holders, as long as he likes;
    /// nobody changes it.
    std::shared_ptr<const Frame> frame;
    /// From 0 at each start. A gap counts the frames that were lost on their way.
    std::uint64_t number = 0;
    /// When the exposure began, or where the source does not know that, when the frame had arrived: in ns of
    /// std::chrono::steady_clock.
    std::int64_t timestamp = 0;
};

/// What went wrong: one line that says what it is and what to do.
struct SourceError
{
    std::string text;
    /// The source has ended by itself; it can be started again. Otherwise it goes on.
    bool hasEnded = false;
};

/// Delivers frames one after the other: a camera, or what takes its place. All functions may be called on any
/// thread, but for what start() and the destructor say.
class FrameSource
{
public:
    /// Called on the source's own thread, one at a time. The next frame is not made before the handler has
    /// returned. A handler throws nothing. It does not wait for a thread that is in start(), in stop() or in
    /// the destructor: that one waits for the handler.
    struct Handlers
    {
        std::function<void(SourceFrame)> frame;
        std::function<void(const SourceError&)> error;
    };

    FrameSource() = default;
    FrameSource(const FrameSource&) = delete;
    FrameSource& operator=(const FrameSource&) = delete;

    /// Stops. Not to be called on the source's own thread.
    virtual ~FrameSource() = default;

    /// What a person chooses the source by.
    virtual std::string name() const = 0;

    /// Begins to deliver. The source owns the handlers until it has stopped. What keeps it from delivering
    /// comes as an error. Throws std::logic_error when the source runs or when called on its own thread, and
    /// std::system_error when there is no thread to be had.
    virtual void start(Handlers handlers) = 0;

    /// After it has returned no handler runs any more and the handlers are destroyed; it waits for one that
    /// runs. Called within a handler it cannot wait for that one: it returns at once, the handler is the last
    /// to be called, and the handlers are destroyed after it has returned. Does nothing when the source is
    /// stopped.
    virtual void stop() = 0;
};

} // namespace zor
