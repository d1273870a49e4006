#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace zor {

/// The thread of a source: what FrameSource says about start() and stop() is kept here.
class SourceThread
{
public:
    using Time = std::chrono::steady_clock::time_point;

    SourceThread() = default;
    SourceThread(const SourceThread&) = delete;
    SourceThread& operator=(const SourceThread&) = delete;

    /// Stops. Not to be called on the thread itself.
    ~SourceThread();

    /// Runs `work`, which is to return when waitUntil() is false, or after it has called stop() itself. It is
    /// destroyed with the end of the thread.
    /// Throws std::logic_error when the thread runs and nobody has asked it to stop, and on the thread
    /// itself; std::system_error when there is none to be had.
    void start(std::function<void()> work);

    /// Asks the thread to stop and waits for its end; on the thread itself it only asks.
    void stop();

    /// Waits until `due()` is not after now. False when the thread is to stop. `due` is called again after
    /// each wake().
    template <typename Due> bool waitUntil(Due due)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        while (!m_isStopping) {
            const Time time = due();
            if (time <= std::chrono::steady_clock::now())
                return true;
            m_changed.wait_until(lock, time);
        }
        return false;
    }

    /// What `due` of a wait goes by has changed.
    void wake();

private:
    bool isThisThread() const;
    void askToStop();
    void join();

    /// One start() or stop() at a time. Never taken on the thread itself.
    std::mutex m_control;
    std::thread m_thread;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isStopping = false;
    std::atomic<std::thread::id> m_id{};
};

} // namespace zor
