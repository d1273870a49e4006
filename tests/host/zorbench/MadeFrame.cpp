#include "tests/host/zorbench/MadeFrame.h"

#include "host/frames/encode/EncodeFrame.h"
#include "image/PixelTypeCode.h"
#include "tests/support/FormatCodes.h"

#include <algorithm>
#include <random>

std::shared_ptr<const zor::Frame> madeFrame(std::string_view format, std::uint32_t width,
                                            std::uint32_t height)
{
    const std::uint32_t code = codeOf(format);
    const std::uint32_t fullScale = (1U << zor::pixelTypeSampleBits(code)) - 1;
    zor::SampleImage scene;
    scene.width = width;
    scene.height = height;
    scene.channels = 3;
    std::minstd_rand random(width + height);
    for (std::uint32_t i = 0; i < width * height * scene.channels; ++i)
        scene.samples.push_back(static_cast<std::uint16_t>(random() % (fullScale + 1)));
    std::fill_n(scene.samples.begin(), scene.channels, std::uint16_t(0));
    std::fill_n(scene.samples.rbegin(), scene.channels, static_cast<std::uint16_t>(fullScale));
    return std::make_shared<const zor::Frame>(zor::encodeFrame(scene, code));
}
