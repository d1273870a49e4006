#include "dialog/CFFCUtility.h"
#include "dialog/Message.h"
#include "engine/Gains.h"
#include "engine/stages/StageBlocks.h"

#include <new>

bool CFFCUtility::ComputeRowGains()
{
    m_rowGains.clear();
    if (!m_flatX)
        return false;
    const zor::GainRule rule{m_normalize != 0, m_normalizeValue, m_pairSmoothing != 0};
    const zor::ImageView cells = zor::cellView(m_flatX, m_flatXStep, m_width, m_height, 16);
    try {
        zor::computeRowGains(zor::readOnly(cells), rule, m_rowGains);
    } catch (const std::bad_alloc&) {
        m_rowGains.clear();
        zor::showNotEnoughMemory();
        return false;
    }
    return true;
}
