#pragma once

#include "host/frames/Frame.h"
#include "host/quality/FrameNoise.h"
#include "host/quality/Judgement.h"
#include "host/quality/MonoFrame.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace zor {

/// Judges the current frame. It takes some milliseconds for 5 megapixels; of a stream's frames therefore a
/// few a second are judged, and no more than a tenth of the time goes there.
class FrameJudge : public QObject
{
    Q_OBJECT

public:
    explicit FrameJudge(QObject* parent = nullptr);

    /// Judges at once.
    void judge(std::shared_ptr<const Frame> frame);
    /// Judges at once or soon, a frame that comes in between in place of this one. The last is never left
    /// out.
    void follow(std::shared_ptr<const Frame> frame);

    /// Whether the noise between two frames that were followed is that of a single one: not so for averages
    /// that share frames.
    void setMeasuresNoise(bool on);

signals:
    void judged(const zor::FrameFigures& figures, const zor::Judgement& judgement);
    /// The frame has no mono form. One sentence that says why.
    void refused(const QString& reason);
    /// Between the last two frames that were judged, of this size.
    void noiseMeasured(const zor::FrameNoise& noise, quint32 width, quint32 height);
    /// There are no two such frames.
    void noiseUnknown();

private:
    void work();
    void measureNoise(std::unique_ptr<MonoFrame> mono);

    std::shared_ptr<const Frame> m_waiting;
    bool m_isOfStream = false; ///< what waits
    bool m_measuresNoise = true;
    std::unique_ptr<MonoFrame> m_previous; ///< the last one of a stream that was judged
    QTimer m_pause;                        ///< runs while the next judgement is not due
};

} // namespace zor
