#include "dialog/CFFCUtility.h"
#include "dialog/Message.h"
#include "engine/Allocation.h"
#include "engine/CellImage.h"
#include "engine/ColumnPass.h"
#include "engine/GainCode.h"
#include "engine/Profiles.h"
#include "engine/pix/PixArithmetic.h"
#include "engine/stages/StageBlocks.h"

#include <cstring>

bool CFFCUtility::ApplyColumnGains(bool withOffset)
{
    if (!m_image)
        return false;
    const std::int32_t capacity = zor::columnCodeCapacity(m_width, m_step);
    std::uint16_t* codes = zor::allocateGainCodes(capacity);
    if (!codes) {
        zor::showNotEnoughMemory();
        return false;
    }
    zorRelease(m_flatX);
    m_flatX = nullptr;
    zor::encodeGains(m_columnGains, codes, m_width, capacity);

    const std::size_t bytes = zor::cellBlockBytes(m_width, m_height);
    m_flatX = static_cast<std::uint16_t*>(zorAllocate(bytes));
    m_flatXStep = zor::cellStep(m_width);
    if (!m_flatX) {
        // The codes are lost here: deliberate, see docs/decisions.md.
        zor::showNotEnoughMemory();
        return false;
    }
    auto* offset = static_cast<std::uint16_t*>(zorAllocate(bytes));
    if (!offset) {
        // The codes are lost here as well. m_flatX stays; a run that goes on must not read unset cells.
        std::memset(m_flatX, 0, bytes);
        zor::showNotEnoughMemory();
        return false;
    }
    std::memset(offset, 0, static_cast<std::size_t>(m_flatXStep) * static_cast<std::size_t>(m_height));

    const zor::ConstImageView frame{m_image, m_step, m_width, m_height, m_depth};
    const zor::ImageView cells = zor::cellView(m_flatX, m_flatXStep, m_width, m_height, m_depth);
    zor::fillCells(frame, m_imageBytes, cells);
    if (withOffset)
        zor::pixSubtractInPlace16u(offset, m_flatXStep, m_flatX, m_flatXStep, {m_width, m_height}, 0);
    zor::applyColumnCodes(cells, m_step, codes);
    zorRelease(codes);
    zorRelease(offset);

    if (!zor::renewLine(m_flatColumnMean, m_width))
        return false;
    zor::storeColumnMeans(zor::readOnly(zor::cellView(m_flatX, m_flatXStep, m_width, m_height, 16)),
                          m_flatColumnMean);
    return true;
}
