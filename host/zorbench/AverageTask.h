#pragma once

#include "host/average/FrameConditioner.h"
#include "host/source/FrameSource.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace zor {

/// Takes an average of frames from a source, which it starts and stops.
class AverageTask : public QObject
{
    Q_OBJECT

public:
    /// Of 1 to MostAveragedFrames frames. The source is stopped and outlives the task. `settings` says how a
    /// frame was taken, on the source's thread.
    AverageTask(FrameSource& source, std::uint32_t wanted, FrameConditioner::Settings settings,
                QObject* parent = nullptr);
    /// As cancel().
    ~AverageTask() override;

    /// What keeps the source from starting comes as failed().
    void start();
    /// Stops the source. Nothing is said afterwards.
    void cancel();

signals:
    void progressed(int taken);
    /// The last of the signals, but for failed().
    void done(const std::shared_ptr<const zor::Frame>& average, const zor::CaptureSettings& settings);
    /// One sentence that says why there is no average. The last of the signals.
    void failed(const QString& sentence);

private:
    struct Run;

    void look();

    FrameSource& m_source;
    std::unique_ptr<Run> m_run;
    QTimer m_looking; ///< runs while the source does
};

} // namespace zor
