#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace zor {

/// A non-recursive mutex that knows its owner, so that a nested event loop on the owning thread finds it busy
/// instead of waiting for itself for ever. Serves std::lock_guard and std::unique_lock.
class OwnedMutex
{
public:
    /// `afterUnlock` is called on the owner's thread each time that the mutex has been given back.
    explicit OwnedMutex(std::function<void()> afterUnlock = {})
        : m_afterUnlock(std::move(afterUnlock))
    {
    }
    OwnedMutex(const OwnedMutex&) = delete;
    OwnedMutex& operator=(const OwnedMutex&) = delete;

    /// Waits until the mutex is free. Raises std::system_error when this thread holds it.
    void lock()
    {
        if (heldByThisThread())
            throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        m_mutex.lock();
        m_owner = std::this_thread::get_id();
    }

    /// False while anybody holds the mutex, this thread as well.
    bool try_lock()
    {
        if (heldByThisThread() || !m_mutex.try_lock())
            return false;
        m_owner = std::this_thread::get_id();
        return true;
    }

    /// Raises std::system_error when this thread doesn't hold the mutex.
    void unlock()
    {
        if (!heldByThisThread())
            throw std::system_error(std::make_error_code(std::errc::operation_not_permitted));
        m_owner = std::thread::id();
        m_mutex.unlock();
        if (m_afterUnlock)
            m_afterUnlock();
    }

    bool heldByThisThread() const { return m_owner.load() == std::this_thread::get_id(); }

private:
    std::mutex m_mutex;
    std::atomic<std::thread::id> m_owner{};
    const std::function<void()> m_afterUnlock;
};

} // namespace zor
