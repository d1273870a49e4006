#pragma once

#include <QDoubleSpinBox>
#include <QLocale>

namespace zor {

/// How numbers are shown and written in all boxes, as everywhere else in the window: with a decimal point and
/// without groups, whatever is usual in the operator's country.
QLocale numberLocale();

/// A box for a number with decimals. A comma that is written becomes a point.
class RealBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit RealBox(QWidget* parent = nullptr);

    QValidator::State validate(QString& text, int& cursor) const override;
};

} // namespace zor
