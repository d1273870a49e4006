#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QLineEdit;

namespace zor {

/// What happened beside the frame: something was dropped, a camera is lost. Not seen while there is nothing.
class NoticeLine : public QWidget
{
    Q_OBJECT

public:
    explicit NoticeLine(QWidget* parent = nullptr);

    /// For half a minute, or until the next one. What comes within a second belongs together.
    void tell(const QString& sentence);
    /// What lasts, until it is empty. It is shown before any other.
    void setState(const QString& sentence);

private:
    void showText();

    QLineEdit* m_field;
    QTimer m_fading;
    QElapsedTimer m_sinceTold;
    QString m_told;
    QString m_state;
};

} // namespace zor
