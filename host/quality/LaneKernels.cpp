#include "host/quality/LaneKernels.h"

#include <algorithm>

namespace zor {

namespace {

/// Sums of the samples of one call, in 32 bits where these are enough.
struct RunSums
{
    std::uint16_t minimum[LaneCount];
    std::uint16_t maximum[LaneCount];
    std::uint32_t sum[LaneCount];
    std::uint64_t squares[LaneCount];
};

void addTo(RunSums& run, std::size_t lane, std::uint32_t sample)
{
    run.minimum[lane] = std::min(run.minimum[lane], static_cast<std::uint16_t>(sample));
    run.maximum[lane] = std::max(run.maximum[lane], static_cast<std::uint16_t>(sample));
    run.sum[lane] += sample;
    run.squares[lane] += sample * sample;
}

} // namespace

void addSamples(const std::uint16_t* samples, std::size_t count, LaneSums& sums)
{
    RunSums run{};
    std::copy(sums.minimum.begin(), sums.minimum.end(), run.minimum);
    std::copy(sums.maximum.begin(), sums.maximum.end(), run.maximum);
    const std::size_t whole = count / LaneCount * LaneCount;
    for (std::size_t i = 0; i < whole; i += LaneCount)
        for (std::size_t lane = 0; lane < LaneCount; ++lane)
            addTo(run, lane, samples[i + lane]);
    for (std::size_t lane = 0; lane < count - whole; ++lane)
        addTo(run, lane, samples[whole + lane]);
    for (std::size_t lane = 0; lane < LaneCount; ++lane) {
        sums.minimum[lane] = run.minimum[lane];
        sums.maximum[lane] = run.maximum[lane];
        sums.count[lane] += count / LaneCount + (lane < count - whole ? 1 : 0);
        sums.sum[lane] += run.sum[lane];
        sums.squares[lane] += run.squares[lane];
    }
}

void countSamples(const std::uint16_t* samples, std::size_t count, unsigned shift, LaneBins& bins)
{
    // Equal samples side by side are counted in places of their own: none waits for the one before.
    std::size_t i = 0;
    const auto countOne = [&](std::size_t lane) {
        ++bins[lane][std::min<std::size_t>(samples[i + lane] >> shift, HistogramBins - 1)];
    };
    for (; i + LaneCount <= count; i += LaneCount)
        for (std::size_t lane = 0; lane < LaneCount; ++lane)
            countOne(lane);
    for (std::size_t lane = 0; lane < count - i; ++lane)
        countOne(lane);
}

} // namespace zor
