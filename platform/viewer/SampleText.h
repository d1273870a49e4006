#pragma once

class QPainter;
class QRect;

namespace zorview {
class Scene;

/// Writes the native values of the samples into the image pixels `pixels` of a pane: one line for mono, three
/// (red, green, blue) for colour, in black or white, whichever stands out.
void paintSampleValues(QPainter& painter, const Scene& scene, int pane, const QRect& pixels);
} // namespace zorview
