#include "host/zorbench/BackgroundWork.h"

namespace zor {

BackgroundWork::~BackgroundWork()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void BackgroundWork::start(QObject* receiver, Work work)
{
    if (!m_thread.joinable())
        m_thread = std::thread([this] { run(); });
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_waiting.emplace_back(receiver, std::move(work));
    }
    m_changed.notify_all();
}

void BackgroundWork::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_isEnding || !m_waiting.empty(); });
        if (m_isEnding)
            return;
        auto [receiver, work] = std::move(m_waiting.front());
        m_waiting.pop_front();
        lock.unlock();
        Sequel sequel = work();
        work = nullptr;
        lock.lock();
        m_sequels.emplace_back(std::move(receiver), std::move(sequel));
        QMetaObject::invokeMethod(this, "runSequels", Qt::QueuedConnection);
    }
}

void BackgroundWork::runSequels()
{
    std::vector<std::pair<Receiver, Sequel>> sequels;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        sequels.swap(m_sequels);
    }
    for (const auto& [receiver, sequel] : sequels) {
        if (receiver && sequel)
            sequel();
    }
}

} // namespace zor
