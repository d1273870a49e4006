#pragma once

#include "platform/viewer/paint/Canvas.h"
#include "platform/viewer/paint/ResampleRule.h"
#include "platform/viewer/paint/gl/GlDecorations.h"
#include "platform/viewer/paint/gl/GlTiles.h"

#include <QOpenGLWidget>

#include <array>
#include <memory>

class QOpenGLShaderProgram;
class QOpenGLVertexArrayObject;

namespace zor::viewer {
class Scene;
struct Tone;

/// Paints with OpenGL: the samples as they are in integer textures, fetched one by one.
class GlCanvas : public QOpenGLWidget, public Canvas
{
public:
    /// The scene must outlive the canvas.
    GlCanvas(Scene& scene, QWidget* parent);
    ~GlCanvas() override;

    QWidget* widget() override { return this; }
    QImage picture() override;
    /// Cut to what the driver can hold.
    void setTileEdge(int edge) override;

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    void releaseGl();
    void paintPane(int pane);
    void loadAxes(const ResampleRule& rule);
    void loadTones(const Tone& tone);
    void setUniforms(const ResampleRule& rule, const Tone& tone, const QPoint& origin);
    void drawTiles(const ResampleRule& rule, int pane);

    Scene& m_scene;
    QSize m_size; ///< of the view in device pixels, while painting
    int m_edge = 4096;
    std::array<GlTiles, 2> m_tiles; ///< one for each pane
    std::unique_ptr<QOpenGLShaderProgram> m_program;
    std::unique_ptr<QOpenGLVertexArrayObject> m_vertices; ///< empty: core profiles draw nothing without one
    GlDecorations m_decorations;
    GLuint m_axes = 0;
    GLuint m_tones = 0;
};
} // namespace zor::viewer
