#include "host/frames/encode/EncodeFrame.h"

#include "host/frames/FrameLimits.h"
#include "host/frames/encode/LineSamples.h"
#include "host/frames/encode/PackLine.h"
#include "image/LineBytes.h"
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

void checkScene(const SampleImage& scene, const ZorPixelTypeRow& row)
{
    if (scene.width == 0 || scene.height == 0)
        throw std::invalid_argument("a scene without pixels");
    if (scene.channels != 1 && scene.channels != 3)
        throw std::invalid_argument("a scene has 1 or 3 channels, not " + std::to_string(scene.channels));
    if (scene.samples.size() != std::uint64_t{scene.width} * scene.height * scene.channels)
        throw std::invalid_argument("a scene of " + std::to_string(scene.width) + "x" +
                                    std::to_string(scene.height) + " with " +
                                    std::to_string(scene.samples.size()) + " samples");
    const std::uint32_t fullScale = (1U << pixelTypeSampleBits(row.code)) - 1;
    const std::uint32_t largest = *std::max_element(scene.samples.begin(), scene.samples.end());
    if (largest > fullScale)
        throw std::invalid_argument("the sample " + std::to_string(largest) + " is above " +
                                    std::to_string(fullScale) + ", the limit of " + row.name);
}

std::uint32_t pitchOf(const SampleImage& scene, const ZorPixelTypeRow& row, const EncodeLayout& layout)
{
    const std::uint64_t tight = tightPitch(row.code, scene.width);
    const std::uint64_t pitch = layout.pitch.value_or(std::min<std::uint64_t>(tight, MaxFrameBytes));
    if (pitch < tight)
        throw std::invalid_argument("a pitch of " + std::to_string(pitch) +
                                    " bytes is too small: a line of " + std::to_string(scene.width) +
                                    " pixels in " + row.name + " takes " + std::to_string(tight));
    if (pitch > MaxFrameBytes / scene.height)
        throw std::invalid_argument("a frame of " + std::to_string(scene.width) + "x" +
                                    std::to_string(scene.height) + " in " + row.name +
                                    " takes 4 GiB or more; choose a smaller size");
    return static_cast<std::uint32_t>(pitch);
}

} // namespace

Frame encodeFrame(const SampleImage& scene, std::uint32_t pixelType, const EncodeLayout& layout)
{
    const ZorPixelTypeRow& row = rowOf(pixelType);
    checkScene(scene, row);
    Frame frame;
    frame.width = scene.width;
    frame.height = scene.height;
    frame.pitch = pitchOf(scene, row, layout);
    frame.pixelType = pixelType;
    frame.depthSource = std::string("format ") + row.name;
    frame.pixels.assign(std::size_t{frame.pitch} * frame.height, layout.padding);

    const std::uint32_t perPixel = samplesPerPixel(pixelType);
    const auto lineBytes = static_cast<std::size_t>(tightPitch(pixelType, scene.width));
    for (std::uint32_t y = 0; y < scene.height; ++y) {
        std::uint8_t* line = frame.pixels.data() + std::size_t{y} * frame.pitch;
        std::fill_n(line, lineBytes, std::uint8_t{0});
        packLine(lineSamples(scene, row, y), pixelType, perPixel, line);
    }
    return frame;
}

} // namespace zor
