#include "dialog/CFFCUtility.h"
#include "dialog/Message.h"
#include "engine/Allocation.h"
#include "engine/CellImage.h"
#include "engine/GainCode.h"
#include "engine/Profiles.h"
#include "engine/RowPass.h"
#include "engine/stages/StageBlocks.h"

#include <QCheckBox>

bool CFFCUtility::ApplyRowGains()
{
    if (!m_image)
        return false;
    // A failure of the second column pass has shown its box and is otherwise ignored, as long as it left
    // cells.
    ApplyColumnGains(true);
    if (!m_flatX)
        return false;

    std::uint16_t* codes = zor::allocateGainCodes(m_height);
    if (!codes) {
        zor::showNotEnoughMemory();
        return false;
    }
    zorRelease(m_flatY);
    m_flatY = nullptr;
    zor::encodeGains(m_rowGains, codes, m_height, m_height);

    m_flatY = static_cast<std::uint16_t*>(zorAllocate(zor::cellBlockBytes(m_width, m_height)));
    if (!m_flatY) {
        // The codes are lost here: deliberate, see docs/decisions.md.
        zor::showNotEnoughMemory();
        return false;
    }
    m_flatYStep = zor::cellStep(m_width);
    const zor::ImageView source = zor::cellView(m_flatX, m_flatXStep, m_width, m_height, m_depth);
    const zor::ImageView destination = zor::cellView(m_flatY, m_flatYStep, m_width, m_height, m_depth);
    zor::applyRowCodes(zor::readOnly(source), destination, codes);
    zor::clearSpareCells(destination);
    zorRelease(codes);

    const zor::ConstImageView result =
        zor::readOnly(zor::cellView(m_flatY, m_flatYStep, m_width, m_height, 16));
    if (!zor::renewLine(m_flatRowMean, m_height))
        return false;
    zor::storeRowMeans(result, m_flatRowMean);
    // Without this the lower plot's column curve shows the image after the column pass alone.
    if (ui.chBShowY->isChecked()) {
        if (!zor::renewLine(m_flatColumnMean, m_width))
            return false;
        zor::storeColumnMeans(result, m_flatColumnMean);
    }
    return true;
}
