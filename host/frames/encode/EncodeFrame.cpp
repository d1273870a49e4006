#include "host/frames/encode/EncodeFrame.h"

#include "host/frames/FrameLimits.h"
#include "host/frames/encode/PackRow.h"
#include "host/frames/encode/RowSamples.h"
#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/UnpackRow.h"

#include <algorithm>

namespace zor {

namespace {

const ZorPixelTypeRow& rowOf(std::uint32_t pixelType)
{
    const ZorPixelTypeRow* row = exactPixelTypeRow(pixelType);
    if (!row)
        throw std::invalid_argument("the code " + std::to_string(pixelType) + " is not a pixel format");
    return *row;
}

void checkScene(const SampleImage& scene, const ZorPixelTypeRow& format)
{
    if (scene.width == 0 || scene.height == 0)
        throw std::invalid_argument("a scene without pixels");
    if (scene.channels != 1 && scene.channels != 3)
        throw std::invalid_argument("a scene has 1 or 3 channels, not " + std::to_string(scene.channels));
    if (scene.samples.size() != std::uint64_t{scene.width} * scene.height * scene.channels)
        throw std::invalid_argument("a scene of " + std::to_string(scene.width) + "x" +
                                    std::to_string(scene.height) + " with " +
                                    std::to_string(scene.samples.size()) + " samples");
    const std::uint32_t fullScale = (1U << pixelTypeSampleBits(format.code)) - 1;
    const std::uint32_t largest = *std::max_element(scene.samples.begin(), scene.samples.end());
    if (largest > fullScale)
        throw std::invalid_argument("the sample " + std::to_string(largest) + " is above " +
                                    std::to_string(fullScale) + ", the limit of " + format.name);
}

std::uint32_t pitchOf(const SampleImage& scene, const ZorPixelTypeRow& format, const EncodeLayout& layout)
{
    const std::uint64_t tight = tightPitch(format.code, scene.width);
    const std::uint64_t pitch = layout.pitch.value_or(std::min<std::uint64_t>(tight, MaxFrameBytes));
    if (pitch < tight)
        throw std::invalid_argument("a pitch of " + std::to_string(pitch) + " bytes is too small: a row of " +
                                    std::to_string(scene.width) + " pixels in " + format.name + " takes " +
                                    std::to_string(tight));
    if (pitch > MaxFrameBytes / scene.height)
        throw std::invalid_argument("a frame of " + std::to_string(scene.width) + "x" +
                                    std::to_string(scene.height) + " in " + format.name +
                                    " takes 4 GiB or more; choose a smaller size");
    return static_cast<std::uint32_t>(pitch);
}

} // namespace

Frame encodeFrame(const SampleImage& scene, std::uint32_t pixelType, const EncodeLayout& layout)
{
    const ZorPixelTypeRow& format = rowOf(pixelType);
    checkScene(scene, format);
    Frame frame;
    frame.width = scene.width;
    frame.height = scene.height;
    frame.pitch = pitchOf(scene, format, layout);
    frame.pixelType = pixelType;
    frame.depthSource = std::string("format ") + format.name;
    frame.pixels.assign(std::size_t{frame.pitch} * frame.height, layout.padding);

    const std::uint32_t perPixel = samplesPerPixel(pixelType);
    const auto rowBytes = static_cast<std::size_t>(tightPitch(pixelType, scene.width));
    for (std::uint32_t y = 0; y < scene.height; ++y) {
        std::uint8_t* row = frame.pixels.data() + std::size_t{y} * frame.pitch;
        std::fill_n(row, rowBytes, std::uint8_t{0});
        packRow(rowSamples(scene, format, y), pixelType, perPixel, row);
    }
    return frame;
}

} // namespace zor
