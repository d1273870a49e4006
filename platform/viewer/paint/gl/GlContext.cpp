#include "platform/viewer/paint/gl/GlContext.h"

#include "platform/viewer/paint/gl/GlShaders.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLShaderProgram>

namespace zor::viewer {
namespace {
bool canLink(const QByteArray& vertex, const QByteArray& fragment)
{
    QOpenGLShaderProgram program;
    return program.addShaderFromSourceCode(QOpenGLShader::Vertex, vertex) &&
           program.addShaderFromSourceCode(QOpenGLShader::Fragment, fragment) && program.link();
}
} // namespace

QSurfaceFormat glFormat()
{
    QSurfaceFormat format;
    if (QOpenGLContext::openGLModuleType() == QOpenGLContext::LibGLES) {
        format.setRenderableType(QSurfaceFormat::OpenGLES);
        format.setVersion(3, 0);
    } else {
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setVersion(3, 3);
        format.setProfile(QSurfaceFormat::CoreProfile);
    }
    return format;
}

bool hasGlContext()
{
    QOpenGLContext context;
    context.setFormat(glFormat());
    if (!context.create())
        return false;
    const auto least = context.isOpenGLES() ? qMakePair(3, 0) : qMakePair(3, 3);
    if (context.format().version() < least)
        return false;
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!surface.isValid() || !context.makeCurrent(&surface))
        return false;
    const bool isEs = context.isOpenGLES();
    const bool hasShaders =
        canLink(vertexShader(isEs), fragmentShader(isEs)) && canLink(vertexShader(isEs), layerShader(isEs));
    context.doneCurrent();
    return hasShaders;
}
} // namespace zor::viewer
