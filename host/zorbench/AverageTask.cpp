#include "host/zorbench/AverageTask.h"

#include "host/average/AverageOfFrames.h"

#include <exception>
#include <mutex>
#include <new>
#include <optional>
#include <utility>

namespace zor {

/// What the source's thread fills. It lives until the source has stopped.
struct AverageTask::Run
{
    Run(std::uint32_t wanted, FrameConditioner::Settings from)
        : settingsOf(std::move(from))
        , average(wanted)
    {
    }

    /// False when no further frame is wanted.
    bool add(const Frame& frame)
    {
        const CaptureSettings now = settingsOf(frame);
        const std::lock_guard<std::mutex> lock(mutex);
        if (average.isDone() || !error.empty())
            return false;
        try {
            if (settings && *settings != now)
                throw std::runtime_error(firstDifference(now, *settings) + "; take the average again");
            settings = now;
            average.add(frame);
        } catch (const std::bad_alloc&) {
            error = "there is no memory for the average; close other programs and take it again";
        } catch (const std::exception& problem) {
            error = problem.what();
        }
        return !average.isDone() && error.empty();
    }

    const FrameConditioner::Settings settingsOf;
    std::mutex mutex; ///< guards the rest
    AverageOfFrames average;
    std::optional<CaptureSettings> settings;
    std::string error;
};

AverageTask::AverageTask(FrameSource& source, std::uint32_t wanted, FrameConditioner::Settings settings,
                         QObject* parent)
    : QObject(parent)
    , m_source(source)
    , m_run(std::make_unique<Run>(wanted, std::move(settings)))
{
    connect(&m_looking, &QTimer::timeout, this, &AverageTask::look);
}

AverageTask::~AverageTask()
{
    cancel();
}

void AverageTask::cancel()
{
    // Somebody else may have started the source since.
    if (!m_looking.isActive())
        return;
    m_looking.stop();
    m_source.stop();
}

void AverageTask::start()
{
    constexpr int interval = 50; // in ms
    m_looking.start(interval);
    try {
        m_source.start({[this](const SourceFrame& frame) {
                            if (!m_run->add(*frame.frame))
                                m_source.stop();
                        },
                        [this](const SourceError& error) {
                            const std::lock_guard<std::mutex> lock(m_run->mutex);
                            // Where no frame at all can be used, none will come.
                            if (error.hasEnded || m_run->average.taken() == 0)
                                m_run->error = error.text;
                        }});
    } catch (const std::exception& error) {
        const std::lock_guard<std::mutex> lock(m_run->mutex);
        m_run->error = error.what();
    }
}

void AverageTask::look()
{
    std::unique_lock<std::mutex> lock(m_run->mutex);
    const int taken = static_cast<int>(m_run->average.taken());
    const bool isDone = m_run->average.isDone();
    const QString error = QString::fromStdString(m_run->error);
    lock.unlock();
    if (!isDone && error.isEmpty()) {
        emit progressed(taken);
        return;
    }
    // From here on nobody else uses the run.
    cancel();
    if (!isDone) {
        emit failed(error);
        return;
    }
    std::shared_ptr<const Frame> average;
    try {
        average = std::make_shared<const Frame>(m_run->average.result());
    } catch (const std::bad_alloc&) {
        emit failed(tr("there is no memory for the average; close other programs and take it again"));
        return;
    }
    emit done(average, *m_run->settings);
}

} // namespace zor
