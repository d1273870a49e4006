#include "engine/CellImage.h"

#include "engine/pix/PixConvert.h"

#include <algorithm>
#include <cstring>

namespace zor {

std::int32_t cellStep(std::int32_t width)
{
    const std::int64_t rowBytes = std::int64_t{width} * 16 / 8;
    return static_cast<std::int32_t>((rowBytes + 3) & ~std::int64_t{3});
}

std::size_t cellBlockBytes(std::int32_t width, std::int32_t height)
{
    return static_cast<std::size_t>(cellStep(width)) * static_cast<std::size_t>(std::int64_t{height} + 1);
}

void fillCells(const ConstImageView& frame, std::size_t frameBytes, const ImageView& cells)
{
    const std::size_t rowsBytes = static_cast<std::size_t>(frame.height) * cells.step;
    std::size_t filled = 0;
    if (frame.depth == 8) {
        pixWiden8uTo16u(frame.data, frame.step, reinterpret_cast<std::uint16_t*>(cells.data), cells.step,
                        {frame.width, frame.height});
        filled = rowsBytes;
    } else if (frame.depth <= 16) {
        filled = std::min(rowsBytes, frameBytes);
        std::memcpy(cells.data, frame.data, filled);
    } else {
        return;
    }
    std::memset(cells.data + filled, 0, rowsBytes + static_cast<std::size_t>(cells.step) - filled);
}

} // namespace zor
