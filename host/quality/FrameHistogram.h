#pragma once

#include "host/quality/LaneKernels.h"
#include "image/ZorImage.h"

#include <array>
#include <cstdint>
#include <vector>

namespace zor {

/// How often each native code comes, by channel, in bins of equal width from 0 to the full scale of the
/// format's samples. No format has fewer codes than there are bins.
struct FrameHistogram
{
    struct Channel
    {
        char letter = 'Y'; ///< see SampleLanes
        /// Codes above full scale, which words of 16 bits have room for, are in the last bin.
        std::array<std::uint64_t, HistogramBins> counts{};
    };

    std::uint32_t codesPerBin = 1; ///< bin i counts the codes from i * codesPerBin on
    /// In the order of SampleLanes::channels(). None for an image without native codes.
    std::vector<Channel> channels;
};

/// Of all samples of the image.
FrameHistogram frameHistogram(const _ZorImage& image);

} // namespace zor
