#pragma once

#include "host/quality/FrameNoise.h"
#include "host/quality/Judgement.h"

#include <QWidget>

class QLineEdit;

namespace zor {

/// Whether the current frame is good for gains, in a line of its colour.
class JudgementLine : public QWidget
{
    Q_OBJECT

public:
    explicit JudgementLine(QWidget* parent = nullptr);

    void setJudgement(const FrameFigures& figures, const Judgement& judgement);
    /// The frame cannot be judged, and why.
    void setRefusal(const QString& reason);

    /// The noise of a pixel from frame to frame, and how many frames are to be averaged for gains of this
    /// accuracy in percent.
    void setNoise(const FrameNoise& noise, const NeededFrames& needed, double accuracyPercent);
    void clearNoise();

private:
    QLineEdit* m_judgement;
    QLineEdit* m_noise;
    QLineEdit* m_neededFrames;
};

} // namespace zor
