#pragma once

#include <QWidget>

class QLineEdit;

namespace zor {

/// What is known of the current frame and of the stream that it belongs to.
class FrameStatus : public QWidget
{
    Q_OBJECT

public:
    explicit FrameStatus(QWidget* parent = nullptr);

    void setPosition(const QString& text);
    void setValue(const QString& text);
    void setFrame(const QString& text);
    void setFramesPerSecond(const QString& text);
    void setDropped(const QString& text);

private:
    QLineEdit* m_position;
    QLineEdit* m_value;
    QLineEdit* m_frame;
    QLineEdit* m_framesPerSecond;
    QLineEdit* m_dropped;
};

} // namespace zor
