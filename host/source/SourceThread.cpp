#include "host/source/SourceThread.h"

#include <stdexcept>
#include <utility>

namespace zor {

SourceThread::~SourceThread()
{
    stop();
}

void SourceThread::start(std::function<void()> work)
{
    if (isThisThread())
        throw std::logic_error("a source cannot be started on its own thread");
    const std::lock_guard<std::mutex> control(m_control);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_thread.joinable() && !m_isStopping)
            throw std::logic_error("the source runs already");
    }
    join();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStopping = false;
    }
    m_thread = std::thread([this, owned = std::move(work)] {
        m_id = std::this_thread::get_id();
        owned();
        // Another thread may get the same number.
        m_id = std::thread::id();
    });
}

void SourceThread::stop()
{
    if (isThisThread()) {
        askToStop();
        return;
    }
    const std::lock_guard<std::mutex> control(m_control);
    askToStop();
    join();
}

void SourceThread::wake()
{
    // A wait that has asked for its time and does not sleep yet holds the mutex.
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_changed.notify_all();
}

bool SourceThread::isThisThread() const
{
    return m_id == std::this_thread::get_id();
}

void SourceThread::askToStop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopping = true;
    m_changed.notify_all();
}

void SourceThread::join()
{
    if (m_thread.joinable())
        m_thread.join();
}

} // namespace zor
