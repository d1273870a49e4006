#include "host/zorbench/FeatureValidator.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zor {

namespace {

template <typename Number> Number read(const QString& text, bool& isNumber);

template <> qint64 read<qint64>(const QString& text, bool& isNumber)
{
    return QLocale::c().toLongLong(text, &isNumber);
}

template <> double read<double>(const QString& text, bool& isNumber)
{
    const double number = QLocale::c().toDouble(text, &isNumber);
    isNumber = isNumber && std::isfinite(number);
    return number;
}

template <typename Number> Number limit(const std::string& text, Number otherwise)
{
    bool isNumber = false;
    const Number number = read<Number>(QString::fromStdString(text), isNumber);
    return isNumber ? number : otherwise;
}

template <typename Number> Number inRange(const CameraFeature& feature, Number value)
{
    using Limits = std::numeric_limits<Number>;
    const Number least = limit(feature.minimum, Limits::lowest());
    const Number most = limit(feature.maximum, Limits::max());
    return std::max(least, std::min(most, value));
}

/// Steps are counted from the least value; without one there are none.
qint64 nearest(const CameraFeature& feature, qint64 value)
{
    const qint64 inside = inRange(feature, value);
    const qint64 step = limit<qint64>(feature.increment, 1);
    if (step <= 1 || feature.minimum.empty())
        return inside;
    // The distance of two 64-bit numbers takes 64 bits without a sign.
    const quint64 distance =
        static_cast<quint64>(inside) - static_cast<quint64>(limit<qint64>(feature.minimum, 0));
    return static_cast<qint64>(static_cast<quint64>(inside) - distance % static_cast<quint64>(step));
}

double nearest(const CameraFeature& feature, double value)
{
    return inRange(feature, value);
}

template <typename Number> bool isAccepted(const CameraFeature& feature, const QString& text)
{
    bool isNumber = false;
    const Number value = read<Number>(text, isNumber);
    return isNumber && nearest(feature, value) == value;
}

QString textOf(qint64 value)
{
    return QString::number(value);
}

/// The shortest text that reads back as the value.
QString textOf(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

template <typename Number> QString fixed(const CameraFeature& feature, const QString& text)
{
    bool isNumber = false;
    const Number value = read<Number>(text, isNumber);
    return isNumber ? textOf(nearest(feature, value)) : text;
}

/// What can become a number.
bool isBeginning(const QString& text, bool isWhole)
{
    static const QRegularExpression whole(QStringLiteral("^[+-]?[0-9]*$"));
    static const QRegularExpression any(QStringLiteral("^[+-]?[0-9]*\\.?[0-9]*([eE][+-]?[0-9]*)?$"));
    return (isWhole ? whole : any).match(text).hasMatch();
}

} // namespace

FeatureValidator::FeatureValidator(const CameraFeature& feature, QObject* parent)
    : QValidator(parent)
    , m_feature(feature)
{
}

QValidator::State FeatureValidator::validate(QString& text, int&) const
{
    const bool isWhole = m_feature.kind == CameraFeature::Kind::Integer;
    if (isWhole ? isAccepted<qint64>(m_feature, text) : isAccepted<double>(m_feature, text))
        return Acceptable;
    return isBeginning(text, isWhole) ? Intermediate : Invalid;
}

void FeatureValidator::fixup(QString& text) const
{
    const bool isWhole = m_feature.kind == CameraFeature::Kind::Integer;
    text = isWhole ? fixed<qint64>(m_feature, text) : fixed<double>(m_feature, text);
}

} // namespace zor
