#include "host/average/DarkFrame.h"

#include "host/average/CaptureSettings.h"
#include "host/average/FrameSamples.h"
#include "image/ZorPixelTypeTable.h"

#include <sstream>
#include <string>

namespace zor {

namespace {

/// Which samples of a pixel, in their order, are no amounts of light. Two pixels that share their colour
/// differences have them at the same place.
std::vector<std::size_t> samplesWithoutLight(std::uint32_t pixelType)
{
    std::istringstream layout(exactPixelTypeRow(pixelType)->channelLayout);
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < samplesPerPixel(pixelType); ++i) {
        std::string channel;
        layout >> channel;
        if (channel == "U" || channel == "V" || channel == "Cb" || channel == "Cr" || channel == "A")
            places.push_back(i);
    }
    return places;
}

void subtract(std::uint16_t* samples, const std::uint16_t* dark, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = static_cast<std::uint16_t>(std::max(samples[i], dark[i]) - dark[i]);
}

void check(const Frame& frame, const Frame& dark)
{
    const std::string difference = firstDifference(settingsOf(frame), settingsOf(dark));
    if (!difference.empty())
        throw std::invalid_argument("the frame is not like the dark frame: " + difference +
                                    "; take a new dark frame");
    checkSamples(frame);
    checkSamples(dark);
}

} // namespace

Frame subtractDark(const Frame& frame, const Frame& dark)
{
    check(frame, dark);
    Frame result = tightFrameLike(frame);
    result.pixels.resize(std::size_t{result.pitch} * result.height);
    const std::vector<std::size_t> kept = samplesWithoutLight(frame.pixelType);
    std::vector<std::uint16_t> samples(samplesPerRow(frame));
    std::vector<std::uint16_t> darkSamples(samples.size());
    const std::size_t perPixel = samplesPerPixel(frame.pixelType);
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        unpackSamples(frame, y, samples);
        unpackSamples(dark, y, darkSamples);
        for (const std::size_t place : kept)
            for (std::size_t i = place; i < darkSamples.size(); i += perPixel)
                darkSamples[i] = 0;
        subtract(samples.data(), darkSamples.data(), samples.size());
        packSamples(samples, y, result);
    }
    return result;
}

} // namespace zor
