#include "platform/viewer/paint/ResampleRule.h"

#include <algorithm>
#include <cmath>

namespace zor::viewer {
namespace {
// A level is shown at scales above 1/2 and up to 1 of its own; below BlendFrom the next one fades in.
constexpr double SwitchAt = 0.5;
constexpr double BlendFrom = 0.625;

ResampleRule::Box makeBox(const ViewGeometry& geometry, const MipLevels& mips, int level)
{
    const Samples& image = mips.level(0);
    const QSize view = geometry.viewSize();
    const Axis x{geometry.scale(), geometry.centre().x(), view.width(), image.width};
    const Axis y{geometry.scale(), geometry.centre().y(), view.height(), image.height};
    const Samples& samples = mips.level(level);
    return {level, makeAxisMap(x, level, samples.width), makeAxisMap(y, level, samples.height)};
}
} // namespace

ResampleRule makeResampleRule(const ViewGeometry& geometry, const MipLevels& mips)
{
    double ownScale = geometry.scale();
    int level = 0;
    while (ownScale <= SwitchAt && level + 1 < mips.levelCount()) {
        ownScale *= 2.0;
        ++level;
    }
    ResampleRule rule;
    rule.fine = makeBox(geometry, mips, level);
    if (ownScale < BlendFrom && level + 1 < mips.levelCount()) {
        const double share = std::min(1.0, (BlendFrom - ownScale) / (BlendFrom - SwitchAt));
        rule.blend = static_cast<int>(std::lround(share * AxisMap::Unit));
        rule.coarse = makeBox(geometry, mips, level + 1);
    }
    return rule;
}
} // namespace zor::viewer
