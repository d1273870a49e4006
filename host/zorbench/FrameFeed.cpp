#include "host/zorbench/FrameFeed.h"

#include <exception>
#include <mutex>
#include <optional>
#include <utility>

namespace zor {

/// What the source's thread fills. It lives until the source has stopped.
struct FrameFeed::Run
{
    explicit Run(FrameSource& from)
        : source(from)
    {
    }

    /// True when none was waiting. The one that ends the source counts most.
    bool put(const SourceError& next)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        const bool isFirst = !error;
        if (isFirst || next.hasEnded)
            error = next;
        return isFirst;
    }

    std::optional<SourceError> takeError()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return std::exchange(error, std::nullopt);
    }

    FrameSource& source;
    LatestFrame frames;

    std::mutex mutex; ///< guards the next
    std::optional<SourceError> error;
};

FrameFeed::FrameFeed(QObject* parent)
    : QObject(parent)
{
    // A timer of no time comes after all events: painting, keys and mouse are not held up by frames that come
    // faster than they can be shown.
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &FrameFeed::deliver);
}

FrameFeed::~FrameFeed()
{
    // Nobody is notified any more.
    if (m_run)
        m_run->source.stop();
}

void FrameFeed::start(FrameSource& source)
{
    stop();
    m_last = {};
    m_rate = {};
    m_hasComplained = false;
    m_run = std::make_unique<Run>(source);
    Run& run = *m_run;
    emit runningChanged(true);
    // Who was notified may have stopped it, or begun another run.
    if (m_run.get() != &run)
        return;
    try {
        source.start({[this, &run, filter = m_filter](SourceFrame frame) {
                          if (filter)
                              frame.frame = filter(std::move(frame.frame));
                          if (run.frames.put(std::move(frame)))
                              QMetaObject::invokeMethod(&m_turn, "start", Qt::QueuedConnection);
                      },
                      [this, &run](const SourceError& error) {
                          if (run.put(error))
                              QMetaObject::invokeMethod(this, "takeError", Qt::QueuedConnection);
                      }});
    } catch (const std::exception& error) {
        stop();
        emit failed(tr("cannot be started (%1); close other programs and start again")
                        .arg(QString::fromUtf8(error.what())));
    }
}

void FrameFeed::stop()
{
    if (!m_run)
        return;
    m_run->source.stop();
    m_last = m_run->frames.counts();
    m_last.dropped += std::exchange(m_last.waiting, 0);
    m_run.reset();
    emit runningChanged(false);
}

LatestFrame::Counts FrameFeed::counts() const
{
    return m_run ? m_run->frames.counts() : m_last;
}

double FrameFeed::framesPerSecond() const
{
    return m_rate.perSecond(std::chrono::steady_clock::now());
}

void FrameFeed::deliver()
{
    if (m_isDelivering) {
        m_hasMissedTurn = true;
        return;
    }
    const std::optional<SourceFrame> frame = m_run ? m_run->frames.take() : std::nullopt;
    if (!frame)
        return;
    m_rate.count(std::chrono::steady_clock::now());
    m_isDelivering = true;
    emit arrived(*frame);
    m_isDelivering = false;
    if (std::exchange(m_hasMissedTurn, false))
        m_turn.start();
}

void FrameFeed::takeError()
{
    const std::optional<SourceError> error = m_run ? m_run->takeError() : std::nullopt;
    if (!error)
        return;
    if (error->hasEnded)
        stop();
    else if (std::exchange(m_hasComplained, true))
        return;
    emit failed(QString::fromStdString(error->text));
}

} // namespace zor
