#include "engine/RowPass.h"

#include "engine/CellImage.h"
#include "engine/FixedPoint.h"

namespace zor {
namespace {

/// `exempt` is the whole saturation limit, `limit` its low 16 bits as a signed number: at depth 16 they are
/// 65535, which no cell equals, and -1, which every result with bit 15 clear is above.
void multiplyRow(const std::uint8_t* source, std::uint8_t* destination, std::int32_t code,
                 std::int32_t exempt, std::int32_t limit, std::int32_t width)
{
    for (std::int32_t x = 0; x < width; ++x) {
        const std::int32_t cell = static_cast<std::int16_t>(loadCell(source, x));
        const std::int32_t scaled = static_cast<std::int16_t>((cell * code) >> 8);
        const std::int32_t limited = scaled > limit ? limit : scaled;
        storeCell(destination, x, static_cast<std::uint16_t>(cell == exempt ? cell : limited));
    }
}

} // namespace

void applyRowCodes(const ConstImageView& source, const ImageView& destination, const std::uint16_t* codes)
{
    const std::int32_t exempt = saturationLimit(source.depth);
    const std::int32_t limit = signedLow16(static_cast<std::uint32_t>(exempt));
    const std::ptrdiff_t sourceStep = source.step & ~1;
    const std::ptrdiff_t destinationStep = destination.step & ~1;
    for (std::int32_t y = 0; y < source.height; ++y) {
        multiplyRow(source.data + y * sourceStep, destination.data + y * destinationStep, codes[y], exempt,
                    limit, source.width);
    }
}

} // namespace zor
