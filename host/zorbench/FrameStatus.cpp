#include "host/zorbench/FrameStatus.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace zor {

FrameStatus::FrameStatus(QWidget* parent)
    : QWidget(parent)
    , m_row(new QHBoxLayout(this))
    , m_position(addField(tr("Position"), QStringLiteral("65535, 65535")))
    , m_value(addField(tr("Value"), QStringLiteral("R 65535  G 65535  B 65535")))
    , m_frame(addField(tr("Frame"), {}))
{
    m_row->setContentsMargins(6, 0, 6, 0);
}

QLineEdit* FrameStatus::addField(const QString& name, const QString& widest)
{
    auto* field = new QLineEdit(this);
    field->setReadOnly(true);
    field->setFrame(false);
    field->setFocusPolicy(Qt::ClickFocus);
    field->setAccessibleName(name);
    QPalette palette = field->palette();
    palette.setBrush(QPalette::Base, Qt::transparent);
    field->setPalette(palette);
    if (!widest.isEmpty()) {
        // A line edit keeps some pixels around its text.
        const int margins = field->fontMetrics().height();
        field->setFixedWidth(field->fontMetrics().size(Qt::TextSingleLine, widest).width() + margins);
    }
    m_row->addWidget(new QLabel(name, this));
    m_row->addWidget(field, widest.isEmpty() ? 1 : 0);
    return field;
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
    m_frame->setText(text);
    m_frame->setToolTip(text);
    m_frame->setCursorPosition(0);
}

} // namespace zor
