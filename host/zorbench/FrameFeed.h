#pragma once

#include "host/source/LatestFrame.h"
#include "host/zorbench/RateMeter.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <utility>

namespace zor {

/// Brings the frames of a source from its thread to the one that this object lives in, where they are shown.
///
/// Frames come from the event loop when there is nothing else to do, so that they never hold up the operator.
/// What is done with a frame may run an event loop of its own; the next one waits until that has returned. At
/// most one waits, the newest, all others are dropped and counted.
class FrameFeed : public QObject
{
    Q_OBJECT

public:
    explicit FrameFeed(QObject* parent = nullptr);
    /// Stops. Must not run within arrived().
    ~FrameFeed() override;

    /// What takes the place of a frame before it arrives; called on the source's thread. Throws nothing.
    using Filter = std::function<std::shared_ptr<const Frame>(std::shared_ptr<const Frame>)>;
    /// For the runs that start from now on. Without one frames arrive as they are.
    void setFilter(Filter filter) { m_filter = std::move(filter); }

    /// Begins with frames of the source, which must outlive the run; the run before is stopped. All counts
    /// begin anew. What keeps the source from starting comes as failed().
    void start(FrameSource& source);
    /// No frame arrives afterwards. One that waits is dropped. Waits for the frame that the source is making.
    void stop();
    bool isRunning() const { return m_run != nullptr; }

    /// Of this run, or of the last one when stopped.
    LatestFrame::Counts counts() const;
    /// Frames that arrived, over about the last second.
    double framesPerSecond() const;

signals:
    void runningChanged(bool isRunning);
    void arrived(const zor::SourceFrame& frame);
    /// One sentence: what is wrong and what to do. The source has stopped, unless isRunning(): it goes on,
    /// and reports the like no more in this run.
    void failed(const QString& sentence);

private:
    struct Run;

    void deliver();
    Q_INVOKABLE void takeError();

    QTimer m_turn;
    Filter m_filter;
    std::unique_ptr<Run> m_run; ///< null when stopped
    LatestFrame::Counts m_last; ///< of the last run
    RateMeter m_rate;
    bool m_isDelivering = false;
    bool m_hasMissedTurn = false; ///< a turn came while a frame was being shown
    bool m_hasComplained = false; ///< an error that did not end this run was reported
};

} // namespace zor
