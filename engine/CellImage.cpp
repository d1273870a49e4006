#include "engine/CellImage.h"

#include "engine/pix/PixConvert.h"

#include <algorithm>
#include <cstring>

namespace zor {

namespace {

std::int64_t paddedRowBytes(std::int32_t width)
{
    const std::int64_t rowBytes = std::int64_t{width} * 16 / 8;
    return (rowBytes + 3) & ~std::int64_t{3};
}

} // namespace

std::int32_t cellStep(std::int32_t width)
{
    return static_cast<std::int32_t>(paddedRowBytes(width));
}

std::size_t cellBlockBytes(std::int32_t width, std::int32_t height)
{
    return static_cast<std::size_t>(paddedRowBytes(width)) *
           static_cast<std::size_t>(std::int64_t{height} + 1);
}

void fillCells(const ConstImageView& frame, std::size_t frameBytes, const ImageView& cells)
{
    const std::size_t rowsBytes = static_cast<std::size_t>(frame.height) * cells.step;
    const std::size_t blockBytes = rowsBytes + static_cast<std::size_t>(cells.step);
    if (frame.depth == 8) {
        const std::int32_t status =
            pixWiden8uTo16u(frame.data, frame.step, reinterpret_cast<std::uint16_t*>(cells.data), cells.step,
                            {frame.width, frame.height});
        if (status == PixDone)
            clearSpareCells(cells);
        else
            std::memset(cells.data, 0, blockBytes);
        return;
    }
    const std::size_t copied = isCorrectedDepth(frame.depth) ? std::min(rowsBytes, frameBytes) : 0;
    std::memcpy(cells.data, frame.data, copied);
    std::memset(cells.data + copied, 0, blockBytes - copied);
}

void clearSpareCells(const ImageView& cells)
{
    const std::ptrdiff_t used = std::ptrdiff_t{cells.width} * 2;
    if (cells.step > used) {
        for (std::int32_t y = 0; y < cells.height; ++y)
            std::memset(cells.row(y) + used, 0, static_cast<std::size_t>(cells.step - used));
    }
    std::memset(cells.row(cells.height), 0, static_cast<std::size_t>(cells.step));
}

} // namespace zor
