#include "host/average/FrameSamples.h"

#include "host/frames/encode/PackRow.h"

namespace zor {

void checkSamples(const Frame& frame)
{
    if (!hasNativeCodes(frame.record()))
        throw std::invalid_argument(
            "the frame has no pixels, an unknown pixel format or fewer bytes than its "
            "rows take; use another frame");
}

Frame tightFrameLike(const Frame& frame)
{
    Frame tight;
    tight.width = frame.width;
    tight.height = frame.height;
    tight.pitch = static_cast<std::uint32_t>(tightPitch(frame.pixelType, frame.width));
    tight.pixelType = frame.pixelType;
    tight.depthSource = frame.depthSource;
    tight.depthGuessed = frame.depthGuessed;
    return tight;
}

std::size_t samplesPerRow(const Frame& frame)
{
    return std::size_t{frame.width} * samplesPerPixel(frame.pixelType);
}

void unpackSamples(const Frame& frame, std::uint32_t y, std::vector<std::uint16_t>& samples)
{
    unpackRowFor(frame.pixelType)(frame.pixels.data() + std::size_t{y} * frame.pitch, samples.data(),
                                  frame.width);
}

void packSamples(const std::vector<std::uint16_t>& samples, std::uint32_t y, Frame& frame)
{
    packRow(samples, frame.pixelType, samplesPerPixel(frame.pixelType),
            frame.pixels.data() + std::size_t{y} * frame.pitch);
}

} // namespace zor
