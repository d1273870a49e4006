#include "platform/converter/LumaRow.h"

#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/UnpackRow.h"

#include <opencv2/imgproc.hpp>

namespace zor::platform {

namespace {

/// The luma is written through a header over our own memory, whose size and type are right already.
template <int Conversion, int Channels>
void colourLuma(const std::uint16_t* samples, std::uint16_t* luma, std::size_t width)
{
    const int columns = static_cast<int>(width);
    const cv::Mat source(1, columns, CV_16UC(Channels), const_cast<std::uint16_t*>(samples));
    cv::Mat destination(1, columns, CV_16UC1, luma);
    cv::cvtColor(source, destination, Conversion);
}

/// Takes the sample at `First` out of every `Step`.
template <std::size_t First, std::size_t Step>
void pickLuma(const std::uint16_t* samples, std::uint16_t* luma, std::size_t width)
{
    for (std::size_t x = 0; x < width; ++x)
        luma[x] = samples[Step * x + First];
}

LumaRow lumaRowOfColours(const ZorPixelTypeRow& row)
{
    const bool redFirst = row.channelIndex(u'R') == 0;
    if (row.channels == 4)
        return redFirst ? colourLuma<cv::COLOR_RGBA2GRAY, 4> : colourLuma<cv::COLOR_BGRA2GRAY, 4>;
    return redFirst ? colourLuma<cv::COLOR_RGB2GRAY, 3> : colourLuma<cv::COLOR_BGR2GRAY, 3>;
}

LumaRow lumaRowOfYuv(const ZorPixelTypeRow& row)
{
    if (samplesPerPixel(row.code) == 4)
        return pickLuma<0, 4>;
    return isLumaFirst(row) ? pickLuma<0, 2> : pickLuma<1, 2>;
}

} // namespace

LumaRow lumaRowFor(std::uint32_t pixelType)
{
    const ZorPixelTypeRow& row = *exactPixelTypeRow(pixelType);
    switch (pixelTypeFamily(pixelType)) {
    case PixelFamily::Rgb:
        return lumaRowOfColours(row);
    case PixelFamily::Yuv:
        return lumaRowOfYuv(row);
    default:
        return nullptr;
    }
}

} // namespace zor::platform
