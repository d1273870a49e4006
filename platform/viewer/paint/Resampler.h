#pragma once

#include "platform/viewer/paint/ResampleRule.h"
#include "platform/viewer/picture/MipLevels.h"
#include "platform/viewer/picture/Tone.h"

#include <QPoint>

class QImage;

namespace zor::viewer {
/// Paints the device pixels that the rule covers into a 32-bit image, the view's corner at `origin`; all
/// others stay. What it covers must lie in the target.
void resample(const MipLevels& mips, const ResampleRule& rule, const Tone& tone, const QPoint& origin,
              QImage& target);
} // namespace zor::viewer
