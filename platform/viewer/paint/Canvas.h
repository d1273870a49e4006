#pragma once

class QImage;
class QWidget;

namespace zor::viewer {
/// The widget that a scene is painted on. Its parent widget owns it.
class Canvas
{
public:
    virtual QWidget* widget() = 0;
    /// What is on the screen, in device pixels.
    virtual QImage picture() = 0;
    /// Edge of the squares that a canvas cuts an image into, in samples; ignored where there are none.
    virtual void setTileEdge(int edge) = 0;

protected:
    ~Canvas() = default;
};
} // namespace zor::viewer
