#include "host/zorbench/CameraBoxes.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace zor {

namespace {

/// Further than any camera goes, and still short to write.
constexpr double Largest = 1e12;

bool isSame(const CameraNumber& a, const CameraNumber& b)
{
    return a.value == b.value && a.minimum == b.minimum && a.maximum == b.maximum;
}

bool isSame(const CameraExtent& a, const CameraExtent& b)
{
    return a.value == b.value && a.minimum == b.minimum && a.maximum == b.maximum &&
           a.increment == b.increment;
}

} // namespace

CameraNumberBox::CameraNumberBox(QWidget* parent)
    : RealBox(parent)
{
    setKeyboardTracking(false);
    connect(this, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this](double value) {
        if (!m_isShowing)
            emit chosen(std::max(m_number.minimum, std::min(m_number.maximum, value)));
    });
}

void CameraNumberBox::showNumber(const std::optional<CameraNumber>& number)
{
    setEnabled(number.has_value());
    // What is just being written is left alone as long as the camera is the same.
    if (!number || (isSame(*number, m_number) && value() == m_shown))
        return;
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    m_number = *number;
    setRange(std::max(-Largest, m_number.minimum), std::min(Largest, m_number.maximum));
    setValue(m_number.value);
    m_shown = value();
}

CameraExtentBox::CameraExtentBox(QWidget* parent)
    : QSpinBox(parent)
{
    setLocale(numberLocale());
    setKeyboardTracking(false);
    connect(this, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] {
        if (!m_isShowing)
            emit chosen();
    });
}

void CameraExtentBox::showExtent(const CameraExtent& extent)
{
    if (isSame(extent, m_extent) && value() == extent.value)
        return;
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    m_extent = extent;
    setRange(extent.minimum, extent.maximum);
    setSingleStep(extent.increment);
    setValue(extent.value);
}

int CameraExtentBox::extent() const
{
    return value() - (value() - m_extent.minimum) % m_extent.increment;
}

} // namespace zor
