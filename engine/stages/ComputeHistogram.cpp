#include "dialog/CFFCUtility.h"
#include "dialog/Message.h"
#include "engine/Allocation.h"
#include "engine/HistogramPeak.h"
#include "engine/pix/PixAlloc.h"
#include "engine/pix/PixHistogram.h"

#include <cstring>

bool CFFCUtility::ComputeHistogram()
{
    if (!m_image)
        return false;
    m_histogramLevels = zor::histogramLevels(m_depth);
    zorRelease(m_histogram);
    const std::size_t bytes = static_cast<std::size_t>(m_histogramLevels) * sizeof *m_histogram;
    m_histogram = static_cast<std::int32_t*>(zorAllocate(bytes));
    if (!m_histogram) {
        zor::showNotEnoughMemory();
        return false;
    }
    std::memset(m_histogram, 0, bytes);

    const float lower = 0.0F;
    const float upper = static_cast<float>(m_histogramLevels - 1);
    const zor::PixelRegion region{m_width, m_height};
    const bool bytePixels = m_depth == 8;
    std::int32_t planSize = 0;
    std::int32_t bufferSize = 0;
    zor::pixHistogramSizes(bytePixels ? zor::PixType8u : zor::PixType16s, region, &m_histogramLevels, 1, 1,
                           &planSize, &bufferSize);
    // Without plan or buffer the primitives refuse and the histogram stays empty.
    void* plan = zor::pixAlloc(planSize);
    void* buffer = zor::pixAlloc(bufferSize);
    // The plan is of the 8-bit type at every depth.
    zor::pixHistogramInitUniform(zor::PixType8u, &lower, &upper, &m_histogramLevels, 1, plan);
    if (bytePixels)
        zor::pixHistogram8u(m_image, m_step, region, m_histogram, plan, buffer);
    else
        zor::pixHistogram16s(reinterpret_cast<const std::int16_t*>(m_image), m_step, region, m_histogram,
                             plan, buffer);
    zor::pixFree(plan);
    zor::pixFree(buffer);

    const std::int32_t largest = zor::largestInnerBin(m_histogram, m_histogramLevels);
    m_histogramPeak = zor::nextHistogramPeak(m_histogramPeak, m_histogramFloor, largest);
    return true;
}
