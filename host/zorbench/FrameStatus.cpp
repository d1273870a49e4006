#include "host/zorbench/FrameStatus.h"

#include "host/quality/Judgement.h"
#include "host/quality/NumberText.h"
#include "host/zorbench/StatusField.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QStyle>

#include <cmath>

namespace zor {

namespace {

/// Empty for a black frame, which has none.
QString variationText(double percent)
{
    return std::isnan(percent) ? QString()
                               : QString::fromStdString(fixedText(percent, 3)) + QLatin1String(" %");
}

/// With a decimal where a whole number would be too coarse.
QString zoomText(double percent)
{
    constexpr double coarse = 10.0;
    return QString::fromStdString(fixedText(percent, percent < coarse ? 1 : 0)) + QLatin1String(" %");
}

} // namespace

FrameStatus::FrameStatus(QWidget* parent)
    : QWidget(parent)
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(6, 0, 6, 0);
    rows->setSpacing(2);
    const auto addRow = [this, rows] {
        auto* row = new QHBoxLayout;
        // By itself it takes over the spacing of the rows.
        row->setSpacing(style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
        rows->addLayout(row);
        return row;
    };
    addFrameFields(*addRow());
    addPixelAndStreamFields(*addRow());
}

void FrameStatus::addFrameFields(QHBoxLayout& row)
{
    m_frame = addStatusField(row, tr("Frame"), {});
    m_zoom = addStatusField(row, tr("Zoom"), QStringLiteral("10000 %"));
    m_columns = addStatusField(row, tr("Column non-uniformity"), QStringLiteral("100.000 %"));
    m_columns->setToolTip(tr("Standard deviation of the means of all columns, in percent of their mean"));
    m_rows = addStatusField(row, tr("Row non-uniformity"), QStringLiteral("100.000 %"));
    m_rows->setToolTip(tr("Standard deviation of the means of all rows, in percent of their mean"));
}

void FrameStatus::addPixelAndStreamFields(QHBoxLayout& row)
{
    m_position = addStatusField(row, tr("Position"), QStringLiteral("65535, 65535"));
    m_value = addStatusField(row, tr("Value"), QStringLiteral("R 65535  G 65535  B 65535"));
    row.addStretch();
    m_framesPerSecond = addStatusField(row, tr("Frames per second"), QStringLiteral("1000.0"));
    m_dropped = addStatusField(row, tr("Dropped"), QStringLiteral("1000000"));
    m_incomplete = addStatusField(row, tr("Incomplete"), QStringLiteral("1000000"));
}

void FrameStatus::setZoom(std::optional<double> scale)
{
    m_zoom->setText(scale ? zoomText(100.0 * *scale) : QString());
}

void FrameStatus::setPosition(const QString& text)
{
    m_position->setText(text);
}

void FrameStatus::setValue(const QString& text)
{
    m_value->setText(text);
}

void FrameStatus::setFrame(const QString& text)
{
    setStatusText(*m_frame, text);
}

void FrameStatus::setFigures(const FrameFigures& figures)
{
    m_columns->setText(variationText(figures.columnVariation));
    m_rows->setText(variationText(figures.rowVariation));
}

void FrameStatus::clearFigures()
{
    m_columns->clear();
    m_rows->clear();
}

void FrameStatus::setFramesPerSecond(const QString& text)
{
    m_framesPerSecond->setText(text);
}

void FrameStatus::setDropped(const QString& text)
{
    m_dropped->setText(text);
}

void FrameStatus::setIncomplete(const QString& text)
{
    m_incomplete->setText(text);
}

} // namespace zor
