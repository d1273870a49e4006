#pragma once

#include <QWidget>

class QHBoxLayout;
class QLineEdit;

namespace zor {

/// Fields of the status bar, each with its name in front of it. Their texts can be selected, and read by an
/// assistive client.
class FrameStatus : public QWidget
{
    Q_OBJECT

public:
    explicit FrameStatus(QWidget* parent = nullptr);

    void setPosition(const QString& text);
    void setValue(const QString& text);
    void setFrame(const QString& text);

private:
    /// `widest` is the longest text that the field has to show; empty: it takes the room that is left.
    QLineEdit* addField(const QString& name, const QString& widest);

    QHBoxLayout* m_row;
    QLineEdit* m_position;
    QLineEdit* m_value;
    QLineEdit* m_frame;
};

} // namespace zor
