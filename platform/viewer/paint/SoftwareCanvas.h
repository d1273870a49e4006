#pragma once

#include "platform/viewer/paint/Canvas.h"

#include <QImage>
#include <QWidget>

namespace zor::viewer {
class Scene;

/// Paints with the processor alone.
class SoftwareCanvas : public QWidget, public Canvas
{
public:
    /// The scene must outlive the canvas.
    SoftwareCanvas(Scene& scene, QWidget* parent);

    QWidget* widget() override { return this; }
    QImage picture() override;
    void setTileEdge(int) override {}

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void render();

    Scene& m_scene;
    QImage m_frame; ///< the device pixels of the last paint
};
} // namespace zor::viewer
