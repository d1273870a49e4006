#include "host/quality/FrameGains.h"

#include "engine/CellImage.h"
#include "engine/ColumnPass.h"
#include "engine/GainCode.h"

#include <cstdint>
#include <vector>

namespace zor {

FrameGains computeFrameGains(const ConstImageView& frame, std::size_t frameBytes, const GainRule& rule)
{
    FrameGains gains;
    std::vector<std::uint16_t> columnMeans(static_cast<std::size_t>(frame.width));
    std::vector<std::uint16_t> rowMeans(static_cast<std::size_t>(frame.height));
    computeColumnGains(frame, rule, gains.columns, columnMeans.data(), rowMeans.data());

    std::vector<std::uint8_t> block(cellBlockBytes(frame.width, frame.height));
    const ImageView cells{block.data(), cellStep(frame.width), frame.width, frame.height, frame.depth};
    fillCells(frame, frameBytes, cells);

    const std::int32_t capacity = columnCodeCapacity(frame.width, frame.step);
    std::vector<std::uint16_t> codes(static_cast<std::size_t>(capacity));
    encodeGains(gains.columns, codes.data(), frame.width, capacity);
    applyColumnCodes(cells, frame.step, codes.data());

    computeRowGains(readOnly(cells), rule, gains.rows);
    return gains;
}

} // namespace zor
