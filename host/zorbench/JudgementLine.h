#pragma once

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

private:
    QLineEdit* m_judgement;
};

} // namespace zor
