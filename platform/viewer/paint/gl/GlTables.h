#pragma once

#include <QOpenGLExtraFunctions>

namespace zor::viewer {
/// A texture that is read sample by sample, without a driver's filter; bound when this returns.
inline GLuint makeTable(QOpenGLExtraFunctions& gl)
{
    GLuint name = 0;
    gl.glGenTextures(1, &name);
    gl.glBindTexture(GL_TEXTURE_2D, name);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    return name;
}
} // namespace zor::viewer
