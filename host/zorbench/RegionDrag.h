#pragma once

#include <QEvent>
#include <QObject>
#include <QPoint>
#include <QRect>

#include <optional>

namespace zor {

class FrameView;

/// The rectangle that the operator draws on the frame: Shift and the left button. A drag without Shift is
/// the viewer's, which moves the picture.
class RegionDrag : public QObject
{
    Q_OBJECT

public:
    /// The view must outlive this object.
    explicit RegionDrag(FrameView& view);

signals:
    /// The rectangle so far, in image pixels, also beyond the edges of the image.
    void drawn(const QRect& rect);
    /// The button came up after the last rectangle.
    void ended();
    /// The button came up on the pixel where it went down.
    void clicked();

private:
    void take(const QPoint& pixel, QEvent::Type type);

    std::optional<QPoint> m_begin; ///< where the button went down, while it is
};

} // namespace zor
