#include "host/frames/encode/RowSamples.h"

#include "host/frames/encode/Rec601.h"
#include "image/ColourFilter.h"
#include "image/PixelTypeCode.h"
#include "image/unpack/UnpackRow.h"

#include <sstream>
#include <string>

namespace zor {

namespace {

Rgb colourAt(const SampleImage& scene, std::uint32_t x, std::uint32_t y)
{
    const std::uint16_t* pixel = scene.samples.data() + (std::size_t{y} * scene.width + x) * scene.channels;
    return scene.channels == 1 ? Rgb{pixel[0], pixel[0], pixel[0]} : Rgb{pixel[0], pixel[1], pixel[2]};
}

/// What a channel letter, the first of its token, is in a pixel of this colour.
std::uint32_t component(char letter, const Rgb& colour, std::uint32_t bits)
{
    switch (letter) {
    case 'R':
        return colour.red;
    case 'G':
        return colour.green;
    case 'B':
        return colour.blue;
    case 'U':
        return rec601Chroma(colour, colour.blue, 114, bits);
    case 'V':
        return rec601Chroma(colour, colour.red, 299, bits);
    case 'A':
        return (1U << bits) - 1;
    default: // Y and W
        return rec601Luma(colour);
    }
}

/// One letter for each stored sample of a pixel, or of a pair in 4:2:2.
std::string storedLetters(const ZorPixelTypeRow& row)
{
    std::istringstream layout(row.channelLayout);
    std::string letters;
    for (std::string token; layout >> token;)
        letters += token == "Cb" ? 'U' : token == "Cr" ? 'V' : token[0];
    return letters;
}

} // namespace

std::vector<std::uint16_t> rowSamples(const SampleImage& scene, const ZorPixelTypeRow& row, std::uint32_t y)
{
    const std::uint32_t bits = pixelTypeSampleBits(row.code);
    const std::uint32_t perPixel = samplesPerPixel(row.code);
    std::vector<std::uint16_t> samples;
    samples.reserve(std::size_t{scene.width} * perPixel);
    const auto add = [&](char letter, const Rgb& colour) {
        samples.push_back(static_cast<std::uint16_t>(component(letter, colour, bits)));
    };

    const PixelFamily family = pixelTypeFamily(row.code);
    if (family == PixelFamily::Bayer || family == PixelFamily::TrueSense) {
        const ColourFilter filter(row);
        for (std::uint32_t x = 0; x < scene.width; ++x)
            add("RGBW"[filter.at(x, y)], colourAt(scene, x, y));
        return samples;
    }

    const std::string letters = storedLetters(row);
    for (std::uint32_t x = 0; x < scene.width; ++x) {
        const std::size_t first = std::size_t{x} * perPixel % letters.size();
        for (std::size_t i = first; i < first + perPixel; ++i) {
            // Chroma is that of the pair's even pixel; a pixel with all its samples is its own pair.
            const bool chroma = letters[i] == 'U' || letters[i] == 'V';
            add(letters[i], colourAt(scene, chroma && first > 0 ? x - 1 : x, y));
        }
    }
    return samples;
}

} // namespace zor
