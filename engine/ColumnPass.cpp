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
    const std::int32_t perRow = frameStep / 2;
    const std::int64_t total = (std::int64_t{cells.height} + 1) * (cells.step / 2);
    std::int64_t done = 0;
    for (std::int32_t y = 0; y < cells.height && done < total && perRow > 0; ++y) {
        const auto count = static_cast<std::int32_t>(std::min<std::int64_t>(perRow, total - done));
        if (isReached)
            multiplyRun(cells.data + 2 * done, codes, static_cast<std::int16_t>(limit), count);
        else
            multiplyUnlimitedRun(cells.data + 2 * done, codes, count);
        done += count;
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
