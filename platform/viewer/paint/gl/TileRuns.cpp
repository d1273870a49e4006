#include "platform/viewer/paint/gl/TileRuns.h"

namespace zor::viewer {
std::vector<TileRun> tileRuns(const AxisMap& fine, const AxisMap* coarse, int edge)
{
    std::vector<TileRun> runs;
    for (int i = 0; i < fine.count(); ++i) {
        const auto index = static_cast<std::size_t>(i);
        const int fineTile = fine.first[index] / edge * edge;
        const int coarseTile = coarse ? coarse->first[index] / edge * edge : 0;
        if (runs.empty() || runs.back().fine != fineTile || runs.back().coarse != coarseTile)
            runs.push_back({i, 0, fineTile, coarseTile});
        ++runs.back().count;
    }
    return runs;
}
} // namespace zor::viewer
