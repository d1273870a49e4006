#include "image/unpack/NativeCodes.h"

#include "image/Pitch.h"
#include "image/PixelTypeCode.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/UnpackRow.h"

#include <algorithm>

namespace zor {

namespace {

using GroupSamples = std::array<std::uint16_t, NativeGroup * 4>;

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

/// Whether the format has native codes and the row's bytes are there.
bool isReadable(const _ZorImage& image, std::uint32_t y)
{
    return exactPixelTypeRow(image.pixelType) && !image.isSigned && image.data && y < image.height &&
           image.pitch >= tightPitch(image.pixelType, image.width) &&
           image.imageSize >= neededBytes(image.pixelType, image.width, y + 1, image.pitch);
}

} // namespace

bool hasNativeCodes(const _ZorImage& image)
{
    return image.width > 0 && image.height > 0 && isReadable(image, image.height - 1);
}

void unpackNativeCodes(const _ZorImage& image, std::uint32_t first, std::uint32_t y, std::uint32_t count,
                       std::uint16_t* samples)
{
    const std::uint8_t* group =
        image.data + std::size_t{y} * image.pitch + tightPitch(image.pixelType, first);
    const bool isUnpacked = pixelTypePackingClass(image.pixelType) == PackingClass::Unpacked;
    // A word's bits above the depth are shown and not limited: they show what is wrong with an image.
    if (isUnpacked && pixelTypeSampleBits(image.pixelType) > 8)
        unpackRowFor(Mono16)(group, samples, std::size_t{count} * samplesPerPixel(image.pixelType));
    else
        unpackRowFor(image.pixelType)(group, samples, count);
}

NativeCodes nativeCodes(const _ZorImage& image, std::uint32_t x, std::uint32_t y)
{
    if (x >= image.width || !isReadable(image, y))
        return {};
    const std::uint32_t first = x / NativeGroup * NativeGroup;
    GroupSamples samples{};
    unpackNativeCodes(image, first, y, std::min(NativeGroup, image.width - first), samples.data());
    const std::uint32_t count = samplesPerPixel(image.pixelType);
    if (count == 2)
        return sharedCodes(samples, x - first, isLumaFirst(*exactPixelTypeRow(image.pixelType)),
                           x / 2 * 2 + 1 < image.width);
    NativeCodes codes;
    codes.count = count;
    std::copy_n(samples.begin() + (x - first) * count, count, codes.codes.begin());
    return codes;
}

} // namespace zor
