#include "host/frames/RawRange.h"

#include "host/frames/DepthRule.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"

namespace zor {

namespace {

/// A little-endian word of 16 bits.
std::uint32_t plainSample(const std::uint8_t* line, std::uint32_t index)
{
    const std::uint8_t* sample = line + 2 * std::size_t{index};
    return static_cast<std::uint32_t>(sample[0] | sample[1] << 8);
}

std::optional<std::string> firstAbove(const _ZorImage& frame, std::uint32_t perPixel)
{
    const std::uint32_t limit = (1U << pixelTypeSampleBits(frame.pixelType)) - 1;
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        const std::uint8_t* line = frame.data + std::size_t{y} * frame.pitch;
        for (std::uint32_t i = 0; i < frame.width * perPixel; ++i) {
            const std::uint32_t value = plainSample(line, i);
            if (value > limit)
                return "the sample " + std::to_string(value) + " at " +
                       pixelPlace(frame.width, std::size_t{y} * frame.width + i / perPixel) + " is above " +
                       std::to_string(limit) + ", the limit of " + exactPixelTypeRow(frame.pixelType)->name;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> sampleAboveDepth(const _ZorImage& frame)
{
    const std::uint32_t type = frame.pixelType;
    const std::uint32_t sampleBits = pixelTypeSampleBits(type);
    constexpr std::uint32_t wordBits = 16;
    if (pixelTypePackingClass(type) != PackingClass::Unpacked || sampleBits <= 8 || sampleBits >= wordBits)
        return std::nullopt;
    return firstAbove(frame, pixelTypeBits(type) / wordBits);
}

} // namespace zor
