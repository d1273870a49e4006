#pragma once

#include <QObject>
#include <QPointer>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace zor {

/// Does one piece of work after the other on a thread of its own, so that none holds up the thread that this
/// object lives in.
class BackgroundWork : public QObject
{
    Q_OBJECT

public:
    /// What follows from a piece of work, on the thread that this object lives in. May be empty.
    using Sequel = std::function<void()>;
    /// Throws nothing. It is destroyed on the thread of its own once it was done.
    using Work = std::function<Sequel()>;

    BackgroundWork() = default;
    /// Waits for the work that is being done. What has not begun is dropped, and no sequel runs any more.
    ~BackgroundWork() override;

    /// Returns at once. The sequel runs from the event loop, unless the receiver was destroyed meanwhile.
    /// Throws std::system_error when there is no thread to be had.
    void start(QObject* receiver, Work work);

private:
    using Receiver = QPointer<QObject>;

    void run();
    Q_INVOKABLE void runSequels();

    std::mutex m_mutex; ///< guards the next four
    std::condition_variable m_changed;
    std::deque<std::pair<Receiver, Work>> m_waiting;
    std::vector<std::pair<Receiver, Sequel>> m_sequels;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace zor
