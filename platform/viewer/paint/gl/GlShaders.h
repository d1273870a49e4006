#pragma once

#include <QByteArray>

namespace zor::viewer {
/// The shaders of the OpenGL canvas, for a desktop or an ES context. The vertex shader makes a rectangle of
/// device pixels out of four vertex numbers; the fragment shader is ResampleRule.h and Tone.h in the
/// shader's language, on the same tables and in the same integers.
QByteArray vertexShader(bool isEs);
QByteArray fragmentShader(bool isEs);

/// Fragment shader of a premultiplied image that covers the view.
QByteArray layerShader(bool isEs);
} // namespace zor::viewer
