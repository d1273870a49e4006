#pragma once

#include "host/quality/SampleLanes.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zor {

/// What the samples of each lane come to. Exact for 2^31 samples and more.
struct LaneSums
{
    LaneSums() { minimum.fill(0xFFFF); }

    std::array<std::uint16_t, LaneCount> minimum; ///< 0xFFFF for none
    std::array<std::uint16_t, LaneCount> maximum{};
    std::array<std::uint64_t, LaneCount> count{};
    std::array<std::uint64_t, LaneCount> sum{};
    std::array<std::uint64_t, LaneCount> squares{};
};

constexpr std::size_t HistogramBins = 256;

/// How many samples of each lane are in each bin.
using LaneBins = std::array<std::array<std::uint32_t, HistogramBins>, LaneCount>;

/// Adds `count` samples, at most 65536, the first in lane 0.
void addSamples(const std::uint16_t* samples, std::size_t count, LaneSums& sums);

/// Counts each sample in the bin of its upper bits: the code without its lower `shift` bits. Larger codes
/// than there are bins for count in the last one.
void countSamples(const std::uint16_t* samples, std::size_t count, unsigned shift, LaneBins& bins);

} // namespace zor
