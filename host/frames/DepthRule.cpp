#include "host/frames/DepthRule.h"

#include "host/frames/Fail.h"
#include "host/frames/FormatName.h"
#include "image/Pitch.h"

#include <algorithm>
#include <cstring>

namespace zor {

namespace {

struct Depth
{
    std::uint32_t bits;
    std::string source;
    bool guessed = false;
};

Depth chooseDepth(const StoredSamples& samples, std::optional<std::uint32_t> asked)
{
    if (asked)
        return {*asked, "--depth " + std::to_string(*asked)};
    if (samples.stated)
        return {depthForBits(samples.stated->bits), samples.stated->source};
    const std::uint16_t largest = *std::max_element(samples.values.begin(), samples.values.end());
    return {depthForBits(bitsForValue(largest)), "largest sample " + std::to_string(largest), true};
}

void checkSamples(const std::string& path, const StoredSamples& samples, const Depth& depth,
                  const std::string& advice)
{
    const std::uint32_t limit = (1U << depth.bits) - 1;
    const auto above = std::find_if(samples.values.begin(), samples.values.end(),
                                    [limit](std::uint16_t sample) { return sample > limit; });
    if (above == samples.values.end())
        return;
    const auto pixel = static_cast<std::size_t>(above - samples.values.begin()) / samples.channels;
    failFrame(path, "the sample " + std::to_string(*above) + " at " + pixelPlace(samples.width, pixel) +
                        " is above " + std::to_string(limit) + ", the limit of depth " +
                        std::to_string(depth.bits) + " (" + depth.source + "); " + advice);
}

} // namespace

std::uint32_t bitsForValue(std::uint32_t largest)
{
    std::uint32_t bits = 1;
    while (bits < 32 && largest >> bits != 0)
        ++bits;
    return bits;
}

std::uint32_t depthForBits(std::uint32_t bits)
{
    for (const std::uint32_t depth : {8U, 10U, 12U}) {
        if (bits <= depth)
            return depth;
    }
    return 16;
}

std::string pixelPlace(std::uint32_t width, std::size_t index)
{
    return "column " + std::to_string(index % width) + ", row " + std::to_string(index / width) + " (from 0)";
}

Frame frameFromSamples(const std::string& path, const StoredSamples& samples, const FrameOptions& options)
{
    const Depth depth = chooseDepth(samples, options.depth);
    checkSamples(path, samples, depth,
                 options.depthIsOffered ? "give a larger --depth"
                                        : "correct this entry or write the file again");

    Frame frame;
    frame.width = samples.width;
    frame.height = samples.height;
    const std::string family = samples.channels == 3 ? "RGB" : "Mono";
    frame.pixelType = formatByName(path, family + std::to_string(depth.bits)).code;
    frame.pitch = static_cast<std::uint32_t>(tightPitch(frame.pixelType, frame.width));
    frame.depthSource = depth.source;
    frame.depthGuessed = depth.guessed && depth.bits < samples.storedBits;
    if (depth.bits == 8) {
        frame.pixels.resize(samples.values.size());
        std::transform(samples.values.begin(), samples.values.end(), frame.pixels.begin(),
                       [](std::uint16_t sample) { return static_cast<std::uint8_t>(sample); });
    } else {
        frame.pixels.resize(samples.values.size() * sizeof(std::uint16_t));
        std::memcpy(frame.pixels.data(), samples.values.data(), frame.pixels.size());
    }
    return frame;
}

} // namespace zor
