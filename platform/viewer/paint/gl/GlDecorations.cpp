#include "platform/viewer/paint/gl/GlDecorations.h"

#include "platform/viewer/paint/Decorations.h"
#include "platform/viewer/paint/Scene.h"
#include "platform/viewer/paint/gl/GlShaders.h"
#include "platform/viewer/paint/gl/GlTables.h"

#include <QOpenGLExtraFunctions>
#include <QOpenGLShaderProgram>
#include <QPainter>

namespace zor::viewer {
GlDecorations::GlDecorations() = default;
GlDecorations::~GlDecorations() = default;

void GlDecorations::make(QOpenGLExtraFunctions& gl, bool isEs)
{
    m_program = std::make_unique<QOpenGLShaderProgram>();
    m_program->addShaderFromSourceCode(QOpenGLShader::Vertex, vertexShader(isEs));
    m_program->addShaderFromSourceCode(QOpenGLShader::Fragment, layerShader(isEs));
    m_program->link();
    m_texture = makeTable(gl);
}

void GlDecorations::release(QOpenGLExtraFunctions& gl)
{
    gl.glDeleteTextures(1, &m_texture);
    m_program.reset();
}

void GlDecorations::paint(QOpenGLExtraFunctions& gl, const Scene& scene, const QSize& size)
{
    if (!hasDecorations(scene) || !m_program->isLinked())
        return;
    if (m_layer.size() != size)
        m_layer = QImage(size, QImage::Format_RGBA8888_Premultiplied);
    m_layer.fill(Qt::transparent);
    {
        QPainter painter(&m_layer);
        paintDecorations(painter, scene);
    }
    m_program->bind();
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, m_texture);
    gl.glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, size.width(), size.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                    m_layer.constBits());
    gl.glUniform1i(m_program->uniformLocation("layer"), 0);
    gl.glUniform2i(m_program->uniformLocation("viewSize"), size.width(), size.height());
    gl.glUniform4i(m_program->uniformLocation("area"), 0, 0, size.width(), size.height());
    gl.glEnable(GL_BLEND);
    gl.glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    gl.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    gl.glDisable(GL_BLEND);
    m_program->release();
}
} // namespace zor::viewer
