#include "platform/viewer/paint/AxisMap.h"

#include <algorithm>
#include <cmath>

namespace zor::viewer {
namespace {
// Positions are on the image: from 0 to below its length.
void addNearest(AxisMap& map, double position)
{
    map.first.push_back(static_cast<int>(std::floor(position)));
    map.weights.push_back({AxisMap::Unit, 0, 0});
}

// Rounds the running sum, so that the weights add up exactly.
void addBox(AxisMap& map, double position, double extent, double imageEnd, int length)
{
    const double from = std::max(position - extent * 0.5, 0.0);
    const double to = std::min(position + extent * 0.5, imageEnd);
    const int first = std::min(static_cast<int>(std::floor(from)), length - map.taps);
    AxisMap::Weights weights{};
    int before = 0;
    for (int i = 0; i < map.taps; ++i) {
        const double reached = std::clamp((first + i + 1 - from) / (to - from), 0.0, 1.0);
        const bool isLast = i == map.taps - 1;
        const int sum = isLast ? AxisMap::Unit : static_cast<int>(std::lround(reached * AxisMap::Unit));
        weights[static_cast<std::size_t>(i)] = static_cast<std::uint16_t>(sum - before);
        before = sum;
    }
    map.first.push_back(first);
    map.weights.push_back(weights);
}
} // namespace

AxisMap makeAxisMap(const Axis& axis, int level, int levelLength)
{
    const auto imagePosition = [&](int pixel) {
        return (pixel + 0.5 - axis.viewLength * 0.5) / axis.scale + axis.centre;
    };
    const auto isOutside = [&](int pixel) {
        const double position = imagePosition(pixel);
        return position < 0.0 || position >= axis.imageLength;
    };

    AxisMap map;
    map.taps = axis.scale >= 1.0 ? 1 : std::min(AxisMap::MostTaps, levelLength);
    int end = axis.viewLength;
    while (map.begin < end && isOutside(map.begin))
        ++map.begin;
    while (end > map.begin && isOutside(end - 1))
        --end;
    map.first.reserve(static_cast<std::size_t>(end - map.begin));
    map.weights.reserve(static_cast<std::size_t>(end - map.begin));

    const double step = std::ldexp(1.0, level);
    const double extent = std::clamp(1.0 / (axis.scale * step), 1.0, 2.0);
    for (int pixel = map.begin; pixel < end; ++pixel) {
        const double position = imagePosition(pixel) / step;
        if (axis.scale >= 1.0)
            addNearest(map, position);
        else
            addBox(map, position, extent, axis.imageLength / step, levelLength);
    }
    return map;
}
} // namespace zor::viewer
