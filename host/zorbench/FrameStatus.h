#pragma once

#include <QWidget>

#include <optional>

class QHBoxLayout;
class QLineEdit;

namespace zor {

struct FrameFigures;

/// What is known of the current frame and of the stream that it belongs to, in two rows of fields.
class FrameStatus : public QWidget
{
    Q_OBJECT

public:
    explicit FrameStatus(QWidget* parent = nullptr);

    /// Pixels of the screen for one of the frame.
    void setZoom(std::optional<double> scale);
    void setPosition(const QString& text);
    void setValue(const QString& text);
    void setFrame(const QString& text);
    /// How far the frame is from flat.
    void setFigures(const FrameFigures& figures);
    void clearFigures();
    void setFramesPerSecond(const QString& text);
    void setDropped(const QString& text);
    /// Frames of which parts or all did not come.
    void setIncomplete(const QString& text);

private:
    void addFrameFields(QHBoxLayout& row);
    void addPixelAndStreamFields(QHBoxLayout& row);

    QLineEdit* m_frame;
    QLineEdit* m_zoom;
    QLineEdit* m_columns;
    QLineEdit* m_rows;
    QLineEdit* m_position;
    QLineEdit* m_value;
    QLineEdit* m_framesPerSecond;
    QLineEdit* m_dropped;
    QLineEdit* m_incomplete;
};

} // namespace zor
