#include "host/zorbench/FrameStatus.h"

#include "host/zorbench/StatusField.h"

#include <QHBoxLayout>
#include <QLineEdit>

namespace zor {

FrameStatus::FrameStatus(QWidget* parent)
    : QWidget(parent)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 6, 0);
    m_position = addStatusField(*row, tr("Position"), QStringLiteral("65535, 65535"));
    m_value = addStatusField(*row, tr("Value"), QStringLiteral("R 65535  G 65535  B 65535"));
    m_frame = addStatusField(*row, tr("Frame"), {});
    m_framesPerSecond = addStatusField(*row, tr("Frames per second"), QStringLiteral("1000.0"));
    m_dropped = addStatusField(*row, tr("Dropped"), QStringLiteral("1000000"));
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

void FrameStatus::setFramesPerSecond(const QString& text)
{
    m_framesPerSecond->setText(text);
}

void FrameStatus::setDropped(const QString& text)
{
    m_dropped->setText(text);
}

} // namespace zor
