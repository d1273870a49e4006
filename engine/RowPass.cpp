#include "engine/RowPass.h"

#include "engine/CellImage.h"
#include "engine/CellProduct.h"
#include "engine/FixedPoint.h"

#include <algorithm>

namespace zor {
namespace {

/// Products above `limit` come down to it. With an exemption a cell at the limit stays as it is.
template <bool Exempts>
void multiplyRow(const std::uint8_t* source, std::uint8_t* destination, std::uint16_t code,
                 std::int16_t limit, std::int32_t width)
{
    for (std::int32_t x = 0; x < width; ++x) {
        const std::uint16_t cell = loadCell(source, x);
        const std::int16_t limited = std::min(scaledCell(cell, code), limit);
        const bool stays = Exempts && static_cast<std::int16_t>(cell) == limit;
        storeCell(destination, x, stays ? cell : static_cast<std::uint16_t>(limited));
    }
}

} // namespace

void applyRowCodes(const ConstImageView& source, const ImageView& destination, const std::uint16_t* codes)
{
    const std::int32_t saturated = saturationLimit(source.depth);
    const auto limit = static_cast<std::int16_t>(signedLow16(static_cast<std::uint32_t>(saturated)));
    // At depth 16 the limit is -1 as a signed cell: every result from 0 up is above it, and no cell equals
    // the 65535 that would be left alone.
    const auto multiply = saturated == limit ? multiplyRow<true> : multiplyRow<false>;
    const std::ptrdiff_t sourceStep = source.step & ~1;
    const std::ptrdiff_t destinationStep = destination.step & ~1;
    for (std::int32_t y = 0; y < source.height; ++y) {
        multiply(source.data + y * sourceStep, destination.data + y * destinationStep, codes[y], limit,
                 source.width);
    }
}

} // namespace zor
