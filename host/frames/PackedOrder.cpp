#include "host/frames/PackedOrder.h"

#include "image/Pitch.h"

namespace zor {

void swapPackedOrder(Frame& frame)
{
    if (pixelTypePackingClass(frame.pixelType) != PackingClass::Packed)
        return;
    const auto rowBytes = static_cast<std::size_t>(tightPitch(frame.pixelType, frame.width));
    for (std::size_t y = 0; y < frame.height; ++y) {
        std::uint8_t* line = frame.pixels.data() + y * frame.pitch;
        for (std::size_t middle = 1; middle < rowBytes; middle += 3)
            line[middle] = static_cast<std::uint8_t>(line[middle] << 4 | line[middle] >> 4);
    }
}

} // namespace zor
