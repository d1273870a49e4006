#include "host/zorbench/StatusField.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace zor {

QLineEdit* addStatusField(QHBoxLayout& row, const QString& name, const QString& widest)
{
    auto* field = new QLineEdit;
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
    row.addWidget(new QLabel(name));
    row.addWidget(field, widest.isEmpty() ? 1 : 0);
    return field;
}

void setStatusText(QLineEdit& field, const QString& text)
{
    field.setText(text);
    field.setToolTip(text);
    field.setCursorPosition(0);
}

} // namespace zor
