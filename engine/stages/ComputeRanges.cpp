#include "dialog/CFFCUtility.h"
#include "engine/PlotRange.h"
#include "engine/pix/PixMinMax.h"

namespace {

/// The extremes of cells read as signed numbers. What the primitive refuses leaves both as they are.
void signedExtremes(const void* cells, std::int32_t step, zor::PixelRegion region, std::int32_t& minimum,
                    std::int32_t& maximum)
{
    std::int16_t low;
    std::int16_t high;
    if (zor::pixMinMax16s(static_cast<const std::int16_t*>(cells), step, region, &low, &high) != zor::PixDone)
        return;
    minimum = low;
    maximum = high;
}

/// The same of bytes.
void byteExtremes(const std::uint8_t* pixels, std::int32_t step, zor::PixelRegion region,
                  std::int32_t& minimum, std::int32_t& maximum)
{
    std::uint8_t low;
    std::uint8_t high;
    if (zor::pixMinMax8u(pixels, step, region, &low, &high) != zor::PixDone)
        return;
    minimum = low;
    maximum = high;
}

} // namespace

void CFFCUtility::ComputeRanges()
{
    m_rangeXMax = m_width;
    m_rangeXMin = 0;
    const zor::PixelRegion region{m_width, m_height};
    if (m_depth == 8) {
        if (m_image)
            byteExtremes(m_image, m_step, region, m_imageMin, m_imageMax);
        // Column-corrected cells can be above 255, and the axis follows them.
        if (m_flatX)
            signedExtremes(m_flatX, m_flatXStep, region, m_flatMin, m_flatMax);
    } else {
        if (m_image)
            signedExtremes(m_image, m_step, region, m_imageMin, m_imageMax);
        // The image after both passes, with the step and the null test of the one after the column pass.
        if (m_flatX) {
            signedExtremes(m_flatY, m_flatXStep, region, m_flatMin, m_flatMax);
            // The extremes' places are looked up and dropped: deliberate, see docs/decisions.md.
            zor::pixMinMaxLocate16u(m_flatY, m_flatXStep, region, nullptr, nullptr, nullptr, nullptr);
        }
    }
    const zor::PlotRange range = zor::plotRange(m_imageMin, m_imageMax, m_flatMin, m_flatMax);
    m_rangeYMin = range.minimum;
    m_rangeYMax = range.maximum;
}
