#pragma once

#include "platform/viewer/paint/AxisMap.h"

#include <vector>

namespace zor::viewer {
/// Device pixels side by side whose samples begin in the same tile, on one axis.
struct TileRun
{
    int begin; ///< counted from the first device pixel of the table
    int count;
    int fine;   ///< first sample of the tile of the fine level
    int coarse; ///< the same of the coarse level; 0 without one
};

/// Cuts a table, and with it that of a coarser level when one is used, into runs; `edge` is the samples of a
/// tile.
std::vector<TileRun> tileRuns(const AxisMap& fine, const AxisMap* coarse, int edge);
} // namespace zor::viewer
