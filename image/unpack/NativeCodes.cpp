#include "image/unpack/NativeCodes.h"

#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/UnpackRow.h"

#include <algorithm>

namespace zor {

namespace {

/// In every format this many pixels are a whole number of bytes.
constexpr std::uint32_t Group = 8;

using GroupSamples = std::array<std::uint16_t, Group * 4>;

/// The samples of the group of pixels from `first` on, as far as the row goes.
GroupSamples unpackGroup(const _ZorImage& image, std::uint32_t first, std::uint32_t y)
{
    GroupSamples samples{};
    const std::uint32_t pixels = std::min(Group, image.width - first);
    const std::uint8_t* group =
        image.data + std::size_t{y} * image.pitch + tightPitch(image.pixelType, first);
    const bool isUnpacked = pixelTypePackingClass(image.pixelType) == PackingClass::Unpacked;
    // A word's bits above the depth are shown and not limited: they show what is wrong with an image.
    if (isUnpacked && pixelTypeSampleBits(image.pixelType) > 8)
        unpackRowFor(Mono16)(group, samples.data(), pixels * samplesPerPixel(image.pixelType));
    else
        unpackRowFor(image.pixelType)(group, samples.data(), pixels);
    return samples;
}

/// Luma and colour differences of a 4:2:2 format, where each pixel stores its luma and, by turns, the first
/// or the second difference.
NativeCodes sharedCodes(const GroupSamples& samples, std::uint32_t pixel, bool isLumaFirst, bool hasSecond)
{
    const std::uint32_t luma = isLumaFirst ? 0 : 1;
    const std::uint32_t pair = pixel / 2 * 2;
    const auto difference = [&](std::uint32_t of) { return samples[of * 2 + 1 - luma]; };
    NativeCodes codes{2, {samples[pixel * 2 + luma], difference(pair)}};
    if (hasSecond)
        codes.codes[codes.count++] = difference(pair + 1);
    return codes;
}

bool isWithin(const _ZorImage& image, std::uint32_t x, std::uint32_t y)
{
    return image.data && x < image.width && y < image.height &&
           image.pitch >= tightPitch(image.pixelType, image.width) &&
           image.imageSize >= neededBytes(image.pixelType, image.width, y + 1, image.pitch);
}

} // namespace

NativeCodes nativeCodes(const _ZorImage& image, std::uint32_t x, std::uint32_t y)
{
    const ZorPixelTypeRow* row = exactPixelTypeRow(image.pixelType);
    if (!row || image.isSigned || !isWithin(image, x, y))
        return {};
    const std::uint32_t first = x / Group * Group;
    const GroupSamples samples = unpackGroup(image, first, y);
    const std::uint32_t count = samplesPerPixel(image.pixelType);
    if (count == 2)
        return sharedCodes(samples, x - first, isLumaFirst(*row), x / 2 * 2 + 1 < image.width);
    NativeCodes codes;
    codes.count = count;
    std::copy_n(samples.begin() + (x - first) * count, count, codes.codes.begin());
    return codes;
}

} // namespace zor
