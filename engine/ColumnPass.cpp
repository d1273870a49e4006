#include "engine/ColumnPass.h"

#include "engine/CellImage.h"
#include "engine/CellProduct.h"
#include "engine/pix/PixArithmetic.h"

#include <algorithm>
#include <limits>

namespace zor {
namespace {

/// Cells at the limit stay as they are, products above it come down to it. `limit` is at most 32767.
void multiplyRun(std::uint8_t* cells, const std::uint16_t* codes, std::int16_t limit, std::int32_t count)
{
    for (std::int32_t i = 0; i < count; ++i) {
        const std::uint16_t cell = loadCell(cells, i);
        const std::int16_t limited = std::min(scaledCell(cell, codes[i]), limit);
        storeCell(cells, i,
                  static_cast<std::int16_t>(cell) == limit ? cell : static_cast<std::uint16_t>(limited));
    }
}

/// For a limit that no signed cell and no product reaches.
void multiplyUnlimitedRun(std::uint8_t* cells, const std::uint16_t* codes, std::int32_t count)
{
    for (std::int32_t i = 0; i < count; ++i)
        storeCell(cells, i, static_cast<std::uint16_t>(scaledCell(loadCell(cells, i), codes[i])));
}

/// Runs without a gap over the block as rows of frameStep / 2 cells, whatever its own step is.
void multiplyFlat(const ImageView& cells, std::int32_t frameStep, const std::uint16_t* codes)
{
    const std::int32_t limit = saturationLimit(cells.depth);
    const bool isReached = limit <= std::numeric_limits<std::int16_t>::max();
    // A negative step has no cells either, and nothing before the block is pointed at.
    const std::int64_t perRow = std::max(frameStep / 2, 0);
    std::uint8_t* from = cells.data;
    std::int64_t left = (std::int64_t{cells.height} + 1) * (cells.step / 2);
    for (std::int32_t y = 0; y < cells.height; ++y) {
        const auto count = static_cast<std::int32_t>(std::min(perRow, left));
        if (isReached)
            multiplyRun(from, codes, static_cast<std::int16_t>(limit), count);
        else
            multiplyUnlimitedRun(from, codes, count);
        from += 2 * static_cast<std::ptrdiff_t>(count);
        left -= count;
    }
}

} // namespace

std::int32_t columnCodeCapacity(std::int32_t width, std::int32_t frameStep)
{
    return std::max(width, frameStep / 2);
}

void applyColumnCodes(const ImageView& cells, std::int32_t frameStep, const std::uint16_t* codes)
{
    if (cells.depth == 8) {
        const auto* factors = reinterpret_cast<const std::int16_t*>(codes);
        for (std::int32_t y = 0; y < cells.height; ++y) {
            pixMultiplyInPlace16s(factors, 0, reinterpret_cast<std::int16_t*>(cells.row(y)), cells.step,
                                  {cells.width, 1}, 8);
        }
    } else if (isCorrectedDepth(cells.depth)) {
        multiplyFlat(cells, frameStep, codes);
    }
}

} // namespace zor
