#include "platform/converter/BayerLuma.h"

#include "image/ColourFilter.h"
#include "image/ZorPixelTypeTable.h"

#include <opencv2/imgproc.hpp>

namespace zor::platform {

namespace {

int conversionFor(const ColourFilter& filter)
{
    switch (filter.at(0, 0)) {
    case ColourFilter::Red:
        return cv::COLOR_BayerRGGB2GRAY;
    case ColourFilter::Blue:
        return cv::COLOR_BayerBGGR2GRAY;
    default:
        return filter.at(1, 0) == ColourFilter::Red ? cv::COLOR_BayerGRBG2GRAY : cv::COLOR_BayerGBRG2GRAY;
    }
}

/// A header over memory of ours; OpenCV writes into such memory when size and type are right already.
template <typename Sample> cv::Mat matrixOver(const Plane<Sample>& plane)
{
    return cv::Mat(static_cast<int>(plane.height), static_cast<int>(plane.width), CV_16UC1,
                   const_cast<std::uint16_t*>(plane.samples), plane.stride * sizeof(std::uint16_t));
}

} // namespace

// In 16 bits also for samples of 8: OpenCV's arithmetic for bytes loses a code of a uniform grey here and
// there.
void bayerLuma(std::uint32_t pixelType, const Mosaic& mosaic, const Luma& luma)
{
    cv::Mat destination = matrixOver(luma);
    cv::demosaicing(matrixOver(mosaic), destination,
                    conversionFor(ColourFilter(*exactPixelTypeRow(pixelType))));
}

} // namespace zor::platform
