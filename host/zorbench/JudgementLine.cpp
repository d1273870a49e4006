#include "host/zorbench/JudgementLine.h"

#include "host/average/FrameSum.h"
#include "host/quality/NumberText.h"
#include "host/zorbench/StatusField.h"

#include <QHBoxLayout>
#include <QLineEdit>

#include <cmath>

namespace zor {

namespace {

/// How a verdict looks and is said.
struct VerdictLook
{
    QColor colour;
    QString word;
    QString meaning;
};

VerdictLook lookOf(Verdict verdict)
{
    switch (verdict) {
    case Verdict::Green:
        break;
    case Verdict::Amber:
        return {QColor(255, 214, 120), JudgementLine::tr("Amber"),
                JudgementLine::tr("Usable, but another frame would be better.")};
    case Verdict::Red:
        return {QColor(255, 170, 165), JudgementLine::tr("Red"),
                JudgementLine::tr("Gains from this frame would be wrong.")};
    }
    return {QColor(190, 235, 190), JudgementLine::tr("Green"), JudgementLine::tr("Good for gains.")};
}

QString number(double value, int decimals)
{
    return QString::fromStdString(fixedText(value, decimals));
}

QString levels(const FrameFigures& figures)
{
    return JudgementLine::tr("mean %1 % of full scale, %2 % saturated")
        .arg(number(figures.meanPercent, 1))
        .arg(number(figures.saturatedPercent, 2));
}

QString darkest(const FrameFigures& figures)
{
    return JudgementLine::tr("darkest column %1 with a mean of %2, darkest row %3 with a mean of %4")
        .arg(figures.darkestColumn.index)
        .arg(number(figures.darkestColumn.mean, 1))
        .arg(figures.darkestRow.index)
        .arg(number(figures.darkestRow.mean, 1));
}

/// Dark letters on a light colour; without one the field is as its neighbours are.
void setColour(QLineEdit& field, const QColor& colour)
{
    QPalette palette = field.palette();
    palette.setColor(QPalette::Base, colour.isValid() ? colour : QColor(Qt::transparent));
    palette.setColor(QPalette::Text, colour.isValid()
                                         ? QColor(Qt::black)
                                         : field.parentWidget()->palette().color(QPalette::Text));
    field.setPalette(palette);
}

} // namespace

JudgementLine::JudgementLine(QWidget* parent)
    : QWidget(parent)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 6, 0);
    m_judgement = addStatusField(*row, tr("Judgement"), {});
    m_noise = addStatusField(*row, tr("Noise"), QStringLiteral("10000.0 DN"));
    m_neededFrames = addStatusField(*row, tr("Frames needed"), QStringLiteral("more than 1024"));
}

void JudgementLine::setJudgement(const FrameFigures& figures, const Judgement& judgement)
{
    const VerdictLook look = lookOf(judgement.verdict);
    QStringList all{look.meaning};
    for (const JudgementReason& reason : judgement.reasons)
        all.append(QString::fromStdString(reason.text));
    all.append(levels(figures));
    all.append(darkest(figures));
    const QString figure = judgement.reasons.empty() ? levels(figures) : all[1];
    setStatusText(*m_judgement, look.word + QLatin1String(": ") + figure);
    m_judgement->setToolTip(all.join(QLatin1Char('\n')));
    m_judgement->setAccessibleDescription(all.join(QLatin1Char('\n')));
    setColour(*m_judgement, look.colour);
}

void JudgementLine::setRefusal(const QString& reason)
{
    const QString text = tr("None: %1").arg(reason);
    setStatusText(*m_judgement, text);
    m_judgement->setAccessibleDescription(text);
    setColour(*m_judgement, {});
}

void JudgementLine::setNoise(const FrameNoise& noise, const NeededFrames& needed, double accuracyPercent)
{
    setStatusText(*m_noise, tr("%1 DN").arg(number(std::sqrt(noise.variance), 1)));
    m_noise->setToolTip(tr("Standard deviation of a pixel from frame to frame, in the codes of the frame"));
    switch (needed.answer) {
    case NeededFrames::Count:
        setStatusText(*m_neededFrames, QString::number(needed.count));
        break;
    case NeededFrames::TooMany:
        setStatusText(*m_neededFrames, tr("more than %1").arg(MostAveragedFrames));
        break;
    case NeededFrames::NoLight:
        setStatusText(*m_neededFrames, tr("no light"));
        break;
    }
    m_neededFrames->setToolTip(tr("Frames to average, so that a gain is right to %1 %; \"Average\u2026\" in "
                                  "the menu \"Camera\" sets the "
                                  "accuracy")
                                   .arg(QString::number(accuracyPercent)));
}

void JudgementLine::clearNoise()
{
    setStatusText(*m_noise, {});
    setStatusText(*m_neededFrames, {});
}

} // namespace zor
