#include "host/camera/ReceivedImage.h"

#include "host/camera/CameraError.h"
#include "host/camera/CameraPixelType.h"
#include "host/frames/FormatName.h"
#include "host/frames/FrameLimits.h"
#include "host/frames/PackedOrder.h"
#include "image/Pitch.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string>

namespace zor {

namespace {

std::string hexOf(std::uint32_t code)
{
    char text[sizeof "0x12345678"];
    std::snprintf(text, sizeof text, "0x%08X", code);
    return text;
}

std::string sizeOf(const ReceivedImage& image)
{
    return std::to_string(image.width) + "x" + std::to_string(image.height);
}

/// Bytes from row to row; 64 bits hold it for every width and padding.
std::uint64_t pitchOf(const ReceivedImage& image, std::uint32_t pixelType)
{
    return tightPitch(pixelType, image.width) + image.rowPadding;
}

void check(const ReceivedImage& image, std::uint32_t pixelType)
{
    if (image.width < 1 || image.height < 1 || image.width > MaxFrameSide || image.height > MaxFrameSide ||
        pitchOf(image, pixelType) * image.height > MaxFrameBytes)
        throw CameraError("an image of " + sizeOf(image) + " pixels is beyond what a frame may have");

    const auto pitch = static_cast<std::uint32_t>(pitchOf(image, pixelType));
    const std::uint64_t needed = neededBytes(pixelType, image.width, image.height, pitch);
    if (image.size >= needed)
        return;
    const std::uint32_t bits = pixelTypeBits(pixelType);
    const std::uint64_t withoutGaps = (std::uint64_t{bits} * image.width * image.height + 7) / 8;
    if (image.rowPadding == 0 && image.size >= withoutGaps)
        throw CameraError("rows of " + std::to_string(image.width) + " pixels of " + std::to_string(bits) +
                          " bits do not end with a whole byte; choose a width that is a multiple of " +
                          std::to_string(8 / std::gcd(8u, bits)) + ", or another pixel format");
    throw CameraError("an image of " + sizeOf(image) + " pixels came with " + std::to_string(image.size) +
                      " bytes and takes " + std::to_string(needed));
}

} // namespace

Frame frameOf(const ReceivedImage& image)
{
    const std::optional<std::uint32_t> pixelType = pixelTypeOfPfnc(image.pfncCode);
    if (!pixelType)
        throw CameraError("the camera sends the pixel format " + hexOf(image.pfncCode) +
                          ", which cannot be shown; choose another one");
    check(image, *pixelType);
    Frame frame;
    frame.pixelType = *pixelType;
    frame.width = image.width;
    frame.height = image.height;
    frame.pitch = static_cast<std::uint32_t>(pitchOf(image, *pixelType));
    frame.depthSource = "pixel format of the camera";
    // The padding of the last row need not have come.
    const std::size_t whole = std::size_t{frame.pitch} * frame.height;
    frame.pixels.reserve(whole);
    frame.pixels.assign(image.data, image.data + std::min(image.size, whole));
    frame.pixels.resize(whole);
    swapPackedOrder(frame);
    return frame;
}

} // namespace zor
