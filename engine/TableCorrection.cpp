#include "engine/TableCorrection.h"

#include "engine/CellImage.h"

#include <algorithm>

namespace zor {
namespace {

/// A column entry and a row entry as one factor, 0 when it is negative. At most 2^62.
std::uint64_t combinedFactor(std::int32_t column, std::int32_t row)
{
    const std::int64_t factor = std::int64_t{column} * row;
    return factor < 0 ? 0 : static_cast<std::uint64_t>(factor);
}

/// The factor is taken in two parts so that neither product leaves 64 bits: with 8 fraction bits the upper
/// part is at most 2^46, with 12 the lower part is below 2^24, and a pixel is below 2^16.
std::uint64_t scaled(std::uint64_t pixel, std::uint64_t factor, std::uint32_t shift)
{
    const std::uint64_t lower = factor & ((std::uint64_t{1} << shift) - 1);
    return pixel * (factor >> shift) + ((pixel * lower) >> shift);
}

} // namespace

std::uint32_t correctedPixel(std::uint16_t pixel, std::int32_t column, std::int32_t row,
                             std::uint8_t fractionBits, std::int32_t depth)
{
    const auto limit = static_cast<std::uint64_t>(saturationLimit(depth));
    const std::uint32_t shift = 2u * fractionBits;
    return static_cast<std::uint32_t>(std::min(limit, scaled(pixel, combinedFactor(column, row), shift)));
}

void applyTables(const ConstImageView& frame, const std::int32_t* columns, const std::int32_t* rows,
                 std::uint8_t fractionBits, const ImageView& destination)
{
    const bool bytes = frame.depth == 8;
    for (std::int32_t y = 0; y < frame.height; ++y) {
        const std::uint8_t* from = frame.row(y);
        std::uint8_t* to = destination.row(y);
        for (std::int32_t x = 0; x < frame.width; ++x) {
            const std::uint16_t pixel = bytes ? from[x] : loadCell(from, x);
            const std::uint32_t value = correctedPixel(pixel, columns[x], rows[y], fractionBits, frame.depth);
            if (bytes)
                to[x] = static_cast<std::uint8_t>(value);
            else
                storeCell(to, x, static_cast<std::uint16_t>(value));
        }
    }
}

} // namespace zor
