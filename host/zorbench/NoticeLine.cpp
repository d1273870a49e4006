#include "host/zorbench/NoticeLine.h"

#include "host/zorbench/StatusField.h"

#include <QHBoxLayout>
#include <QLineEdit>

namespace zor {

NoticeLine::NoticeLine(QWidget* parent)
    : QWidget(parent)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 6, 0);
    m_field = addStatusField(*row, tr("Notice"), {});
    constexpr int halfAMinute = 30000; // in ms
    m_fading.setSingleShot(true);
    m_fading.setInterval(halfAMinute);
    connect(&m_fading, &QTimer::timeout, this, [this] {
        m_told.clear();
        showText();
    });
    hide();
}

void NoticeLine::tell(const QString& sentence)
{
    constexpr int together = 1000; // in ms
    const bool belongs = m_sinceTold.isValid() && !m_sinceTold.hasExpired(together) && !m_told.isEmpty();
    m_told = belongs ? m_told + QLatin1Char(' ') + sentence : sentence;
    m_sinceTold.start();
    m_fading.start();
    showText();
}

void NoticeLine::setState(const QString& sentence)
{
    m_state = sentence;
    showText();
}

void NoticeLine::showText()
{
    const QString& text = m_state.isEmpty() ? m_told : m_state;
    if (m_field->text() != text)
        setStatusText(*m_field, text);
    setVisible(!text.isEmpty());
}

} // namespace zor
