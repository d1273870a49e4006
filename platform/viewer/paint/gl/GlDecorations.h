#pragma once

#include <QImage>
#include <QOpenGLFunctions>

#include <memory>

class QOpenGLExtraFunctions;
class QOpenGLShaderProgram;

namespace zor::viewer {
class Scene;

/// Grid, values and overlays on an OpenGL canvas: drawn by the same code as everywhere into an image, which
/// is laid over the picture. (Qt's own painter draws nothing in core profiles.)
class GlDecorations
{
public:
    GlDecorations();
    ~GlDecorations();

    /// All three need the canvas's context. `make` comes first, `release` last.
    void make(QOpenGLExtraFunctions& gl, bool isEs);
    void release(QOpenGLExtraFunctions& gl);
    /// A vertex array must be bound. `size` is the view's in device pixels.
    void paint(QOpenGLExtraFunctions& gl, const Scene& scene, const QSize& size);

private:
    std::unique_ptr<QOpenGLShaderProgram> m_program;
    GLuint m_texture = 0;
    QImage m_layer;
};
} // namespace zor::viewer
