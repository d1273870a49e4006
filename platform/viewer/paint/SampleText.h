#pragma once

class QPainter;
class QRect;

namespace zor::viewer {
class MipLevels;
class Scene;
struct Tone;

/// Whether black stands out better than white on an image pixel.
bool isBright(const Tone& tone, const MipLevels& mips, int x, int y);

/// Writes the native codes of the shown image into its pixels `pixels` of a pane, one below the other (see
/// PixelNumbers), in black or white, whichever stands out.
void paintSampleValues(QPainter& painter, const Scene& scene, int pane, const QRect& pixels);
} // namespace zor::viewer
