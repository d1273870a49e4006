#pragma once

#include <QSurfaceFormat>

namespace zor::viewer {
/// OpenGL 3.3 core, or OpenGL ES 3.0 where Qt was built for ES.
QSurfaceFormat glFormat();

/// Tries whether a context of glFormat can be had and made current, and whether its driver takes the
/// shaders, without any widget.
bool hasGlContext();
} // namespace zor::viewer
