#pragma once

#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>

/// A non-recursive mutex that knows its owner, so that a nested event loop on the owning thread finds it busy
/// instead of waiting for itself for ever. Serves std::lock_guard and std::unique_lock.
class OwnedMutex
{
public:
    OwnedMutex() = default;
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
    }

    bool heldByThisThread() const { return m_owner.load() == std::this_thread::get_id(); }

private:
    std::mutex m_mutex;
    std::atomic<std::thread::id> m_owner{};
};
