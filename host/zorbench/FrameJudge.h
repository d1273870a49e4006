#pragma once

#include "host/frames/Frame.h"
#include "host/quality/Judgement.h"

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

signals:
    void judged(const zor::FrameFigures& figures, const zor::Judgement& judgement);
    /// The frame has no mono form. One sentence that says why.
    void refused(const QString& reason);

private:
    void work();

    std::shared_ptr<const Frame> m_waiting;
    QTimer m_pause; ///< runs while the next judgement is not due
};

} // namespace zor
