#include "host/zorbench/NumberBox.h"

namespace zor {

QLocale numberLocale()
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    return locale;
}

RealBox::RealBox(QWidget* parent)
    : QDoubleSpinBox(parent)
{
    setLocale(numberLocale());
}

QValidator::State RealBox::validate(QString& text, int& cursor) const
{
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return QDoubleSpinBox::validate(text, cursor);
}

} // namespace zor
