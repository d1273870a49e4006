#pragma once

#include "platform/viewer/paint/AxisMap.h"
#include "platform/viewer/picture/MipLevels.h"
#include "platform/viewer/view/ViewGeometry.h"

namespace zor::viewer {
/// How an image becomes device pixels: the mean by the tables of level `level`, and, near the
/// next level's own scale, a mixture with that level, so that nothing jumps while somebody zooms.
///
/// For each sample, in integers, each division by 256 rounded to nearest:
///   mean of rows = sum(y weight * sample) / 256, box = sum(x weight * mean of rows) / 256,
///   result = ((256 - blend) * box(level) + blend * box(level + 1)) / 256.
struct ResampleRule
{
    struct Box
    {
        int level = 0;
        AxisMap x;
        AxisMap y;
    };

    Box fine;
    Box coarse; ///< used when `blend` is above 0
    int blend = 0;

    /// Device pixels that the image covers, relative to the view.
    QRect covered() const { return {fine.x.begin, fine.y.begin, fine.x.count(), fine.y.count()}; }
};

ResampleRule makeResampleRule(const ViewGeometry& geometry, const MipLevels& mips);
} // namespace zor::viewer
