#pragma once

#include "image/ZorImage.h"
#include "image/ZorPixelTypeRow.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zor {

/// Samples of a row after which its channels have begun again in every format: pixels and cells have 1, 2, 3
/// or 4. Sample i of a run of samples is in lane i % LaneCount.
constexpr std::size_t LaneCount = 12;

/// A rectangle of pixels. One without a positive width and height is empty.
struct PixelRegion
{
    std::int32_t x = 0; ///< left column; may lie outside of the image, as the others
    std::int32_t y = 0; ///< upper row
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// The part of the region that lies on the image; all zeros when there is none.
PixelRegion clippedTo(const _ZorImage& image, const PixelRegion& region);

/// Which channel each sample of a format belongs to: Y, U, V, R, G, B, W (panchromatic) or A. The samples of
/// a Bayer or TrueSense format belong to the colour of their filter, both greens to G; Cb counts as U, Cr as
/// V. A pixel of a 4:2:2 format has its luma and by turns U or V.
class SampleLanes
{
public:
    explicit SampleLanes(const ZorPixelTypeRow& row);

    /// The letters of the format's channels: "Y", "RGB", "RGBW", "RGBA", "YUV" or "YUVA".
    const std::string& channels() const { return m_channels; }

    /// Rows after which the channels begin again: 1, 2 or 4.
    std::uint32_t rows() const { return static_cast<std::uint32_t>(m_cell.size()); }

    /// The places in channels() of the samples from the first one of pixel (x, y) on.
    std::array<std::size_t, LaneCount> lanesFrom(std::size_t x, std::size_t y) const;

private:
    std::vector<std::string> m_cell; ///< letters of the samples, row by row
    std::size_t m_samplesPerPixel;
    std::string m_channels;
};

/// Takes samples that lie side by side in row `y`. The first is the first one of a pixel in lane 0.
using TakeSamples = std::function<void(std::uint32_t y, const std::uint16_t* samples, std::size_t count)>;

/// Hands out the native samples of a region of an image that hasNativeCodes(), from the top down and from the
/// left, in runs that stay in the first-level cache. The region lies on the image.
void forEachRun(const _ZorImage& image, const PixelRegion& region, const TakeSamples& take);

} // namespace zor
