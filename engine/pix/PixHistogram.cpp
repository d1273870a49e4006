#include "engine/pix/PixHistogram.h"

#include "engine/ImageView.h"
#include "engine/pix/PixHistogramPlan.h"
#include "engine/pix/PixRows.h"

#include <algorithm>

namespace zor {
namespace {

/// From this many pixels on the pass over all counters costs less than finding each pixel's bin.
constexpr std::int64_t DirectPixels = 65536;

constexpr std::int32_t Values8u = 256;
constexpr std::int32_t Values16s = 65536;
constexpr std::int32_t Lowest16s = -32768;

PixHistogramPlan headOf(const void* plan)
{
    PixHistogramPlan head;
    std::memcpy(&head, plan, sizeof head);
    return head;
}

/// Bin k gets the counters of level k up to level k + 1; counter i belongs to value `lowest` + i.
void sumCounters(const std::uint32_t* counters, std::int64_t lowest, std::int64_t values, const void* plan,
                 std::int32_t levels, std::int32_t* bins)
{
    for (std::int32_t k = 0; k < levels - 1; ++k) {
        const std::int64_t from = std::max<std::int64_t>(planLevel(plan, k) - lowest, 0);
        const std::int64_t to = std::min<std::int64_t>(planLevel(plan, k + 1) - lowest, values);
        std::uint32_t sum = 0;
        for (std::int64_t i = from; i < to; ++i)
            sum += counters[i];
        bins[k] = static_cast<std::int32_t>(sum);
    }
}

void countRow8u(const std::uint8_t* row, std::int32_t width, std::uint32_t* counters)
{
    for (std::int32_t x = 0; x < width; ++x)
        ++counters[row[x]];
}

void countRow16s(const std::uint8_t* row, std::int32_t width, std::uint32_t* counters)
{
    for (std::int32_t x = 0; x < width; ++x)
        ++counters[static_cast<std::int16_t>(loadCell(row, x)) - Lowest16s];
}

/// Levels `first`, first + spacing, ... up to `last`.
void countRowDirect(const std::uint8_t* row, std::int32_t width, std::int64_t first, std::int64_t last,
                    std::int64_t spacing, std::int32_t* bins)
{
    for (std::int32_t x = 0; x < width; ++x) {
        const std::int64_t value = static_cast<std::int16_t>(loadCell(row, x));
        if (value >= first && value < last)
            ++bins[(value - first) / spacing];
    }
}

} // namespace

std::int32_t pixHistogram8u(const std::uint8_t* source, std::int32_t step, PixelRegion region,
                            std::int32_t* bins, const void* plan, void* buffer)
{
    if (!source || !bins || !plan || !buffer)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    if (step < 1 || step < region.width)
        return PixStepTooSmall;
    if (!isHistogramPlan(plan))
        return PixNotAHistogramPlan;
    const PixHistogramPlan head = headOf(plan);

    auto* counters = static_cast<std::uint32_t*>(buffer);
    std::fill_n(counters, Values8u, 0u);
    for (std::int32_t y = 0; y < region.height; ++y)
        countRow8u(pixRow(source, step, y), region.width, counters);
    sumCounters(counters, 0, Values8u, plan, head.levelCounts[0], bins);
    return PixDone;
}

std::int32_t pixHistogram16s(const std::int16_t* source, std::int32_t step, PixelRegion region,
                             std::int32_t* bins, const void* plan, void* buffer)
{
    if (!source || !bins || !plan || !buffer)
        return PixNullPointer;
    if (isEmpty(region))
        return PixEmptyRegion;
    if (step < std::int64_t{region.width} * 2)
        return PixStepTooSmall;
    if (!isHistogramPlan(plan))
        return PixNotAHistogramPlan;
    const PixHistogramPlan head = headOf(plan);

    const std::int32_t levels = head.levelCounts[0];
    if (head.spacing > 0 && std::int64_t{region.width} * region.height < DirectPixels) {
        std::fill_n(bins, levels - 1, 0);
        for (std::int32_t y = 0; y < region.height; ++y) {
            countRowDirect(pixRow(source, step, y), region.width, planLevel(plan, 0),
                           planLevel(plan, levels - 1), head.spacing, bins);
        }
        return PixDone;
    }
    auto* counters = static_cast<std::uint32_t*>(buffer);
    std::fill_n(counters, Values16s, 0u);
    for (std::int32_t y = 0; y < region.height; ++y)
        countRow16s(pixRow(source, step, y), region.width, counters);
    sumCounters(counters, Lowest16s, Values16s, plan, levels, bins);
    return PixDone;
}

} // namespace zor
