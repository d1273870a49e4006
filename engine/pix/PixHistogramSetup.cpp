#include "engine/pix/PixHistogram.h"

#include "engine/FixedPoint.h"
#include "engine/pix/PixHistogramPlan.h"
#include "engine/pix/PixRows.h"

#include <algorithm>
#include <limits>

namespace zor {
namespace {

/// Bytes of work buffer for one channel; -1 for an unknown data type.
std::int32_t bufferBytes(std::int32_t dataType)
{
    switch (dataType) {
    case PixType8u:
        return 1024;
    case PixType16u:
    case PixType16s:
        return 262144;
    case PixType32f:
        return 0;
    default:
        return -1;
    }
}

bool hasTooFewLevels(const std::int32_t* levels, std::int32_t channels)
{
    return std::any_of(levels, levels + channels, [](std::int32_t count) { return count < 2; });
}

/// A plan of 2^31 bytes and more has no size in 32 bits; 0 is one for which there is no block.
std::int32_t planBytes(const std::int32_t* levels, std::int32_t channels)
{
    std::int64_t bytes = sizeof(PixHistogramPlan);
    for (std::int32_t c = 0; c < channels; ++c)
        bytes += std::int64_t{levels[c]} * 4;
    return bytes <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(bytes) : 0;
}

/// Writes one channel's levels from entry `first` on and returns their spacing.
double setLevels(void* plan, std::int32_t first, float lower, float upper, std::int32_t count)
{
    const double spacing = (static_cast<double>(upper) - lower) / (count - 1);
    setPlanLevel(plan, first, truncateToInt32(lower));
    for (std::int32_t k = 1; k < count - 1; ++k)
        setPlanLevel(plan, first + k, truncateToInt32(lower + k * spacing));
    setPlanLevel(plan, first + count - 1, truncateToInt32(upper));
    return spacing;
}

/// The one distance of the first channel's levels, or 0 when they are not evenly spaced.
std::int32_t commonSpacing(const void* plan, std::int32_t count)
{
    const std::int64_t spacing = std::int64_t{planLevel(plan, 1)} - planLevel(plan, 0);
    for (std::int32_t k = 1; k < count; ++k) {
        if (std::int64_t{planLevel(plan, k)} - planLevel(plan, k - 1) != spacing)
            return 0;
    }
    const bool usable = spacing > 0 && spacing <= std::numeric_limits<std::int32_t>::max();
    return usable ? static_cast<std::int32_t>(spacing) : 0;
}

} // namespace

std::int32_t pixHistogramSizes(std::int32_t dataType, PixelRegion region, const std::int32_t* levels,
                               std::int32_t channels, std::int32_t /*uniform*/, std::int32_t* planSize,
                               std::int32_t* bufferSize)
{
    if (!levels || !planSize || !bufferSize)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    if (!isChannelCount(channels))
        return PixChannelCount;
    if (hasTooFewLevels(levels, channels))
        return PixTooFewLevels;
    if (bufferBytes(dataType) < 0)
        return PixUnknownDataType;
    *planSize = planBytes(levels, channels);
    *bufferSize = bufferBytes(dataType) * channels;
    return PixDone;
}

std::int32_t pixHistogramInitUniform(std::int32_t dataType, const float* lower, const float* upper,
                                     const std::int32_t* levels, std::int32_t channels, void* plan)
{
    if (bufferBytes(dataType) < 0)
        return PixUnknownDataType;
    if (!lower || !upper || !levels || !plan)
        return PixNullPointer;
    if (!isChannelCount(channels))
        return PixChannelCount;
    if (hasTooFewLevels(levels, channels))
        return PixTooFewLevels;
    for (std::int32_t c = 0; c < channels; ++c) {
        if (!(lower[c] < upper[c]))
            return PixLevelOrder;
    }

    PixHistogramPlan head{};
    head.dataType = dataType;
    head.channels = channels;
    head.uniform = 1;
    std::memcpy(head.mark, PixHistogramMark, sizeof head.mark);
    std::int32_t status = PixDone;
    std::int32_t first = 0;
    for (std::int32_t c = 0; c < channels; ++c) {
        if (setLevels(plan, first, lower[c], upper[c], levels[c]) < 1.0)
            status = PixWarningLevelSpacing;
        head.levelCounts[c] = levels[c];
        first += levels[c];
    }
    head.spacing = commonSpacing(plan, levels[0]);
    std::memcpy(plan, &head, sizeof head);
    return status;
}

} // namespace zor
