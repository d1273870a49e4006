#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace zor::viewer {
/// Which samples of one mip level make up each device pixel along one axis, and with what weight. Both
/// canvases paint from these tables and from nothing else, so that they cannot differ.
struct AxisMap
{
    /// Weights of a device pixel add up to this.
    static constexpr int Unit = 256;
    static constexpr int MostTaps = 3;
    using Weights = std::array<std::uint16_t, MostTaps>;

    int begin = 0; ///< first device pixel whose centre lies on the image
    int taps = 1;  ///< samples to read: `first` to `first` + taps - 1 all exist
    std::vector<std::int32_t> first;
    std::vector<Weights> weights; ///< of samples first, first + 1, first + 2

    int count() const { return static_cast<int>(first.size()); }
};

/// One axis of a view: `centre` (image pixels) is in the middle of `viewLength` device pixels.
struct Axis
{
    double scale; ///< device pixels per image pixel
    double centre;
    int viewLength;
    int imageLength;
};

/// The table for mip level `level` of `levelLength` samples. From scale 1 on a device pixel shows the
/// image pixel under its centre. Below, it is the mean over its own extent, at least one sample wide (which
/// is linear interpolation) and at most two, each sample weighted by the part that is covered; what lies
/// beyond the image's edge has no weight.
AxisMap makeAxisMap(const Axis& axis, int level, int levelLength);
} // namespace zor::viewer
