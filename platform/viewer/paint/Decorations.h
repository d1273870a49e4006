#pragma once

#include <QRgb>

class QPainter;

namespace zor::viewer {
class Scene;

/// Device pixels per image pixel from which on the grid and the sample values are drawn.
constexpr double GridScale = 40.0;

constexpr QRgb BackgroundColour = 0xFF303030;

/// Whether there is anything to draw.
bool hasDecorations(const Scene& scene);

/// Draws what lies over the pictures: the pixel grid with the native sample values, and the overlays. The
/// painter works in device pixels of the view.
void paintDecorations(QPainter& painter, const Scene& scene);
} // namespace zor::viewer
